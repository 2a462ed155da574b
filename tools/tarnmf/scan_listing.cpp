#include "tools/tarnmf/scan_listing.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "tools/tarnmf/scan_report.h"

namespace tool {
namespace {

std::string Joined(const std::vector<btkHostWideT>& texts) {
  std::string joined;
  for (const btkHostWideT& text : texts)
    joined += (joined.empty() ? "" : ", ") + Narrow(text);
  return joined;
}

void PrintModules(const StepView& view, const NestedNames& names) {
  const ScanStep& step = view.Step();
  if (step.data->modules.count > 0) fmt::print("  modules\n");
  for (const MfModuleT* module : step.data->modules) {
    const char* machine =
        module->selectedImpl != nullptr ? module->selectedImpl->machinetype : nullptr;
    fmt::print("    {} ({}, {}{})\n", names.Shown(module->id),
               module->type != nullptr ? module->type : kBtkSharedLibType,
               machine != nullptr ? machine : "any machine",
               IsFallback(*module) ? ", in place of one for this machine that is not there" : "");
    const std::string file = ResolvedFile(*module);
    if (!file.empty()) {
      fmt::print("      -> {}\n", file);
    } else {
      fmt::print("      not resolved; looked for: {}\n", fmt::join(view.TriedFiles(*module), ", "));
    }
  }
}

void PrintInterfaces(const Registered& registered, const NestedNames& names) {
  const auto refs = Part(btkHostEmbeddedDlmManager().InterfaceRefs(), registered.interfaces);
  if (!refs.empty()) fmt::print("  interface references\n");
  for (const btkHostIntfRefT& ref : refs) {
    fmt::print("    {} {} version {}{}\n      -> {}\n", IdText(ref.intfId),
               ref.commonname.value_or("(service side)"), ref.version,
               ref.shared != 0 ? ", shared" : "", names.Shown(ref.module));
  }
}

void PrintRunnables(const Registered& registered, const NestedNames& names) {
  const auto runnables = Part(btkHostEmbeddedDlmManager().Runnables(), registered.runnables);
  if (!runnables.empty()) fmt::print("  launchers, apps and services that can be started\n");
  for (const btkHostRunnableT& runnable : runnables) {
    fmt::print("    {} in module {}", runnable.name, names.Shown(runnable.moduleref));
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
  if (!preloads.empty()) fmt::print("  preloads\n");
  for (const btkHostPreloadT& preload : preloads) {
    const std::string failure =
        preload.failure.empty() ? "" : " could not be loaded: " + preload.failure;
    fmt::print("    {}{}{}\n", preload.path, preload.isLoaded ? " is loaded" : "", failure);
  }
}

void PrintFiled(const StepView& view) {
  const MfListT<MfIntfClassT>& classes = view.Step().data->classes;
  if (classes.count > 0) fmt::print("  classes by name\n");
  for (std::int32_t i = 0; i < classes.count; ++i) {
    if (classes[i]->commonname == nullptr) continue;
    const std::string& why = view.Answers()[static_cast<std::size_t>(i)].why;
    fmt::print("    {} service version {}{}\n", classes[i]->commonname, classes[i]->svcVersion,
               why.empty() ? "" : fmt::format(" ({})", why));
  }
  if (!view.Services().empty()) fmt::print("  exposed services\n");
  for (const MfSvcResolveT* entry : view.Services()) {
    fmt::print("    {} {} version {}\n", IdText(entry->ids[kMfServiceId]),
               *entry->key != '\0' ? entry->key : "(no name)", entry->versionKey / 2);
  }
}

void PrintStep(const StepView& view, const NestedNames& names) {
  const ScanStep& step = view.Step();
  fmt::print("{}\n", StepName(step));
  fmt::print("  manifests: {}\n", fmt::join(step.manifests, ", "));
  PrintLayouts(step.registered);
  if (step.data == nullptr) return;
  PrintModules(view, names);
  PrintInterfaces(step.registered, names);
  PrintRunnables(step.registered, names);
  PrintServices(step.registered);
  PrintPreloads(step.registered);
  PrintFiled(view);
}

}  // namespace

void PrintListing(const ScanView& view) {
  for (const StepView& step : view.Steps())
    PrintStep(step, view.Session().Names());
}

}  // namespace tool
