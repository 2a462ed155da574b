#include "tools/tarnmf/scan_report.h"

#include <cstdio>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "tools/tarnmf/scan_view.h"

namespace tool {
namespace {

const char* OrDash(const char* text) {
  return text != nullptr ? text : "-";
}

std::string StepName(const ScanStep& step) {
  if (!step.isProcess) return fmt::format("installation {}", step.directory);
  return step.directory.empty() ? "process without a load point"
                                : fmt::format("process load point {}", step.directory);
}

std::string Joined(const std::vector<btkHostWideT>& texts) {
  std::string joined;
  for (const btkHostWideT& text : texts)
    joined += (joined.empty() ? "" : ", ") + Narrow(text);
  return joined;
}

void PrintModules(const ScanStep& step) {
  if (step.data->modules.count > 0) fmt::print("  modules\n");
  for (const MfModuleT* module : step.data->modules) {
    const char* machine =
        module->selectedImpl != nullptr ? module->selectedImpl->machinetype : nullptr;
    fmt::print("    {} ({}, {}{})\n", OrDash(module->id),
               module->type != nullptr ? module->type : kBtkSharedLibType,
               machine != nullptr ? machine : "any machine",
               IsFallback(*module) ? ", in place of one for this machine that is not there" : "");
    const std::string file = ResolvedFile(*module);
    if (!file.empty()) {
      fmt::print("      -> {}\n", file);
    } else {
      fmt::print("      not resolved; looked for: {}\n",
                 fmt::join(TriedFiles(step, *module), ", "));
    }
  }
}

void PrintInterfaces(const Registered& registered) {
  const auto refs = Part(btkHostEmbeddedDlmManager().InterfaceRefs(), registered.interfaces);
  if (!refs.empty()) fmt::print("  interface references\n");
  for (const btkHostIntfRefT& ref : refs) {
    fmt::print("    {} {} version {}{}\n      -> {}\n", IdText(ref.intfId),
               ref.commonname.value_or("(service side)"), ref.version,
               ref.shared != 0 ? ", shared" : "", ref.module);
  }
}

void PrintRunnables(const Registered& registered) {
  const auto runnables = Part(btkHostEmbeddedDlmManager().Runnables(), registered.runnables);
  if (!runnables.empty()) fmt::print("  launchers, apps and services that can be started\n");
  for (const btkHostRunnableT& runnable : runnables) {
    fmt::print("    {} in module {}", runnable.name, runnable.moduleref);
    if (runnable.launcher) fmt::print(", by launcher {}", *runnable.launcher);
    if (!runnable.args.empty()) fmt::print(", arguments: {}", Joined(runnable.args));
    fmt::print("\n");
  }
}

void PrintServices(const Registered& registered) {
  const auto services = Part(btkHostEmbeddedServiceManager().Services(), registered.services);
  if (!services.empty()) fmt::print("  services\n");
  for (const btkHostServiceT& service : services) {
    fmt::print("    {} {} version {}{}{}\n", IdText(service.id), service.commonname.value_or("-"),
               service.version, (service.flags & kBtkServiceSingle) != 0 ? ", single instance" : "",
               (service.flags & kBtkServiceRecover) != 0 ? ", recovered" : "");
  }
}

void PrintLayouts(const Registered& registered) {
  const auto layouts = Part(btkHostEmbeddedDlmManager().Layouts(), registered.layouts);
  if (!layouts.empty()) fmt::print("  library layouts\n");
  for (const btkHostLayoutT& layout : layouts) {
    fmt::print("    {}: {} | {} | {} | {} | {}\n", layout.machine,
               Narrow(layout.text1.value_or(btkHostWideT())),
               Narrow(layout.text2.value_or(btkHostWideT())), Joined(layout.lists[0]),
               Joined(layout.lists[1]), Joined(layout.lists[2]));
  }
}

void PrintPreloads(const Registered& registered) {
  const auto preloads = Part(btkHostEmbeddedDlmManager().Preloads(), registered.preloads);
  if (!preloads.empty()) fmt::print("  preloaded\n");
  for (const btkHostPreloadT& preload : preloads) {
    fmt::print("    {}{}\n", preload.path,
               preload.failure.empty() ? "" : " could not be loaded: " + preload.failure);
  }
}

void PrintFiled(liMfRepository& repository, const ScanStep& step) {
  fmt::print("  classes by name\n");
  for (const MfIntfClassT* record : step.data->classes) {
    if (record->commonname == nullptr) continue;
    const std::string why = WhyUnanswered(repository, step, *record);
    fmt::print("    {} service version {}{}\n", record->commonname, record->svcVersion,
               why.empty() ? "" : fmt::format(" ({})", why));
  }
  fmt::print("  exposed services\n");
  for (const MfSvcResolveT& entry : ServiceEntries(repository, step.id)) {
    fmt::print("    {} {} version {}\n", IdText(entry.ids[kMfServiceId]),
               *entry.key != '\0' ? entry.key : "(no name)", entry.versionKey / 2);
  }
}

void PrintStep(const ScanSession& session, const ScanStep& step) {
  fmt::print("{}\n", StepName(step));
  if (step.result.Failed()) fmt::print("  FAILED: {}\n", step.reason);
  if (!step.path.empty()) fmt::print("  path {}\n", step.path);
  if (!btkUniIdIsNull(step.scope)) fmt::print("  scope {}\n", IdText(step.scope));
  fmt::print("  manifests: {}\n", fmt::join(step.manifests, ", "));
  PrintLayouts(step.registered);
  if (step.data == nullptr) return;
  fmt::print("  read: {} modules, {} classes, {} runnables\n", step.data->modules.count,
             step.data->classes.count, step.data->runnables.count);
  PrintModules(step);
  PrintInterfaces(step.registered);
  PrintRunnables(step.registered);
  PrintServices(step.registered);
  PrintPreloads(step.registered);
  PrintFiled(*session.Repository(), step);
}

}  // namespace

void PrintReport(const ScanSession& session) {
  for (const ScanStep& step : session.Steps())
    PrintStep(session, step);
}

void PrintFailures(const ScanSession& session) {
  // Both streams may be one file or terminal.
  std::fflush(stdout);
  for (const ScanStep& step : session.Steps()) {
    for (const std::string& line : {step.warning, step.reason}) {
      if (!line.empty()) fmt::print(stderr, "tarnmf: {}: {}\n", StepName(step), line);
    }
  }
  for (const std::string& directory : session.Skipped())
    fmt::print(stderr, "tarnmf: installation {}: skipped, since the process failed\n", directory);
}

}  // namespace tool
