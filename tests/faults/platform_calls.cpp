// SPDX-License-Identifier: Apache-2.0
// The platform's functions as this program's library sees them: each may fail in front of its work.
// A function is known by the name that the linker knows it by, since some are constructors.
#include "platform/dlm.h"
#include "platform/env_command.h"
#include "platform/filesystem.h"
#include "platform/runtime.h"
#include "platform/service.h"
#include "platform/stream.h"
#include "platform/text.h"
#include "platform/unique_id.h"
#include "tests/faults/operation.h"
#include "tests/support/fault.h"

// Of the folder of the system.
#include "interposing.h"

using namespace tarnmf::test;

std::set<std::string>& tarnmf::test::KnownCalls() {
  static std::set<std::string> calls;
  return calls;
}

namespace {

struct Known {
  explicit Known(const char* symbol) { KnownCalls().insert(symbol); }
};

template <class Result>
Result Refused(BtkErrorT code) {
  if constexpr (std::is_same_v<Result, BtkErrorT>) return code;
  if constexpr (std::is_pointer_v<Result>) return nullptr;
  if constexpr (std::is_integral_v<Result>) return static_cast<Result>(-1);
  std::abort();
}

}  // namespace

#define JOINED(left, right) left##right
#define FUNCTION(refusing, result, symbol, name, parameters, ...)                                \
  INTERPOSED(result, symbol, name, parameters)                                                   \
  const Known JOINED(kKnown, name)(symbol);                                                      \
  result name parameters {                                                                       \
    if (const auto code = BeforeCall(symbol, Refusing::refusing)) return Refused<result>(*code); \
    return REAL_ONE(name, symbol)(__VA_ARGS__);                                                  \
  }
#define NUMBERED(refusing, result, symbol, number, ...) \
  FUNCTION(refusing, result, symbol, JOINED(PlatformCall, number), __VA_ARGS__)
#define COUNTED(refusing, result, symbol, number, ...) \
  NUMBERED(refusing, result, symbol, number, __VA_ARGS__)
#define CALL(refusing, result, symbol, ...) \
  COUNTED(refusing, result, symbol, __COUNTER__, __VA_ARGS__)

using Text = const char*;
using Wide = const btkWChar*;
using Size = std::size_t;
using UniId = const UniIdT*;
using Code = BtkErrorT;

// clang-format off
CALL(kOneWay, void*, "_Z10btkReAllocPv" SIZE, (void* a, Size b), a, b)
CALL(kOneWay, char*, "_Z10btk_strdupPKc", (Text a), a)
CALL(kOneWay, btkWChar*, "_Z10btk_wcsdupPK" WIDE, (Wide a), a)

CALL(kByCode, Code, "_Z17btkStrUtf16ToUtf8Pc" SIZE "P" SIZE "PK" WIDE SIZE, (char* a, Size b, Size* c, Wide d, Size e), a, b, c, d, e)
CALL(kByCode, Code, "_Z22btkStrUtf16ToUtf8AllocPPcP" SIZE "PK" WIDE SIZE, (char** a, Size* b, Wide c, Size d), a, b, c, d)
CALL(kByCode, Code, "_Z22btkStrUtf8ToLowerAllocPPcP" SIZE "PKc" SIZE, (char** a, Size* b, Text c, Size d), a, b, c, d)
CALL(kByCode, Code, "_Z26btkStrMultibyteToWideAllocPP" WIDE "P" SIZE "PKc" SIZE, (btkWChar** a, Size* b, Text c, Size d), a, b, c, d)

CALL(kByCode, Code, "_Z13btkUniIdGen14P6UniIdTii", (UniIdT* a, int b, int c), a, b, c)
CALL(kByCode, Code, "_Z13btkUniIdParseP6UniIdTPKc" SIZE "PS2_i", (UniIdT* a, Text b, Size c, Text* d, int e), a, b, c, d, e)
CALL(kByCode, Code, "_Z14btkUniIdFormatPc" SIZE "P" SIZE "PK6UniIdTii", (char* a, Size b, Size* c, UniId d, int e, int f), a, b, c, d, e, f)
CALL(kByCode, Code, "_Z15btkUniIdCombineP6UniIdTPKS_S2_", (UniIdT* a, UniId b, UniId c), a, b, c)
CALL(kNever, int, "_Z15btkUniIdComparePK6UniIdTS1_", (UniId a, UniId b), a, b)
CALL(kNever, bool, "_Z15btkUniIdIsEqualPK6UniIdTS1_", (UniId a, UniId b), a, b)

CALL(kNever, int, "_Z14btk_strcasecmpPKcS0_", (Text a, Text b), a, b)
CALL(kNever, int, "_Z21CmpCase_cStrings_SafePKPKcS2_", (Text const* a, Text const* b), a, b)
CALL(kNever, int, "_Z16Cmp_cWPaths_SafePKPK" WIDE "S2_", (Wide const* a, Wide const* b), a, b)
CALL(kNever, bool, "_Z12btk_iswspace" WIDE, (btkWChar a), a)
CALL(kNever, bool, "_ZeqRK10btkZStringPK" WIDE, (const btkZString* a, Wide b), a, b)

CALL(kNever, std::int32_t, "_Z10btkAoInc32Pi", (std::int32_t* a), a)
CALL(kNever, int, "_Z19btkPushCleanupCbLowPFvvES0_i", (btkCleanupT a, btkCleanupT b, int c), a, b, c)
CALL(kNever, Text, "_Z10btk_getenvPKc", (Text a), a)
CALL(kNever, Text, "_Z16btkGetVexMachinev", ())
CALL(kNever, Text, "_Z20btkGetVexMachine3264PKc", (Text a), a)
CALL(kOneWay, Size, "_Z16btkGetLoadpointWP" WIDE SIZE, (btkWChar* a, Size b), a, b)
CALL(kByCode, Code, "_Z29btkDlmGetCurProcessImagePathWP" WIDE SIZE, (btkWChar* a, Size b), a, b)
CALL(kByCode, Code, "_Z21btkGetExecutableNameWP" WIDE SIZE "PKvPK" WIDE, (btkWChar* a, Size b, const void* c, Wide d), a, b, c, d)
CALL(kOneWay, btkDlmManager*, "_ZN13btkDlmManager8InstanceEv", ())
CALL(kOneWay, btkServiceManager*, "_ZN17btkServiceManager8InstanceEv", ())
CALL(kOneWay, btkSvcSession*, "_ZN13btkSvcSession7CurrentEv", ())
CALL(kByCode, Code, "_Z21btkIntfPublishRefListPK13IntfRefEntryT" SIZE "b", (const IntfRefEntryT* a, std::uint64_t b, bool c), a, b, c)

CALL(kNever, void, "_ZN7EnvCmdTC1ENS_7ActionTE", (EnvCmdT* a, EnvCmdT::ActionT b), a, b)
CALL(kNever, void, "_ZN10btkFSEntryC1EPK" WIDE, (btkFSEntry* a, Wide b), a, b)
CALL(kNever, void, "_ZN10btkFSEntryC1EPKc", (btkFSEntry* a, Text b), a, b)
CALL(kNever, btkFSEntry*, "_ZN10btkFSEntrydVEPKc", (btkFSEntry* a, Text b), a, b)
CALL(kNever, btkFSEntry*, "_ZN10btkFSEntrypLEPKc", (btkFSEntry* a, Text b), a, b)
CALL(kNever, btkFSEntry, "_ZNK10btkFSEntry7GetHeadEv", (const btkFSEntry* a), a)
CALL(kNever, btkZString, "_ZNK10btkFSEntry7GetTailEv", (const btkFSEntry* a), a)
CALL(kNever, void, "_ZN9btkFSListC1ERK10btkFSEntryPKc", (btkFSList* a, const btkFSEntry* b, Text c), a, b, c)
CALL(kNever, void, "_ZN9btkFSListC1Ei", (btkFSList* a, int b), a, b)
CALL(kNever, void, "_ZN9btkFSListC1ERKS_", (btkFSList* a, const btkFSList* b), a, b)
CALL(kNever, unsigned, "_ZNK9btkFSList5CountEv", (const btkFSList* a), a)
CALL(kNever, const btkFSEntry*, "_ZNK9btkFSListixEj", (const btkFSList* a, unsigned b), a, b)
CALL(kNever, void, "_ZN9btkFSPathC1EPK" WIDE, (btkFSPath* a, Wide b), a, b)
CALL(kNever, void, "_ZN9btkFSPathC1EPKc", (btkFSPath* a, Text b), a, b)

CALL(kNever, btkIOSerializer*, "_Z21btkGetAsciiSerializerv", ())
CALL(kByCode, Code, "_ZN13btkFileStream4OpenEPKciP15btkIOSerializer", (btkFileStream* a, Text b, int c, btkIOSerializer* d), a, b, c, d)

// These two are called through the streams' table of functions.
INTERPOSED_IN_TABLES(CALL(kOneWay, std::int32_t, "_ZN13btkFileStream4ReadEPv" SIZE, (btkFileStream* a, void* b, Size c), a, b, c))
INTERPOSED_IN_TABLES(CALL(kNever, std::int32_t, "_ZN13btkRefCounted6AddRefEv", (btkRefCounted* a), a))
// clang-format on
