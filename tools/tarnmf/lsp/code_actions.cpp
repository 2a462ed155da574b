// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/code_actions.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "check/fixes.h"
#include "tools/tarnmf/lsp/allow_comment.h"
#include "tools/tarnmf/lsp/diagnostics.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;

constexpr char kQuickFix[] = "quickfix";

// Whether the editor asks for actions of this kind: kinds are hierarchies.
bool IsWanted(const Json& only, std::string_view kind) {
  if (!only.is_array()) return true;
  return std::any_of(only.begin(), only.end(), [&](const Json& each) {
    if (!each.is_string()) return false;
    const std::string_view wanted = each.get_ref<const std::string&>();
    return wanted.empty() || kind == wanted ||
           (kind.starts_with(wanted) && kind[wanted.size()] == '.');
  });
}

// The last edit that changes `before` into `after`.
Edit Difference(std::string_view before, std::string_view after) {
  const auto differs = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  auto begin = static_cast<std::size_t>(differs.first - before.begin());
  // Not within a character.
  while (begin > 0 && begin < before.size() && (before[begin] & 0xC0) == 0x80)
    --begin;
  std::size_t same = 0;
  const std::size_t most = std::min(before.size(), after.size()) - begin;
  while (same < most && before[before.size() - 1 - same] == after[after.size() - 1 - same])
    ++same;
  while (same > 0 && (before[before.size() - same] & 0xC0) == 0x80)
    --same;
  return {{begin, before.size() - same},
          std::string(after.substr(begin, after.size() - same - begin))};
}

class Actions {
 public:
  Actions(const OpenDocument& document, const Editor& editor, Workspace& workspace,
          const Process& process)
      : document_(document), editor_(editor), workspace_(workspace), process_(process) {}

  void AddFor(const Finding& finding) {
    const Json diagnostic = Diagnostic(finding, editor_);
    for (const Suggestion& suggestion : finding.suggestions) {
      Json& action = Add(suggestion.title, kQuickFix, *finding.place.source, suggestion.edits);
      action["diagnostics"] = {diagnostic};
      if (suggestion.safe) action["isPreferred"] = true;
    }
    if (const std::optional<Edit> edit = AllowanceOf(finding)) {
      Json& action = Add(fmt::format("Allow {} here", Describe(finding.rule).name), kQuickFix,
                         *finding.place.source, {*edit});
      action["diagnostics"] = {diagnostic};
    }
  }

  void AddFixAll() {
    SettingsFinder settings(workspace_.Files());
    const FixOutcome outcome = Fix(process_.request, workspace_.Files(), settings, Levels());
    for (const FixedFile& file : outcome.files) {
      if (file.path != document_.path || file.before == file.after) continue;
      const Source source = Source::OfEditedManifest(file.path, file.before);
      const std::string after = file.after.substr(source.MarkSize());
      Add("Apply all corrections that are certain", kFixAllKind, source,
          {Difference(source.Text(), after)});
    }
  }

  Json Take() { return std::move(actions_); }

 private:
  Json& Add(const std::string& title, const char* kind, const Source& source,
            const std::vector<Edit>& edits) {
    actions_.push_back(
        {{"title", title}, {"kind", kind}, {"edit", editor_.WorkspaceEdit({{&source, edits}})}});
    return actions_.back();
  }

  std::optional<Edit> AllowanceOf(const Finding& finding) const {
    for (const auto& loadpoint : process_.report.loadpoints) {
      if (loadpoint->layout != nullptr && &loadpoint->layout->source == finding.place.source)
        return AllowComment(*loadpoint->layout, finding);
      for (const auto& manifest : loadpoint->manifests) {
        if (&manifest->source == finding.place.source) return AllowComment(*manifest, finding);
      }
    }
    return std::nullopt;
  }

  const OpenDocument& document_;
  const Editor& editor_;
  Workspace& workspace_;
  const Process& process_;
  Json actions_ = Json::array();
};

bool HasSafe(const Finding& finding) {
  return std::any_of(finding.suggestions.begin(), finding.suggestions.end(),
                     [](const Suggestion& suggestion) { return suggestion.safe; });
}

}  // namespace

Json CodeActions(const OpenDocument& document, const Json& params, const Editor& editor,
                 Workspace& workspace) {
  const Process* const process = workspace.ProcessWith(document.path);
  if (process == nullptr || !editor.abilities.literalActions) return Json::array();
  const Json& range = Member(params, "range");
  const std::size_t begin = editor.OffsetIn(document, Member(range, "start"));
  const std::size_t end = editor.OffsetIn(document, Member(range, "end"));
  const Json& only = Member(params, "context", "only");
  Actions actions(document, editor, workspace, *process);
  // Correcting everything means to check everything again: that is done where it is asked for, or
  // where there is something to correct.
  bool isFixAllWanted = only.is_array();
  for (const Finding& finding : process->verdict.findings) {
    if (finding.place.source->Path() != document.path) continue;
    if (finding.place.span.begin > end || finding.place.span.end < begin) continue;
    if (IsWanted(only, kQuickFix)) actions.AddFor(finding);
    isFixAllWanted = isFixAllWanted || HasSafe(finding);
  }
  if (isFixAllWanted && IsWanted(only, kFixAllKind)) actions.AddFixAll();
  return actions.Take();
}

}  // namespace tool::lsp
