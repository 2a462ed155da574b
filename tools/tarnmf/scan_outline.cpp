// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/scan_outline.h"

#include <fmt/format.h>
#include <fstream>
#include <initializer_list>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "platform/host/system_path.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

using IdsByFile = std::unordered_map<std::string, std::string>;

// A module that resolves to another file changes nothing but itself.
void PutIdsForFiles(Json& json, const IdsByFile& ids) {
  if (json.is_string()) {
    const auto id = ids.find(json.get_ref<const std::string&>());
    if (id != ids.end()) json = id->second;
  } else if (json.is_structured()) {
    for (Json& element : json)
      PutIdsForFiles(element, ids);
  }
}

Json Without(Json object, std::initializer_list<const char*> keys) {
  for (const char* key : keys)
    object.erase(key);
  return object;
}

std::string NameAndId(const Json& name, const std::string& id) {
  return name.is_string() ? fmt::format("\"{}\" ({})", name.get<std::string>(), id) : id;
}

// Takes in one step of a scan; what is not as a scan prints it throws an exception of the JSON
// library.
class StepReader {
 public:
  StepReader(const Json& step, ScanOutline& outline)
      : step_(step), outline_(outline), loadpoint_(step.at("loadpoint").get<std::string>()) {
    if (loadpoint_.empty()) loadpoint_ = step.at("directory").get<std::string>();
  }

  void Read() {
    const Json& registered = step_.at("registered");
    if (step_.contains("modules")) {
      for (const Json& module : step_.at("modules")) {
        if (module.at("file").is_string()) ids_.emplace(module.at("file"), module.at("id"));
      }
      AddModules();
      AddClasses();
    }
    for (const Json& service : registered.at("services")) {
      const std::string id = service.at("id");
      Add(ItemKind::kService, id, {NameAndId(service.at("commonname"), id), service, {}});
    }
    for (const Json& runnable : registered.at("runnables")) {
      const std::string name = runnable.at("name");
      Add(ItemKind::kRunnable, name, {name, runnable, {}});
    }
    Json rest = Without(step_, {"data", "modules", "filed", "id", "loadpoint", "registered"});
    rest.update(Without(registered, {"services", "runnables"}));
    Add(ItemKind::kLoadpoint, "", {loadpoint_, std::move(rest), {}});
  }

 private:
  void Add(ItemKind kind, const std::string& id, Item item) {
    PutIdsForFiles(item.content, ids_);
    const int number = numbers_[{kind, id}]++;
    outline_.items.emplace(ItemKey{kind, loadpoint_, id, number}, std::move(item));
  }

  void AddModules() {
    const Json& modules = step_.at("modules");
    for (std::size_t i = 0; i < modules.size(); ++i) {
      const std::string id = modules.at(i).at("id");
      Json content = step_.at("data").at("modules").at(i);
      for (Json& impl : content.at("impls"))
        impl.erase("resolvedPath");
      content.update(Without(modules.at(i), {"file", "tried", "refusals"}));
      Add(ItemKind::kModule, id, {id, std::move(content), modules.at(i).at("file")});
    }
  }

  void AddClasses() {
    for (const Json& record : step_.at("data").at("classes")) {
      const std::string id = record.at("ids").at(0);
      Add(ItemKind::kClass, id, {NameAndId(record.at("commonname"), id), record, {}});
    }
    for (const Json& filed : step_.at("filed").at("classes")) {
      if (!filed.at("answers").get<bool>()) continue;
      outline_.answers.insert_or_assign(
          Query{filed.at("commonname"), step_.at("scope")},
          Answer{filed.at("id"), loadpoint_, filed.at("svcVersion").get<int>()});
    }
  }

  const Json& step_;
  ScanOutline& outline_;
  std::string loadpoint_;
  IdsByFile ids_;
  std::map<std::pair<ItemKind, std::string>, int> numbers_;
};

// A sentence about a scan that another version of the tool has printed; empty for one as this one
// prints it.
std::string FormatProblem(const Json& scan) {
  const Json format = scan.value("format", Json());
  if (format == Json(json_format::kScan)) return "";
  return fmt::format("the scan {}, and this version of tarnmf reads format {} only",
                     format.is_number() ? "is of format " + format.dump() : "names no format",
                     json_format::kScan);
}

// What a scan prints is never that deep, and the functions above descend into everything.
bool RefuseDepth(int depth, Json::parse_event_t /*event*/, Json& /*parsed*/) {
  constexpr int kDeepest = 64;
  if (depth > kDeepest) throw std::invalid_argument("the file holds too many levels");
  return true;
}

}  // namespace

const Answer* ScanOutline::AnswerTo(const Query& query) const {
  auto answer = answers.find(query);
  if (answer == answers.end()) answer = answers.find({query.name, IdText({})});
  return answer != answers.end() ? &answer->second : nullptr;
}

ScanOutline ReadOutline(const std::string& file) {
  std::ifstream stream(SystemPath(file), std::ios::binary);
  if (!stream) throw std::invalid_argument(fmt::format("{}: the file cannot be read", file));
  ScanOutline outline;
  std::string problem;
  try {
    const Json scan = Json::parse(stream, RefuseDepth);
    problem = FormatProblem(scan);
    if (problem.empty()) {
      for (const Json& step : scan.at("steps"))
        StepReader(step, outline).Read();
    }
  } catch (const std::exception& error) {
    problem = fmt::format("this is not what \"tarnmf scan --json\" prints: {}", error.what());
  }
  if (!problem.empty()) throw std::invalid_argument(fmt::format("{}: {}", file, problem));
  return outline;
}

}  // namespace tool
