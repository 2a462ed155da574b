// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/list_command.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <utility>
#include <vector>

#include "tools/tarnmf/record_json.h"
#include "tools/tarnmf/scan_report.h"
#include "tools/tarnmf/scan_view.h"
#include "tools/tarnmf/show_text.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

// One line of text and one JSON object for the same thing.
struct Row {
  std::string text;
  Json json;
};

std::vector<Row> Loadpoints(const ScanSession& session) {
  liMfRepository& repository = *session.Repository();
  std::vector<UniIdT> ids(static_cast<std::size_t>(repository.GetLoadpointIds(nullptr, 0)));
  repository.GetLoadpointIds(ids.data(), static_cast<std::int32_t>(ids.size()));
  std::vector<Row> rows;
  for (const UniIdT& id : ids) {
    const MfLdpDataT& data = *repository.FindLoadpoint(&id);
    const std::string path = Narrow(data.loadpoint);
    rows.push_back({fmt::format("{} {}: {} modules, {} classes, {} runnables", IdText(id), path,
                                data.modules.count, data.classes.count, data.runnables.count),
                    {{"id", IdText(id)},
                     {"loadpoint", path},
                     {"modules", data.modules.count},
                     {"classes", data.classes.count},
                     {"runnables", data.runnables.count}}});
  }
  return rows;
}

std::vector<Row> Classes(const ScanSession& session) {
  std::vector<Row> rows;
  const ScanView view(session);
  for (const StepView& stepView : view.Steps()) {
    const ScanStep& step = stepView.Step();
    if (step.data == nullptr) continue;
    auto answer = stepView.Answers().begin();
    for (const MfIntfClassT* record : step.data->classes) {
      const std::string id = IdText(record->ids[kMfClientSide]);
      const char* const name = record->commonname;
      const std::string& why = (answer++)->why;
      rows.push_back(
          {fmt::format("{} {} service version {} in {}{}", name != nullptr ? name : "-", id,
                       record->svcVersion, step.path, why.empty() ? "" : fmt::format(" ({})", why)),
           {{"commonname", ToJson(name)},
            {"id", id},
            {"svcVersion", record->svcVersion},
            {"loadpoint", step.path},
            {"scope", IdText(step.scope)},
            {"answers", why.empty()},
            {"why", why.empty() ? Json() : Json(why)}}});
    }
  }
  return rows;
}

std::vector<Row> Services(const ScanSession& session) {
  std::vector<Row> rows;
  for (const MfSvcResolveT& entry : ServiceEntries(*session.Repository())) {
    rows.push_back({fmt::format("{} {} version {}, combined id {}", IdText(entry.ids[kMfServiceId]),
                                *entry.key != '\0' ? entry.key : "(no name)", entry.versionKey / 2,
                                IdText(entry.ids[kMfCombinedId])),
                    ToJson(entry)});
  }
  return rows;
}

struct Listing {
  const char* name;  // also of the array in JSON
  int format;
  std::vector<Row> (*rows)(const ScanSession&);
};
constexpr Listing kListings[] = {
    {"loadpoints", json_format::kListLoadpoints, Loadpoints},
    {"classes", json_format::kListClasses, Classes},
    {"services", json_format::kListServices, Services},
};

}  // namespace

int RunList(const ScanOptions& options, const std::string& what) {
  const ScanSession session(options);
  const Listing& listing =
      *std::find_if(std::begin(kListings), std::end(kListings),
                    [&](const Listing& candidate) { return what == candidate.name; });
  std::vector<Row> rows;
  if (session.Repository() != nullptr) rows = listing.rows(session);
  if (options.json) {
    Json array = Json::array();
    for (const Row& row : rows)
      array.push_back(row.json);
    Json output = {{what, array}};
    session.Names().Show(output);
    fmt::print("{}", FormText(listing.format, std::move(output)));
  } else {
    for (const Row& row : rows)
      ShowText("{}\n", row.text);
  }
  PrintFailures(session);
  return session.Failed() ? 1 : 0;
}

}  // namespace tool
