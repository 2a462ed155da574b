// SPDX-License-Identifier: Apache-2.0
#include "tests/faults/operation.h"

#include <gtest/gtest.h>
#include <set>

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_loader.h"
#include "tarnmf/stream_parser.h"

#include "repository/repo_base_impl.h"
#include "support/owned.h"
#include "tests/publish/batch.h"
#include "tests/support/everything.h"
#include "tests/support/fault.h"
#include "tests/support/memory_stream.h"
#include "tests/support/record_dump.h"
#include "tests/support/system_names.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::test {
namespace {

// ---- Reading -----------------------------------------------------------------------------------

// Into a container that holds a record already.
class ParseDocument final : public Operation {
 public:
  explicit ParseDocument(const std::string& document) : document_(document) {
    EXPECT_EQ(Parse(InRoot(Module("earlier")), data_), kBtkOk);
  }

  BtkErrorT Run() override {
    const DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
    if (!parser) return kBtkNoMemory;
    MemoryStream stream(document_);
    return parser->Parse(&data_, &stream);
  }
  std::string State() const override { return DumpWithoutFreshIds(data_); }
  const char* Remains() const override { return IsEmpty(data_) ? "empty" : "?"; }
  BtkErrorT RunAgain() override {
    EXPECT_EQ(IsEmpty(data_) ? Parse(InRoot(Module("earlier")), data_) : kBtkOk, kBtkOk);
    return Run();
  }

 private:
  const std::string document_;
  MfLdpDataT data_;
};

// Everything; the readers of the other roots; lists that grow beyond their first room; names that
// only the platform can fold; records that are refused when they have joined a list; what is refused
// early and late.
struct Document {
  std::string text;
  BtkErrorT code;
};
const std::vector<Document>& Documents() {
  const auto inRoot = [](const std::string& root, const std::string& content) {
    return "<" + root + " version=\"1\">" + WithIds(content) + "</" + root + ">";
  };
  std::string modules, classes;
  for (int i = 0; i < 9; ++i) {
    modules += R"(<module id="m" name="n"><preload name="x"/><preload name="y"/><preload name="z"/>
                  </module>)";
    classes += R"(<class id="$1"><clientside multiplicity="perLdp"><module name="n"/></clientside>
                  </class>)";
  }
  static const std::vector<Document> documents = {
      {kEverything, kBtkOk},
      {inRoot("tarnmodulemanifest", "<modules>" + modules + "</modules>"), kBtkOk},
      {inRoot("tarnclassmanifest", "<classes>" + classes + "</classes>"), kBtkOk},
      {inRoot("tarnrunnablemanifest",
              R"(<runnable moduleref="m"><app nameid="a"/><app nameid="b"/></runnable>)"),
       kBtkOk},
      {InRoot(modules + "<\xc3\x84/>"), kBtkUnexpected},
      {inRoot("tarnmodulemanifestofalengththatdoesnotfit", ""), kBtkUnexpected},
      {InRoot("<module name='n'/>"), kBtkMissing},
      {inRoot("tarnclassmanifest", R"(<class id="$1"><clientside multiplicity="perLdp">
                                      <module name="n" type="t"/></clientside></class>)"),
       kBtkNotSharedLib}};
  return documents;
}

// The files that operations read; never removed before the program ends.
struct Files {
  Files() {
    for (const char* file : {"one.tmfx", "two.tmfx"}) {
      const char* const text = file[0] == 'o' ? kEverything
                                              : "<module id='p' name='p'><preload by='executable' "
                                                "name='viewer'/></module><runnable moduleref='m'/>";
      manifests.Append(btkFSEntry(root.Write(file, DocumentOf(text)).c_str()));
    }
    std::string layout = "base = \"b\"\nscope = " + WithIds("$9") + "\n";
    for (int i = 0; i < 20; ++i)
      layout += "layout += 64 {\"a\" | \"b\" | \"c\", \"d\" | \"e\"}\n";
    root.Write("added/.installed", layout);
    root.Write(
        "added/a.tmfx",
        DocumentOf("<module id='m' name='lib'><preload by='executable' name='viewer'/></module>"
                   "<class id='$1' affinity='service' commonname='C'>"
                   "<serviceside moduleref='m' svcid='$2' xsname='S' exposed='true'/></class>"
                   "<class id='$4' affinity='service' commonname='Hosted'>"
                   "<serviceside moduleref='m' svcid='$5' exposed='true'/></class>"
                   "<runnable moduleref='m'><app nameid='a'/><launcher nameid='l' types='t'/>"
                   "<service id='$3' commonname='S' exposed='true'/>"
                   "<service id='$6' commonname='C' multiplicity='singleInstance' exposed='true'/>"
                   "</runnable>"));
    root.Write("other/d/b.tmfx", DocumentOf("<module id='b' name='b'/>"));
  }
  btkFSPath Directory(const char* name) const { return btkFSPath(root.At(name).c_str()); }

  TempDirectory root;
  btkFSList manifests{0};
};
const Files& TheFiles() {
  static const Files files;
  return files;
}

class LoadFiles final : public Operation {
 public:
  BtkErrorT Run() override {
    const DisposePtr<liLdpMfLoader> loader(liLdpMfLoader::CreateNew(nullptr));
    if (!loader) return kBtkNoMemory;
    return loader->Load(&*data_, BTK_W("/here"), TheFiles().manifests);
  }
  std::string State() const override { return DumpWithoutFreshIds(*data_); }
  const char* Remains() const override {
    // Nothing is lent before all files have been read.
    const bool lent = State().find("/here") != std::string::npos;
    return data_->modules.count == 5 && data_->runnables.count == 1 && !lent ? "first file" : "?";
  }
  BtkErrorT RunAgain() override {
    data_ = std::make_unique<MfLdpDataT>();
    return Run();
  }

 private:
  std::unique_ptr<MfLdpDataT> data_ = std::make_unique<MfLdpDataT>();
};

// ---- The repository ----------------------------------------------------------------------------

// The operation of a call's line, which may fail like a function.
BtkErrorT MayFail(const std::string& line) {
  static std::set<std::string> names;
  const auto name = names.insert(line.substr(0, line.find('('))).first;
  return BeforeCall(name->c_str(), Refusing::kByCode).value_or(kBtkOk);
}

class ManagedOperation : public Operation {
 protected:
  ManagedOperation() {
    managers_.onCall = MayFail;
    managers_.serviceVersion = 4;
    managers_.externalService = [](std::string_view) { return Id(3); };
    managers_.machineVariant = [](const btkWChar*, const char*) { return true; };
  }

  RecordingManagers managers_;
};

// What the queries answer; every entry is found by what it is filed under.
std::string AnswersOf(liMfRepository& repo) {
  std::string answers;
  std::vector<UniIdT> ids(static_cast<std::size_t>(repo.GetLoadpointIds(nullptr, 0)));
  repo.GetLoadpointIds(ids.data(), static_cast<std::int32_t>(ids.size()));
  for (const UniIdT& id : ids)
    answers +=
        Text(repo.FindLoadpoint(&id)->loadpoint) + DumpWithoutFreshIds(*repo.FindLoadpoint(&id));
  const UniIdT scope = Id(9);
  for (const char* name : {"C", "Hosted", "Render", "Work"})
    answers += repo.FindClassImpl(&scope, name, 0, 0) != nullptr ? name : "-";
  std::vector<MfSvcResolveT> entries(static_cast<std::size_t>(repo.GetServiceEntries(nullptr, 0)));
  repo.GetServiceEntries(entries.data(), static_cast<std::int32_t>(entries.size()));
  for (const MfSvcResolveT& entry : entries) {
    answers += "service " + std::string(entry.key) + " " + Text(entry.ids[kMfCombinedId]) + "\n";
    EXPECT_NE(repo.FindServiceEntry(&entry.ids[kMfCombinedId]), nullptr);
  }
  return answers;
}

class InitializeRepository : public ManagedOperation {
 public:
  InitializeRepository() {
    btkHostSetProcessLoadpoint(BTK_W("/lp"));
    RunAs("viewer");
  }
  ~InitializeRepository() override {
    const RepositoryPtr discarded(std::exchange(g_repository, nullptr));
    btkHostSetProcessLoadpoint(nullptr);
    btkHostSetExecutablePath(nullptr);
  }
  BtkErrorT Run() override { return liMfRepository::Initialize(TheFiles().manifests, nullptr); }
  std::string State() const override {
    return g_repository != nullptr ? AnswersOf(*g_repository) : "no repository";
  }
};

class AddInstallation final : public InitializeRepository {
 public:
  AddInstallation() { EXPECT_EQ(liMfRepository::Initialize(btkFSList(0), nullptr), kBtkOk); }

  BtkErrorT Run() override { return Add("added"); }
  // Once the load point is filed it stays.
  const char* Remains() const override {
    if (!Stays()) return "?";
    const bool indexed = !g_repository->classIndex.Empty() || !g_repository->serviceIndex.Empty();
    return indexed ? "filed, indexed in part" : "filed";
  }
  bool Stays() const override { return g_repository->GetLoadpointIds(nullptr, 0) == 2; }
  BtkErrorT RunAgain() override {
    if (!Stays()) return Run();
    EXPECT_EQ(Run(), kBtkDuplicate);
    return Add("other/d");
  }

 private:
  static BtkErrorT Add(const char* directory) {
    return g_repository->AddLoadpoint(TheFiles().Directory(directory).WideText());
  }
};

// ---- Publishing --------------------------------------------------------------------------------

std::string StateOf(const liMfPublisherImpl& publisher) {
  std::string state;
  for (ModuleListMember list : kModuleLists) {
    for (const MfModuleT* module : publisher.merged.*list)
      state += std::string(module->id) + " ";
    state += "/ ";
  }
  for (const MfIntfClassT* record : publisher.merged.classes)
    state += Text(record->ids[kMfClientSide]) + " ";
  return state + std::to_string(Count(publisher.batch)) + " pending " +
         std::to_string(publisher.newModules.Count()) + " " +
         std::to_string(publisher.newClasses.Count()) + " " +
         std::to_string(publisher.newRunnables.Count());
}

// A second batch.
class AddBatch final : public ManagedOperation {
 public:
  explicit AddBatch(const std::string& fragment) : batch_(fragment), again_(fragment) {
    EXPECT_EQ(earlier_.AddTo(*publisher_), kBtkOk);
  }

  BtkErrorT Run() override {
    DisposePtr<liMfPublisher> another;
    if (BtkErrorT e = liMfPublisher::CreateNew(Out(another), kIntfAgentView)) return e;
    return batch_.AddTo(*publisher_);
  }
  std::string State() const override { return StateOf(*publisher_); }
  // With records whose sides have not been moved.
  BtkErrorT RunAgain() override { return again_.AddTo(*publisher_); }

 private:
  const Batch earlier_{kFirstBatch + Module("c") + Class("app", "$4", "c") +
                       Class("app", "$7", "c")};
  const Batch batch_;
  const Batch again_;
  const PublisherPtr publisher_ = MakePublisher();
};

class PublishBatch final : public ManagedOperation {
 public:
  explicit PublishBatch(const std::string& fragment) : batch_(fragment) {
    EXPECT_EQ(batch_.AddTo(*publisher_), kBtkOk);
  }

  BtkErrorT Run() override { return publisher_->Publish(true); }
  std::string State() const override { return StateOf(*publisher_) + "\n" + Dump(batch_.data); }
  const char* Remains() const override {
    return publisher_->newRunnables.Empty() ? "done in part" : "to be done";
  }

 private:
  const Batch batch_;
  const PublisherPtr publisher_ = MakePublisher();
};

template <class Swept, class... Arguments>
std::function<std::unique_ptr<Operation>()> Makes(Arguments... arguments) {
  return [=] { return std::make_unique<Swept>(arguments...); };
}

}  // namespace

std::vector<SweptOperation> SweptOperations() {
  std::string manyModules, manyClasses;
  for (int i = 0; i < 1010; ++i)
    manyModules += Module("n" + std::to_string(i * 7919 % 1010));
  for (int i = 0; i < 20; ++i)
    manyClasses += "<class id='000000000000000000000000000001" + std::to_string(10 + i) +
                   "' affinity='app'><clientside moduleref='z'/></class>";
  std::vector<SweptOperation> operations;
  for (const Document& document : Documents())
    operations.push_back({"Parse", Makes<ParseDocument>(document.text), document.code});
  operations.push_back({"Load", Makes<LoadFiles>()});
  operations.push_back({"Initialize", Makes<InitializeRepository>()});
  // Without memory, the standard library cannot list a directory: it ends the program.
  operations.push_back(
      {"AddLoadpoint",
       Makes<AddInstallation>(),
       kBtkOk,
       {Failing::kThrow, Failing::kRefuse, Failing::kNoMemory, Failing::kNothrowNew}});
  operations.push_back(
      {"Add", Makes<AddBatch>(Module("d") + Module("e") + Module("f") + Class("app", "$8", "d") +
                              Class("app", "$3", "d") + Class("service", "$5", "e") +
                              Class("service", "$5", "", "f") + Class("app", "$6", "d"))});
  operations.push_back({"Add", Makes<AddBatch>(manyModules), kBtkOk, {Failing::kRefuse}});
  operations.push_back({"Publish", Makes<PublishBatch>(kFirstBatch + Module("z") + manyClasses)});
  return operations;
}

}  // namespace tarnmf::test
