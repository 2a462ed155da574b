// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/find_command.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <set>
#include <utility>
#include <vector>

#include "check/paths.h"
#include "tools/tarnmf/name_hint.h"
#include "tools/tarnmf/record_json.h"
#include "tools/tarnmf/scan_json.h"
#include "tools/tarnmf/scan_report.h"
#include "tools/tarnmf/scan_view.h"
#include "tools/tarnmf/show_text.h"
#include "tools/tarnmf/tell.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

// The exit status of a command over a scan that may have failed in part.
int ExitStatus(const ScanSession& session, bool found) {
  PrintFailures(session);
  return found && !session.Failed() ? 0 : 1;
}

std::string ScopeText(const UniIdT& scope) {
  return btkUniIdIsNull(scope) ? "none" : IdText(scope);
}

// ---- Classes -------------------------------------------------------------------------------------

// What was declared, for people whose class was not found.
void ExplainMissingClass(const ScanSession& session, const std::string& name) {
  std::set<std::string> names;
  std::vector<std::string> places;
  const ScanView view(session);
  for (const StepView& stepView : view.Steps()) {
    const ScanStep& step = stepView.Step();
    if (step.data == nullptr) continue;
    auto answer = stepView.Answers().begin();
    for (const MfIntfClassT* record : step.data->classes) {
      const std::string& why = (answer++)->why;
      if (record->commonname == nullptr) continue;
      names.insert(record->commonname);
      if (record->commonname != name) continue;
      places.push_back(fmt::format("  in {}, scope {}, service version {}{}", step.path,
                                   ScopeText(step.scope), record->svcVersion,
                                   why.empty() ? "" : " (" + why + ")"));
    }
  }
  if (!places.empty()) {
    Tell("no class \"{}\" for this scope, version and limit; declared are:\n{}", name,
         fmt::join(places, "\n"));
  } else {
    Tell("no class is called \"{}\"{}", name,
         NameHint(name, {names.begin(), names.end()}, "declared are"));
  }
}

std::string PathOf(liMfRepository& repository, const UniIdT& loadpoint) {
  const MfLdpDataT* const data = repository.FindLoadpoint(&loadpoint);
  return data != nullptr ? Narrow(data->loadpoint) : "";
}

void PrintClass(const ScanSession& session, const MfSvcResolveT& entry) {
  const MfIntfClassT& record = *entry.record;
  ShowText("{} {} service version {}\n", entry.key, IdText(record.ids[kMfClientSide]),
           entry.versionKey / 2);
  ShowText("  load point {}\n", PathOf(*session.Repository(), entry.ids[kMfLoadpointId]));
  ShowText("  scope {}\n", ScopeText(entry.ids[kMfScopeId]));
  constexpr const char* kSides[] = {"client side", "service side", "agent side"};
  for (std::int32_t side = 0; side < kMfSideCount; ++side) {
    const char* const module = record.sides[side].moduleref;
    if (module != nullptr) ShowText("  {} {}\n", kSides[side], session.Names().Shown(module));
  }
}

// ---- Services ------------------------------------------------------------------------------------

struct FoundService {
  const MfServiceRoleT* role = nullptr;
  std::string loadpoint;
};

// The path of a load point in the one form that can be compared as text.
std::string LoadpointPath(const std::string& path) {
  std::string whole = tarnmf::check::AbsolutePath(path);
  return tarnmf::check::FileNameOf(whole).empty() ? tarnmf::check::DirectoryOf(whole) : whole;
}

FoundService FindService(const ScanSession& session, const UniIdT& id, const std::string& in) {
  for (const ScanStep& step : session.Steps()) {
    if (step.data == nullptr) continue;
    const std::string wanted = in.empty() ? step.path : LoadpointPath(in);
    const MfServiceRoleT* const role =
        session.Repository()->FindService(&id, Widen(wanted).c_str());
    if (role != nullptr) return {role, wanted};
  }
  return {};
}

void ExplainMissingService(const ScanSession& session, const FindServiceOptions& options) {
  std::set<std::string> ids;
  std::set<std::string> paths;
  for (const ScanStep& step : session.Steps()) {
    if (step.data == nullptr) continue;
    if (!step.path.empty()) paths.insert(LoadpointPath(step.path));
    for (const MfRunnableT* runnable : step.data->runnables) {
      for (const MfServiceRoleT* role : runnable->services)
        ids.insert(IdText(role->id));
    }
  }
  const bool isPlaceKnown = options.in.empty() || paths.count(LoadpointPath(options.in)) > 0;
  if (!isPlaceKnown) {
    Tell("no load point has the path {}{}", options.in,
         NameHint(LoadpointPath(options.in), {paths.begin(), paths.end()}, "there are"));
    return;
  }
  const std::string id = IdText(ParseId(options.id));
  if (ids.count(id) > 0) {
    Tell("service {} is not in {}, but in another load point", id, options.in);
  } else {
    Tell("no service has the id {}{}", id, NameHint(id, {ids.begin(), ids.end()}, "declared are"));
  }
}

}  // namespace

int RunFindClass(const FindClassOptions& options) {
  const UniIdT scope = options.scope.empty() ? UniIdT{} : ParseId(options.scope);
  const ScanSession session(options.scan);
  liMfRepository* const repository = session.Repository();
  const MfSvcResolveT* const entry =
      repository != nullptr
          ? repository->FindClassImpl(&scope, options.name.c_str(), options.version, options.limit)
          : nullptr;
  if (options.scan.json) {
    Json output = {{"found", entry != nullptr},
                   {"entry", entry != nullptr ? ToJson(*entry) : Json()}};
    session.Names().Show(output);
    fmt::print("{}", FormText(json_format::kFindClass, std::move(output)));
  } else if (entry != nullptr) {
    PrintClass(session, *entry);
  }
  if (entry == nullptr) ExplainMissingClass(session, options.name);
  return ExitStatus(session, entry != nullptr);
}

int RunFindService(const FindServiceOptions& options) {
  const UniIdT id = ParseId(options.id);
  const ScanSession session(options.scan);
  const FoundService found = FindService(session, id, options.in);
  if (options.scan.json) {
    fmt::print("{}",
               FormText(json_format::kFindService,
                        {{"found", found.role != nullptr},
                         {"loadpoint", found.role != nullptr ? Json(found.loadpoint) : Json()},
                         {"service", found.role != nullptr ? ToJson(*found.role) : Json()}}));
  } else if (found.role != nullptr) {
    const char* const name = found.role->commonname;
    ShowText("{} {} version {}\n  load point {}\n", IdText(id),
             name != nullptr ? name : "(no name)", found.role->version, found.loadpoint);
  }
  if (found.role == nullptr) ExplainMissingService(session, options);
  return ExitStatus(session, found.role != nullptr);
}

}  // namespace tool
