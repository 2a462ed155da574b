// SPDX-License-Identifier: Apache-2.0
// The reader contexts: what the enclosing elements have set up for the handlers of an element.
#ifndef XML_READERS_H
#define XML_READERS_H

#include <cstdint>

#include "tarnmf/ldp_data.h"

#include "records/release.h"
#include "support/growable_array.h"

namespace tarnmf {

struct ReleasesCommands {
  static void Release(EnvCmdT& command) { ReleaseCommand(command); }
};

// The lists that a parse fills.
using ClassList = GrowableArray<MfIntfClassT*, 8, DeletesElements>;
using ModuleList = GrowableArray<MfModuleT*, 2, DeletesElements>;
using RunnableList = GrowableArray<MfRunnableT*, 4, DeletesElements>;
using ImplList = GrowableArray<MfModuleImplT*, 2, DeletesElements>;
using PreloadList = GrowableArray<MfPreloadInfoT*, 2, DeletesElements>;
using EnvList = GrowableArray<EnvCmdT, 4, ReleasesCommands>;
using ArgList = GrowableArray<btkWChar*, 4, FreesStrings>;
using TypeList = GrowableArray<char*, 4, FreesStrings>;

// Names a record type where an overload is chosen by it.
template <class Record>
struct RecordTag {};

// Flags of the document-level readers.
enum DocumentFlag : std::uint32_t {
  kReadOne = 0x1,   // an element of the reader's kind has been read
  kListSeen = 0x2,  // a list element of the reader's kind has been entered
};

// Whether one of the attributes or elements that `bits` stand for has been read.
template <class Reader>
bool Given(const Reader& reader, std::uint32_t bits) {
  return (reader.flags & bits) != 0;
}

// A second element of one kind is admitted only once a list element of that kind has been seen; else
// kBtkDuplicate.
template <class DocumentReader>
BtkErrorT AdmitOneMore(const DocumentReader& reader) {
  return Given(reader, kReadOne) && !Given(reader, kListSeen) ? kBtkDuplicate : kBtkOk;
}

// The root's reader; nested in it are the readers of everything below. Their Create... operations
// return null when out of memory. Each Target(RecordTag<T>) is the T whose attributes are
// being read; it belongs to the element's handler or to a list.
class liMfReader {
 public:
  class ModuleMfReader;
  class ClassMfReader;
  class RunnableMfReader;
  class MfReader;
  class ModuleReader;
  class ClassReader;
  class RunnableReader;
  class EnvReader;
  class ArgsReader;

  liMfReader(ClassList& classList, ModuleList& moduleList, RunnableList& runnableList)
      : classes(&classList), modules(&moduleList), runnables(&runnableList) {}
  virtual ~liMfReader() = default;

  virtual ModuleMfReader* CreateModuleMfReader(std::int32_t version, ModuleList* modules);
  virtual ClassMfReader* CreateClassMfReader(std::int32_t version, ClassList* classes,
                                             ModuleList* modules);
  virtual RunnableMfReader* CreateRunnableMfReader(std::int32_t version, RunnableList* runnables,
                                                   ModuleList* modules);
  virtual MfReader* CreateMfReader(std::int32_t version, ClassList* classes,
                                   RunnableList* runnables, ModuleList* modules);

  enum Seen : std::uint32_t { kSeenDocumentVersion = 0x1 };

  ClassList* classes;
  ModuleList* modules;
  RunnableList* runnables;
  std::int32_t version = 0;
  std::uint32_t flags = 0;
};

// Below the root of mixed documents: every child element gets a document-level reader of its own.
class liMfReader::MfReader {
 public:
  MfReader(std::int32_t documentVersion, ClassList* classList, RunnableList* runnableList,
           ModuleList* moduleList)
      : version(documentVersion),
        classes(classList),
        modules(moduleList),
        runnables(runnableList) {}
  virtual ~MfReader() = default;

  virtual ModuleMfReader* CreateModuleMfReader(std::int32_t version, ModuleList* modules);
  virtual ClassMfReader* CreateClassMfReader(std::int32_t version, ClassList* classes,
                                             ModuleList* modules);
  virtual RunnableMfReader* CreateRunnableMfReader(std::int32_t version, RunnableList* runnables,
                                                   ModuleList* modules);

  std::int32_t version;
  ClassList* classes;
  ModuleList* modules;
  RunnableList* runnables;
};

class liMfReader::ModuleMfReader {
 public:
  explicit ModuleMfReader(ModuleList* moduleList) : modules(moduleList) {}
  virtual ~ModuleMfReader() = default;

  virtual ModuleReader* CreateModuleReader(ModuleList* modules);

  ModuleList* modules;
  std::uint32_t flags = 0;  // DocumentFlag
};

class liMfReader::ClassMfReader {
 public:
  ClassMfReader(ClassList* classList, ModuleList* moduleList)
      : classes(classList), modules(moduleList) {}
  virtual ~ClassMfReader() = default;

  virtual ClassReader* CreateClassReader(ClassList* classes, ModuleList* modules);

  ClassList* classes;
  ModuleList* modules;
  std::uint32_t flags = 0;  // DocumentFlag
};

class liMfReader::RunnableMfReader {
 public:
  RunnableMfReader(RunnableList* runnableList, ModuleList* moduleList)
      : runnables(runnableList), modules(moduleList) {}
  virtual ~RunnableMfReader() = default;

  virtual RunnableReader* CreateRunnableReader(RunnableList* runnables, ModuleList* modules);

  RunnableList* runnables;
  ModuleList* modules;
  std::uint32_t flags = 0;  // DocumentFlag
};

class liMfReader::ModuleReader {
 public:
  enum Seen : std::uint32_t {
    kSeenType = 0x1,
    kSeenId = 0x2,
    kSeenLoadpoint = 0x4,
    kSeenPrivate = 0x8,
    kSeenABits = 0x10,

    kSeenName = 0x20,
    kSeenExplicitName = 0x40,
    kSeenPath = 0x80,
    kSeenForcePath = 0x100,
    kSeenApiLevel = 0x200,
    kSeenVersion = 0x400,
    kSeenMachineType = 0x800,
    kSeenOfImplementation =
        kSeenName | kSeenExplicitName | kSeenPath | kSeenForcePath | kSeenApiLevel | kSeenVersion,

    kSeenBy = 0x1000,
    kSeenPreloadName = 0x2000,
    kSeenSvcId = 0x4000,
    kSeenOptionId = 0x8000,
    kSeenOfPreload = kSeenBy | kSeenPreloadName | kSeenSvcId | kSeenOptionId,
  };

  explicit ModuleReader(ModuleList* moduleList) : modules(moduleList) {}
  virtual ~ModuleReader() = default;

  MfModuleT& Target(RecordTag<MfModuleT>) { return *module; }
  MfModuleImplT& Target(RecordTag<MfModuleImplT>) { return *impl; }
  MfPreloadInfoT& Target(RecordTag<MfPreloadInfoT>) { return *preload; }

  ModuleList* modules;
  MfModuleT* module = nullptr;
  ImplList impls;
  MfModuleImplT* impl = nullptr;
  PreloadList preloads[2];  // of the module's own implementation, of the platform module being read
  MfPreloadInfoT* preload = nullptr;
  bool inPlatformModule = false;
  std::uint32_t flags = 0;  // Seen
};

class liMfReader::ClassReader {
 public:
  enum Seen : std::uint32_t {
    kSeenId = 0x1,
    kSeenAffinity = 0x2,
    kSeenCommonName = 0x4,
    kSeenDisplayName = 0x8,
    kSeenVersion = 0x10,
    kSeenManagedType = 0x20,

    kSeenModuleRef = 0x40,
    kSeenMultiplicity = 0x80,
    kSeenOfSide = kSeenModuleRef | kSeenMultiplicity,

    kSeenSvcId = 0x100,
    kSeenXsId = 0x200,
    kSeenXsName = 0x400,
    kSeenXsVersion = 0x800,
    kSeenIsolation = 0x1000,
    kSeenExposed = 0x2000,

    kClientSideRead = 0x4000,
    kServiceSideRead = 0x8000,
    kAgentSideRead = 0x10000,
  };

  ClassReader(ClassList* classList, ModuleList* moduleList)
      : classes(classList), modules(moduleList) {}
  virtual ~ClassReader() = default;

  virtual ModuleReader* CreateModuleReader(ModuleList* modules);

  MfIntfClassT& Target(RecordTag<MfIntfClassT>) { return *current; }
  MfIntfSideT& Target(RecordTag<MfIntfSideT>) { return current->sides[side]; }

  ClassList* classes;
  ModuleList* modules;
  MfIntfClassT* current = nullptr;
  std::uint32_t flags = 0;  // Seen
  MfSideT side = kMfClientSide;
};

class liMfReader::RunnableReader {
 public:
  enum Seen : std::uint32_t {
    kSeenModuleRef = 0x1,

    kSeenModel = 0x2,
    kSeenId = 0x4,
    kSeenCommonName = 0x8,
    kSeenVersion = 0x10,
    kSeenLauncher = 0x20,
    kSeenCsim = 0x40,
    kSeenManagedType = 0x80,
    kSeenMultiplicity = 0x100,
    kSeenRecover = 0x200,
    kSeenExposed = 0x400,
    kSeenPort = 0x800,
    kSeenUrl = 0x1000,
    kSeenNameId = 0x2000,
    kSeenTypes = 0x4000,
    kSeenOfRole = 0x7ffe,
  };

  RunnableReader(RunnableList* runnableList, ModuleList* moduleList)
      : runnables(runnableList), modules(moduleList) {}
  virtual ~RunnableReader() = default;

  MfRunnableT& Target(RecordTag<MfRunnableT>) { return *runnable; }
  MfAppRoleT& Target(RecordTag<MfAppRoleT>) { return *app; }
  MfServiceRoleT& Target(RecordTag<MfServiceRoleT>) { return *service; }
  MfLauncherRoleT& Target(RecordTag<MfLauncherRoleT>) { return *launcher; }
  MfRunRoleBaseT& Target(RecordTag<MfRunRoleBaseT>) { return *role; }

  RunnableList* runnables;
  ModuleList* modules;
  MfRunnableT* runnable = nullptr;
  MfAppRoleT* app = nullptr;
  MfServiceRoleT* service = nullptr;
  MfLauncherRoleT* launcher = nullptr;
  MfRunRoleBaseT* role = nullptr;  // whose arguments and environment are being read
  std::uint32_t flags = 0;         // Seen
};

class liMfReader::EnvReader {
 public:
  enum Seen : std::uint32_t {
    kSeenInitState = 0x1,
    kSeenName = 0x2,
    kSeenRestrictTo = 0x4,
    kSeenOfCommand = kSeenName | kSeenRestrictTo,
  };

  explicit EnvReader(MfRunRoleBaseT* currentRole) : role(currentRole) {}
  virtual ~EnvReader() = default;

  MfRunRoleBaseT& Target(RecordTag<MfRunRoleBaseT>) { return *role; }
  // The command being read: built after the last one of the list, not counted before it is whole.
  EnvCmdT& Target(RecordTag<EnvCmdT>) { return *env.end(); }

  MfRunRoleBaseT* role;
  std::uint32_t flags = 0;  // Seen
  EnvList env;
};

class liMfReader::ArgsReader {
 public:
  enum FlagT : std::uint32_t {
    kPrecomposed = 0x1,  // the current argument is taken as it stands
    kSeenPrecomposed = 0x2,
    kOfArgument = kPrecomposed | kSeenPrecomposed,
  };

  explicit ArgsReader(MfRunRoleBaseT* currentRole) : role(currentRole) {}
  virtual ~ArgsReader() = default;

  ArgsReader& Target(RecordTag<ArgsReader>) { return *this; }

  MfRunRoleBaseT* role;
  std::uint32_t flags = 0;  // FlagT
  ArgList args;
};

}  // namespace tarnmf

#endif  // XML_READERS_H
