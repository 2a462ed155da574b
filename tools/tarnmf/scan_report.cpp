// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/scan_report.h"

#include <algorithm>
#include <cstdio>
#include <fmt/format.h>
#include <iterator>
#include <vector>

#include "tools/tarnmf/output.h"
#include "tools/tarnmf/report_text.h"
#include "tools/tarnmf/scan_summary.h"
#include "tools/tarnmf/show_text.h"
#include "tools/tarnmf/tell.h"

namespace tool {
namespace {

// Lines of one kind that are shown of a load point.
constexpr std::size_t kShown = 10;

std::string Things(std::size_t count, const char* one, const char* many) {
  return fmt::format("{} {}", count, count == 1 ? one : many);
}

// " (2 unresolved)", or nothing.
std::string Odd(std::size_t count, const char* what) {
  return count == 0 ? "" : fmt::format(" ({} {})", count, what);
}

void PrintLines(const char* heading, const std::vector<std::string>& lines) {
  if (lines.empty()) return;
  ShowText("  {}\n", heading);
  for (std::size_t i = 0; i < lines.size() && i < kShown; ++i)
    ShowText("    {}\n", lines[i]);
  if (lines.size() > kShown) ShowText("    and {} more; --all shows them\n", lines.size() - kShown);
}

void PrintUnresolved(const StepView& view, const NestedNames& names) {
  const std::vector<const MfModuleT*> modules = view.UnresolvedModules();
  std::vector<std::string> lines(modules.size());
  for (std::size_t i = 0; i < modules.size() && i < kShown; ++i)
    lines[i] = fmt::format("{}: {}", names.Shown(modules[i]->id), view.WhyUnresolved(*modules[i]));
  PrintLines("not resolved", lines);
}

void PrintUnanswered(const StepView& view, ClassAnswer::Kind kind, const char* heading) {
  const MfListT<MfIntfClassT>& classes = view.Step().data->classes;
  std::vector<std::string> lines;
  for (std::int32_t i = 0; i < classes.count; ++i) {
    const ClassAnswer& answer = view.Answers()[static_cast<std::size_t>(i)];
    if (answer.kind != kind) continue;
    lines.push_back(fmt::format("{} service version {}: {}", classes[i]->commonname,
                                classes[i]->svcVersion, answer.why));
  }
  PrintLines(heading, lines);
}

void PrintPreloads(const ScanStep& step) {
  std::vector<std::string> loaded;
  std::vector<std::string> failed;
  std::vector<std::string> told;
  for (const btkHostPreloadT& preload :
       Part(btkHostEmbeddedDlmManager().Preloads(), step.registered.preloads)) {
    if (preload.isLoaded) {
      loaded.emplace_back(preload.path);
    } else if (*preload.failure == '\0') {
      told.emplace_back(preload.path);
    } else {
      failed.push_back(fmt::format("{}: {}", preload.path, preload.failure));
    }
  }
  PrintLines("could not be preloaded", failed);
  PrintLines("preloaded", loaded);
  PrintLines("would be preloaded", told);
}

void PrintStep(const StepView& view, const NestedNames& names) {
  const ScanStep& step = view.Step();
  ShowText("{}\n", StepName(step));
  if (!step.path.empty() && step.path != step.directory) ShowText("  path {}\n", step.path);
  if (!btkUniIdIsNull(step.scope)) ShowText("  scope {}\n", IdText(step.scope));
  if (!step.problem.empty()) ShowText("  FAILED: {}\n", step.problem);
  if (step.result.Failed()) ShowText("  FAILED: {}\n", FailureText(step));
  const ScanSummary count = Summarize(view);
  ShowText("  {}", Things(count.manifests, "manifest", "manifests"));
  if (step.data == nullptr) {
    ShowText(", nothing filed\n");
    return;
  }
  ShowText(": {}{}, {}{}, {}\n", Things(count.modules, "module", "modules"),
           Odd(count.unresolved, "not resolved"), Things(count.classes, "class", "classes"),
           Odd(count.hidden + count.unhosted, "hidden or without their host"),
           Things(count.runnables, "runnable", "runnables"));
  PrintUnresolved(view, names);
  PrintUnanswered(view, ClassAnswer::Kind::kAnother, "hidden");
  PrintUnanswered(view, ClassAnswer::Kind::kUnknownHost, "without their host");
  PrintPreloads(step);
}

// What the scan has done otherwise than the files say, and without a word.
tarnmf::check::Verdict Limits(const tarnmf::check::Verdict& verdict) {
  using tarnmf::check::Rule;
  tarnmf::check::Verdict limits;
  std::copy_if(verdict.findings.begin(), verdict.findings.end(),
               std::back_inserter(limits.findings), [](const tarnmf::check::Finding& finding) {
                 return finding.rule == Rule::kPathTooLong || finding.rule == Rule::kNumberWraps;
               });
  return limits;
}

}  // namespace

std::string StepName(const ScanStep& step) {
  if (!step.isProcess) return fmt::format("installation {}", step.directory);
  return step.directory.empty() ? "process without a load point"
                                : fmt::format("process load point {}", step.directory);
}

void PrintProblems(const ScanView& view) {
  for (const StepView& step : view.Steps())
    PrintStep(step, view.Session().Names());
}

void PrintSummary(const ScanView& view) {
  const ScanSummary sum = Summarize(view);
  ShowText("summary\n");
  ShowText("  load points   {}{}\n", sum.loadpoints, Odd(sum.failed, "failed"));
  ShowText("  manifests     {}\n", sum.manifests);
  ShowText("  modules       {}{}\n", sum.modules, Odd(sum.unresolved, "not resolved"));
  ShowText("  classes       {}{}{}\n", sum.classes, Odd(sum.hidden, "hidden"),
           Odd(sum.unhosted, "without their host"));
  ShowText("  runnables     {}\n", sum.runnables);
  ShowText("  preloads      {}\n", sum.preloads);
  const std::string findings = CountText(view.Session().Findings().All());
  ShowText("  findings      {}\n",
           findings.empty() ? "none" : findings + "; tarnmf check shows them");
}

std::string FailureText(const ScanStep& step) {
  if (step.isProcess && step.result.code == kBtkTooLong && step.errors.findings.empty()) {
    return fmt::format("the path of this program has more than 260 UTF-16 units: {}",
                       CodeName(step.result.code));
  }
  // What is wrong has been told with its places, unless it lies outside of the files.
  const bool isExplained = !step.errors.findings.empty() && !step.result.exception;
  return isExplained ? fmt::format("refused with {}", CodeName(step.result.code))
                     : step.result.InWords();
}

void PrintFailures(const ScanSession& session) {
  // Both streams may be one file or terminal.
  std::fflush(stdout);
  for (const ScanStep& step : session.Steps()) {
    WriteError(TextReport(step.errors, {}));
    if (!step.problem.empty()) Tell("{}: {}", StepName(step), step.problem);
    if (step.result.Failed()) Tell("{}: {}", StepName(step), FailureText(step));
  }
  WriteError(TextReport(Limits(session.Findings().All()), {}));
  for (const std::string& directory : session.Skipped())
    Tell("installation {}: skipped, since the process failed", directory);
}

}  // namespace tool
