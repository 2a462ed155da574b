// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/scan_listing.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "tools/tarnmf/scan_report.h"
#include "tools/tarnmf/show_text.h"

namespace tool {
namespace {

std::string Joined(const btkHostListT<const btkWChar*>& texts) {
  std::string joined;
  for (const btkWChar* text : texts)
    joined += (joined.empty() ? "" : ", ") + Narrow(text);
  return joined;
}

void PrintModules(const StepView& view, const NestedNames& names) {
  const ScanStep& step = view.Step();
  if (step.data->modules.count > 0) ShowText("  modules\n");
  for (const MfModuleT* module : step.data->modules) {
    const char* machine =
        module->selectedImpl != nullptr ? module->selectedImpl->machinetype : nullptr;
    ShowText("    {} ({}, {}{})\n", names.Shown(module->id),
             module->type != nullptr ? module->type : kBtkSharedLibType,
             machine != nullptr ? machine : "any machine",
             IsFallback(*module) ? ", in place of one for this machine that is not there" : "");
    const std::string file = ResolvedFile(*module);
    if (!file.empty()) {
      ShowText("      -> {}\n", file);
    } else {
      ShowText("      not resolved: {}\n", view.WhyUnresolved(*module));
    }
  }
}

void PrintInterfaces(const Registered& registered, const NestedNames& names) {
  const auto refs = Part(btkHostEmbeddedDlmManager().InterfaceRefs(), registered.interfaces);
  if (!refs.empty()) ShowText("  interface references\n");
  for (const btkHostIntfRefT& ref : refs) {
    ShowText("    {} {} version {}{}\n      -> {}\n", IdText(ref.intfId),
             ref.commonname != nullptr ? ref.commonname : "(service side)", ref.version,
             ref.shared != 0 ? ", shared" : "", names.Shown(ref.module));
  }
}

void PrintRunnables(const Registered& registered, const NestedNames& names) {
  const auto runnables = Part(btkHostEmbeddedDlmManager().Runnables(), registered.runnables);
  if (!runnables.empty()) ShowText("  launchers, apps and services that can be started\n");
  for (const btkHostRunnableT& runnable : runnables) {
    ShowText("    {} in module {}", runnable.name, names.Shown(runnable.moduleref));
    if (runnable.launcher != nullptr) ShowText(", by launcher {}", runnable.launcher);
    if (!runnable.args.empty()) ShowText(", arguments: {}", Joined(runnable.args));
    ShowText("\n");
  }
}

void PrintServices(const Registered& registered) {
  const auto services = Part(btkHostEmbeddedServiceManager().Services(), registered.services);
  if (!services.empty()) ShowText("  services\n");
  for (const btkHostServiceT& service : services) {
    ShowText("    {} {} version {}{}{}\n", IdText(service.id),
             service.commonname != nullptr ? service.commonname : "-", service.version,
             (service.flags & kBtkServiceSingle) != 0 ? ", single instance" : "",
             (service.flags & kBtkServiceRecover) != 0 ? ", recovered" : "");
  }
}

void PrintLayouts(const Registered& registered) {
  const auto layouts = Part(btkHostEmbeddedDlmManager().Layouts(), registered.layouts);
  if (!layouts.empty()) ShowText("  library layouts\n");
  for (const btkHostLayoutT& layout : layouts) {
    ShowText("    {}: {} | {} | {} | {} | {}\n", layout.machine, Narrow(layout.text1),
             Narrow(layout.text2), Joined(layout.lists[0]), Joined(layout.lists[1]),
             Joined(layout.lists[2]));
  }
}

void PrintPreloads(const Registered& registered) {
  const auto preloads = Part(btkHostEmbeddedDlmManager().Preloads(), registered.preloads);
  if (!preloads.empty()) ShowText("  preloads\n");
  for (const btkHostPreloadT& preload : preloads) {
    const std::string failure(preload.failure);
    ShowText("    {}{}{}\n", preload.path, preload.isLoaded ? " is loaded" : "",
             failure.empty() ? "" : " could not be loaded: " + failure);
  }
}

void PrintFiled(const StepView& view) {
  const MfListT<MfIntfClassT>& classes = view.Step().data->classes;
  if (classes.count > 0) ShowText("  classes by name\n");
  for (std::int32_t i = 0; i < classes.count; ++i) {
    if (classes[i]->commonname == nullptr) continue;
    const std::string& why = view.Answers()[static_cast<std::size_t>(i)].why;
    ShowText("    {} service version {}{}\n", classes[i]->commonname, classes[i]->svcVersion,
             why.empty() ? "" : fmt::format(" ({})", why));
  }
  if (!view.Services().empty()) ShowText("  exposed services\n");
  for (const MfSvcResolveT* entry : view.Services()) {
    ShowText("    {} {} version {}\n", IdText(entry->ids[kMfServiceId]),
             *entry->key != '\0' ? entry->key : "(no name)", entry->versionKey / 2);
  }
}

void PrintStep(const StepView& view, const NestedNames& names) {
  const ScanStep& step = view.Step();
  ShowText("{}\n", StepName(step));
  ShowText("  manifests: {}\n", fmt::to_string(fmt::join(step.manifests, ", ")));
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
