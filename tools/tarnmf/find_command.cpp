#include "find_command.h"

#include <filesystem>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <set>

#include "record_json.h"
#include "scan_json.h"
#include "scan_report.h"
#include "text.h"

namespace tool {
namespace {

// The exit status of a command over a scan that may have failed in part.
int ExitStatus(const ScanSession& session, bool found) {
  PrintFailures(session);
  return found && !session.Failed() ? 0 : 1;
}

// ---- Classes -------------------------------------------------------------------------------------

// What was declared, for people whose name was not found.
std::set<std::string> ClassNames(const ScanSession& session) {
  std::set<std::string> names;
  for (const ScanStepT& step : session.Steps()) {
    if (step.data == nullptr) continue;
    for (const MfIntfClassT* record : step.data->classes) {
      if (record->commonname != nullptr) names.insert(record->commonname);
    }
  }
  return names;
}

void ExplainMissingClass(const ScanSession& session, const std::string& name) {
  const std::set<std::string> names = ClassNames(session);
  if (names.count(name) > 0) {
    fmt::print(
        stderr,
        "tarnmf: class \"{}\" is declared, but not for this scope, version and limit, or its "
        "hosting service is not one of its load point\n",
        name);
  } else if (names.empty()) {
    fmt::print(stderr, "tarnmf: class \"{}\" not found; no class with a common name is declared\n",
               name);
  } else {
    fmt::print(stderr, "tarnmf: class \"{}\" not found; declared are: {}\n", name,
               fmt::join(names, ", "));
  }
}

std::string PathOf(liMfRepository& repository, const UniIdT& loadpoint) {
  const MfLdpDataT* const data = repository.FindLoadpoint(&loadpoint);
  return data != nullptr ? Narrow(data->loadpoint) : "";
}

void PrintClass(liMfRepository& repository, const MfSvcResolveT& entry) {
  const MfIntfClassT& record = *entry.record;
  fmt::print("{} {} service version {}\n", entry.key, IdText(record.ids[kMfClientSide]),
             entry.versionKey / 2);
  fmt::print("  load point {}\n", PathOf(repository, entry.ids[kMfLoadpointId]));
  fmt::print("  scope {}\n",
             IsNullId(entry.ids[kMfScopeId]) ? "none" : IdText(entry.ids[kMfScopeId]));
  constexpr const char* kSides[] = {"client side", "service side", "agent side"};
  for (std::int32_t side = 0; side < kMfSideCount; ++side) {
    const char* const module = record.sides[side].moduleref;
    if (module != nullptr) fmt::print("  {} {}\n", kSides[side], module);
  }
}

// ---- Services ------------------------------------------------------------------------------------

struct FoundServiceT {
  const MfServiceRoleT* role = nullptr;
  std::string loadpoint;
};

FoundServiceT FindService(const ScanSession& session, const UniIdT& id, const std::string& in) {
  for (const ScanStepT& step : session.Steps()) {
    if (step.data == nullptr) continue;
    const std::string wanted =
        in.empty() ? step.path : std::filesystem::absolute(in).lexically_normal().string();
    const MfServiceRoleT* const role =
        session.Repository()->FindService(&id, Widen(wanted).c_str());
    if (role != nullptr) return {role, wanted};
  }
  return {};
}

void ExplainMissingService(const ScanSession& session, const FindServiceOptionsT& options) {
  std::set<std::string> declared;
  for (const ScanStepT& step : session.Steps()) {
    if (step.data == nullptr) continue;
    for (const MfRunnableT* runnable : step.data->runnables) {
      for (const MfServiceRoleT* role : runnable->services)
        declared.insert(fmt::format("{} in {}", IdText(role->id), step.path));
    }
  }
  fmt::print(stderr, "tarnmf: service {} not found; declared are: {}\n", options.id,
             declared.empty() ? "none" : fmt::format("{}", fmt::join(declared, ", ")));
}

}  // namespace

int RunFindClass(const FindClassOptionsT& options) {
  const UniIdT scope = options.scope.empty() ? UniIdT{} : ParseId(options.scope);
  const ScanSession session(options.scan);
  liMfRepository* const repository = session.Repository();
  const MfSvcResolveT* const entry =
      repository != nullptr
          ? repository->FindClassImpl(&scope, options.name.c_str(), options.version, options.limit)
          : nullptr;
  if (options.scan.json) {
    fmt::print("{}", JsonText({{"found", entry != nullptr},
                               {"entry", entry != nullptr ? ToJson(*entry) : Json()}}));
  } else if (entry != nullptr) {
    PrintClass(*repository, *entry);
  }
  if (entry == nullptr) ExplainMissingClass(session, options.name);
  return ExitStatus(session, entry != nullptr);
}

int RunFindService(const FindServiceOptionsT& options) {
  const UniIdT id = ParseId(options.id);
  const ScanSession session(options.scan);
  const FoundServiceT found = FindService(session, id, options.in);
  if (options.scan.json) {
    fmt::print("{}",
               JsonText({{"found", found.role != nullptr},
                         {"loadpoint", found.role != nullptr ? Json(found.loadpoint) : Json()},
                         {"service", found.role != nullptr ? ToJson(*found.role) : Json()}}));
  } else if (found.role != nullptr) {
    const char* const name = found.role->commonname;
    fmt::print("{} {} version {}\n  load point {}\n", IdText(id),
               name != nullptr ? name : "(no name)", found.role->version, found.loadpoint);
  }
  if (found.role == nullptr) ExplainMissingService(session, options);
  return ExitStatus(session, found.role != nullptr);
}

}  // namespace tool
