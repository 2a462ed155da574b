// SPDX-License-Identifier: Apache-2.0
#include "check/preloads.h"

#include <algorithm>
#include <fmt/format.h>

#include "check/wording.h"
#include "platform/filesystem.h"
#include "platform/runtime.h"
#include "support/ignore_refusal.h"

namespace tarnmf::check {
namespace {

constexpr std::size_t kExecutableNameUnits = 260;

bool IsProgram(const std::string& program, const std::string& name) {
  btkWChar fileName[kExecutableNameUnits] = {};
  // What is written counts, whatever the code: a name that is refused leaves the buffer empty.
  IgnoreRefusal(btkGetExecutableNameW(fileName, kExecutableNameUnits, nullptr,
                                      btkFSPath(name.c_str()).WideText()));
  return btkZString(program.c_str()) == fileName;
}

class PreloadCheck {
 public:
  PreloadCheck(const LoadPoint& loadpoint, const Declared& declared, std::vector<Finding>& findings)
      : loadpoint_(loadpoint), declared_(declared), findings_(findings) {}

  void Check(const Manifest& manifest, const ModuleDeclaration& module,
             const PreloadDeclaration& preload) {
    const Place element{&manifest.source, manifest.document[preload.node].name};
    if (loadpoint_.role == LoadPoint::Role::kInstallation) {
      findings_.push_back(Found(Rule::kPreloadNotActedOn, kBtkOk, element,
                                "nothing is preloaded for an installation, only for the process's "
                                "own load point"));
    } else if (module.type) {
      TellNever(element, fmt::format("its module is no shared library but of type {}",
                                     Quoted(module.type->text)));
      findings_.back().related.push_back(
          {{&manifest.source, module.type->span}, "the type is given here"});
    } else if (preload.by == kMfByNone) {
      TellNever(element, "it needs \"by\", \"svcid\" or \"name\"");
    } else if (loadpoint_.role == LoadPoint::Role::kProcess && IsServiceUnknown(preload)) {
      TellNever({&manifest.source, preload.svcid->span},
                fmt::format("no service here has the id {}",
                            Quoted(manifest.source.Text(preload.svcid->span))));
    }
  }

 private:
  bool IsServiceUnknown(const PreloadDeclaration& preload) const {
    return preload.by == kMfByService && preload.svcid && !btkUniIdIsNull(preload.svcid->id) &&
           declared_.knowsServices && !declared_.services.contains(IdText(preload.svcid->id));
  }
  void TellNever(Place place, const std::string& why) {
    findings_.push_back(Found(Rule::kPreloadNeverHolds, kBtkOk, place,
                              fmt::format("the preload can never hold: {}", why)));
  }

  const LoadPoint& loadpoint_;
  const Declared& declared_;
  std::vector<Finding>& findings_;
};

}  // namespace

std::vector<PreloadPart> PartsOf(const PreloadDeclaration& preload,
                                 const ProcessDescription& process) {
  std::vector<PreloadPart> parts;
  const bool isInService = process.service.has_value();
  switch (preload.by) {
    case kMfByAnyone:
    case kMfByExecutable:
      break;
    case kMfByService:
      parts.push_back({"the process runs in a service", isInService});
      if (preload.svcid && !btkUniIdIsNull(preload.svcid->id)) {
        parts.push_back({fmt::format("the service is {}", IdText(preload.svcid->id)),
                         isInService && btkUniIdIsEqual(&*process.service, &preload.svcid->id)});
      }
      break;
    case kMfByClient:
      parts.push_back({"the process runs outside of services", !isInService});
      break;
    default:
      parts.push_back({"the condition says by whom", false});
  }
  if (preload.name) {
    parts.push_back({fmt::format("the program is called {}", Quoted(preload.name->text)),
                     IsProgram(process.program, preload.name->text)});
  }
  if (preload.optionid && !btkUniIdIsNull(preload.optionid->id)) {
    const auto isIt = [&](const UniIdT& id) { return btkUniIdIsEqual(&id, &preload.optionid->id); };
    parts.push_back({fmt::format("option {} is on", IdText(preload.optionid->id)),
                     std::any_of(process.options.begin(), process.options.end(), isIt)});
  }
  return parts;
}

void CheckPreloads(const LoadPoint& loadpoint, const Declared& declared,
                   std::vector<Finding>& findings) {
  PreloadCheck check(loadpoint, declared, findings);
  for (const auto& manifest : loadpoint.manifests) {
    const ErrorPlaces errors(*manifest);
    for (const ModuleDeclaration& module : manifest->declarations.modules) {
      for (const ImplementationDeclaration& implementation : module.implementations) {
        for (const PreloadDeclaration& preload : implementation.preloads) {
          if (!errors.AreIn(manifest->document[preload.node].span))
            check.Check(*manifest, module, preload);
        }
      }
    }
  }
}

}  // namespace tarnmf::check
