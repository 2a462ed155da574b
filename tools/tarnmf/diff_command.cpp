// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/diff_command.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <iterator>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include "tools/tarnmf/scan_outline.h"
#include "tools/tarnmf/show_text.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

struct DiffOptions {
  std::string before;  // files with what "scan --json" has printed
  std::string after;
  bool json = false;
};

// By ItemKind.
constexpr const char* kKinds[] = {"load point", "module", "class", "service", "runnable"};
static_assert(std::size(kKinds) == static_cast<std::size_t>(ItemKind::kRunnable) + 1);

// One line of text and one JSON object for the same thing.
struct Difference {
  std::string text;
  Json json;
};

const char* KindOf(const ItemKey& key) {
  return kKinds[static_cast<std::size_t>(key.kind)];
}

// "module m in /opt/pack". A process without a load point has one without a path.
std::string Subject(const ItemKey& key, const Item& item) {
  const std::string loadpoint =
      key.loadpoint.empty() ? "the process without a load point" : key.loadpoint;
  if (key.kind != ItemKind::kLoadpoint)
    return fmt::format("{} {} in {}", KindOf(key), item.name, loadpoint);
  return key.loadpoint.empty() ? loadpoint : fmt::format("{} {}", KindOf(key), item.name);
}

Json Head(const ItemKey& key, const Item& item, const char* change) {
  return {
      {"kind", KindOf(key)}, {"change", change}, {"loadpoint", key.loadpoint}, {"name", item.name}};
}

std::string FileText(const Json& file) {
  return file.is_string() ? file.get<std::string>() : "no file";
}

std::vector<std::string> ChangedFields(const Json& before, const Json& after) {
  std::vector<std::string> fields;
  for (const auto& [key, value] : before.items()) {
    if (!after.contains(key) || after[key] != value) fields.push_back(key);
  }
  for (const auto& [key, value] : after.items()) {
    if (!before.contains(key)) fields.push_back(key);
  }
  return fields;
}

class Comparison {
 public:
  Comparison(const ScanOutline& before, const ScanOutline& after) {
    Walk(
        before.items, after.items,
        [this](const ItemKey& key, const Item& item) { Lone(key, item, "removed"); },
        [this](const ItemKey& key, const Item& item) { Lone(key, item, "added"); },
        [this](const ItemKey& key, const Item& old, const Item& now) { Compare(key, old, now); });
    std::set<Query> queries;
    for (const ScanOutline* outline : {&before, &after}) {
      for (const auto& [query, answer] : outline->answers)
        queries.insert(query);
    }
    for (const Query& query : queries)
      Compare(query, before.AnswerTo(query), after.AnswerTo(query));
  }

  const std::vector<Difference>& Differences() const { return differences_; }

 private:
  // Meets the keys of both maps in their order.
  template <class Map, class OnlyBefore, class OnlyAfter, class Both>
  static void Walk(const Map& before, const Map& after, OnlyBefore onlyBefore, OnlyAfter onlyAfter,
                   Both both) {
    auto old = before.begin();
    auto now = after.begin();
    while (old != before.end() || now != after.end()) {
      if (now == after.end() || (old != before.end() && old->first < now->first)) {
        onlyBefore(old->first, old->second);
        ++old;
      } else if (old == before.end() || now->first < old->first) {
        onlyAfter(now->first, now->second);
        ++now;
      } else {
        both(old->first, old->second, now->second);
        ++old;
        ++now;
      }
    }
  }

  void Lone(const ItemKey& key, const Item& item, const char* change) {
    differences_.push_back(
        {fmt::format("{}: {}", Subject(key, item), change), Head(key, item, change)});
  }

  void Compare(const ItemKey& key, const Item& old, const Item& now) {
    if (old.file != now.file) {
      Json json = Head(key, now, "resolves");
      json["before"] = old.file;
      json["after"] = now.file;
      differences_.push_back({fmt::format("{}: resolves to {}, before to {}", Subject(key, now),
                                          FileText(now.file), FileText(old.file)),
                              std::move(json)});
    }
    const std::vector<std::string> fields = ChangedFields(old.content, now.content);
    if (fields.empty()) return;
    Json json = Head(key, now, "changed");
    json["fields"] = fields;
    for (const std::string& field : fields) {
      json["before"][field] = old.content.value(field, Json());
      json["after"][field] = now.content.value(field, Json());
    }
    differences_.push_back(
        {fmt::format("{}: changed in {}", Subject(key, now), fmt::join(fields, ", ")),
         std::move(json)});
  }

  static std::string AnswerText(const Answer* answer) {
    return answer == nullptr ? "nothing"
                             : fmt::format("{} in {}, service version {}", answer->id,
                                           answer->loadpoint, answer->version);
  }
  static Json AnswerJson(const Answer* answer) {
    if (answer == nullptr) return {};
    return {{"id", answer->id}, {"loadpoint", answer->loadpoint}, {"svcVersion", answer->version}};
  }

  // At least one of the scans has an answer.
  void Compare(const Query& query, const Answer* old, const Answer* now) {
    if (old != nullptr && now != nullptr && now->IsOf(*old)) return;
    const bool anyScope = btkUniIdIsNull(ParseId(query.scope));
    differences_.push_back(
        {fmt::format("class \"{}\" for {}: answered by {}, before by {}", query.name,
                     anyScope ? "callers without a scope" : "callers of scope " + query.scope,
                     AnswerText(now), AnswerText(old)),
         {{"kind", "class"},
          {"change", "answered"},
          {"name", query.name},
          {"scope", query.scope},
          {"before", AnswerJson(old)},
          {"after", AnswerJson(now)}}});
  }

  std::vector<Difference> differences_;
};

int RunDiff(const DiffOptions& options) {
  const ScanOutline before = ReadOutline(options.before);
  const ScanOutline after = ReadOutline(options.after);
  const Comparison comparison(before, after);
  const std::vector<Difference>& differences = comparison.Differences();
  if (options.json) {
    Json array = Json::array();
    for (const Difference& difference : differences)
      array.push_back(difference.json);
    fmt::print("{}", FormText(json_format::kDiff, {{"differences", std::move(array)}}));
  } else {
    for (const Difference& difference : differences)
      ShowText("{}\n", difference.text);
  }
  return differences.empty() ? 0 : 1;
}

}  // namespace

void AddDiff(CLI::App& app, Action& action) {
  const auto options = std::make_shared<DiffOptions>();
  CLI::App* const diff = app.add_subcommand("diff", "Show what has changed between two scans");
  diff->add_option("OLD", options->before, "output of \"scan --json\" from before")->required();
  diff->add_option("NEW", options->after, "output of \"scan --json\" from after")->required();
  diff->add_flag("--json", options->json, "print JSON");
  diff->callback([&action, options] { action = [options] { return RunDiff(*options); }; });
}

}  // namespace tool
