// SPDX-License-Identifier: Apache-2.0
// Everything that the library asks of the platform fails once: every call and every allocation of
// every operation, one after the other, in each way in which it can. What came of it is compared with
// cases/outcomes.cases, which has a line for what each function does to each operation.
#include <cxxabi.h>
#include <gtest/gtest.h>
#include <iostream>
#include <optional>
#include <set>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "tarnmf/dispose.h"
#include "tarnmf/stream_parser.h"

#include "platform/host/btkhost.h"
#include "tests/faults/operation.h"
#include "tests/support/case_file.h"
#include "tests/support/fault.h"
#include "tests/support/ignored_leaks.h"
#include "xml/xml_platform.h"

namespace tarnmf::test {
namespace {

constexpr BtkErrorT kThrown{-1};  // in place of a code

// What a run with a fault has come to. Nothing in it is allocated.
struct Outcome {
  const char* hit = nullptr;  // what has failed; null: nothing has
  BtkErrorT code = kBtkOk;
  const char* state = "";
};

BtkErrorT RunOf(Operation& operation) {
  try {
    return operation.Run();
  } catch (const PlatformException&) {
  } catch (const std::bad_alloc&) {
  } catch (const xercesc::OutOfMemoryException&) {
  }
  return kThrown;
}

std::string StateWithoutFault(const SweptOperation& swept) {
  const auto operation = swept.make();
  EXPECT_EQ(operation->Run(), swept.code);
  return operation->State();
}

// `whole` is the state that a run without a fault leaves.
Outcome Attempt(const SweptOperation& swept, const std::string& whole, Failing how, int n) {
  const auto operation = swept.make();
  const std::string before = operation->State();
  Outcome outcome;
  {
    const Fault fault(how, n);
    outcome.code = RunOf(*operation);
    outcome.hit = fault.Hit();
  }
  const std::string after = operation->State();
  if (outcome.code == swept.code) {
    outcome.state = after == whole ? "as ever" : "does without";
    return outcome;
  }
  outcome.state = after == before ? "as before" : operation->Remains();
  const bool stays = operation->Stays();
  EXPECT_EQ(operation->RunAgain(), swept.code);
  EXPECT_TRUE(stays || operation->State() == whole);
  return outcome;
}

std::string NameOf(const char* symbol) {
  int status = 0;
  char* const demangled = abi::__cxa_demangle(symbol, nullptr, nullptr, &status);
  std::string name = demangled != nullptr ? demangled : symbol;
  std::free(demangled);
  return name.substr(0, name.find('('));
}

// As a line of the table.
std::string Row(const SweptOperation& swept, Failing how, const Outcome& outcome) {
  const bool thrown = outcome.code == kThrown;
  const bool told = !thrown && outcome.code != swept.code;
  const std::string code = outcome.code == kRefusal ? "its code" : std::to_string(outcome.code);
  const char* const does = how == Failing::kRefuse ? " refuses" : " has no memory";
  return (told ? code + ", " : "") + outcome.state + " <= " + swept.name + ": " +
         (thrown ? "what throws" : NameOf(outcome.hit) + does);
}

// The XML library does not clean up after an allocation of its own that fails: it leaks blocks and
// may lose the stream that it was given. So only what is the library's is looked at then.
std::int64_t Live(Failing how) {
  return how == Failing::kThrowingNew ? btkHostLiveAllocations() : LiveAllocations();
}

// The two functions that the factories call once in a process.
constexpr char kCountUp[] = "_Z10btkAoInc32Pi";
constexpr char kPushCleanup[] = "_Z19btkPushCleanupCbLowPFvvES0_i";

// First in this program. A first step that fails is taken anew, and leaves no use of the XML library.
TEST(Faults, TheFactoriesTakeTheirFirstStepAgain) {
  using xercesc::XMLPlatformUtils;
  const char* const calls[] = {kCountUp, kPushCleanup};
  for (int n = 0; n < 2; ++n) {
    const Fault fault(Failing::kThrow, n);
    EXPECT_THROW(liMfStmParser::CreateNew(nullptr), PlatformException);
    EXPECT_STREQ(fault.Hit(), calls[n]);
  }
  EXPECT_NE(DisposePtr<liMfStmParser>(liMfStmParser::CreateNew(nullptr)), nullptr);
  NotifyDlmExit();
  EXPECT_NE(XMLPlatformUtils::fgMemoryManager, nullptr);  // in use since the program began
  ReleaseXmlPlatform();
  EXPECT_EQ(XMLPlatformUtils::fgMemoryManager, nullptr);
  EXPECT_EQ(AcquireXmlPlatform(), kBtkOk);
}

// Nothing that is refused is taken for done unless it does not matter, what throws is not swallowed,
// nothing leaks, nothing is left by halves, and the next try works.
TEST(Faults, EveryCallAndEveryAllocationFailsOnce) {
  std::set<std::string> rows, failed;
  int count = 0;
  for (const SweptOperation& swept : SweptOperations()) {
    const std::string whole = StateWithoutFault(swept);
    for (const Failing how : swept.ways) {
      std::optional<IgnoredLeaks> ignored;
      if (how == Failing::kThrowingNew) ignored.emplace();
      for (int n = 0;; ++n) {
        const std::int64_t before = Live(how);
        const Outcome outcome = Attempt(swept, whole, how, n);
        const std::int64_t after = Live(how);
        if (outcome.hit == nullptr) break;
        const std::string row = Row(swept, how, outcome);
        EXPECT_EQ(after, before) << row;
        rows.insert(row);
        failed.insert(outcome.hit);
        ++count;
      }
    }
  }

  // Where nothing stands in front of calls through tables, a stream is always read and counted up.
  const bool knowsTables = KnownCalls().contains("_ZN13btkRefCounted6AddRefEv");
  for (const FileCase& row : ReadCaseFile(TARNMF_CASES "/outcomes.cases")) {
    const bool isReading = row.input.find("btkFileStream::Read") != row.input.npos;
    EXPECT_EQ(rows.erase(row.result + " <= " + row.input), knowsTables || !isReading) << row.name;
  }
  for (const std::string& row : rows)
    ADD_FAILURE() << row;
  for (const std::string& function : KnownCalls()) {
    const bool once = (knowsTables && function == kCountUp) || function == kPushCleanup;
    EXPECT_NE(failed.contains(function), once) << function;
  }
  std::cout << "injected faults: " << count << "\n";
  RecordProperty("injected_faults", count);
  EXPECT_GT(count, 6000);
}

}  // namespace
}  // namespace tarnmf::test
