// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/scan_session.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <stdexcept>
#include <system_error>

#include "tarnmf/options.h"

#include "platform/host/embedded_dlm.h"
#include "platform/host/embedded_services.h"
#include "platform/host/system_path.h"
#include "tools/tarnmf/directory.h"
#include "tools/tarnmf/option_switch.h"

namespace tool {
namespace {

// The session of a process inside a service.
class PosedSession final : public btkSvcSession {
 public:
  explicit PosedSession(const UniIdT& id) : id_(id) {}
  UniIdT GetServiceId() override { return id_; }

 private:
  UniIdT id_;
};

void PoseInService(const std::string& id) {
  // Lives as long as the process, like the session that it stands for.
  static PosedSession session(ParseId(id));
  btkHostSetServiceSession(&session);
}

void SetOption(const OptionSwitch& option) {
  btkConfEnableOption(&option.id, option.value);
}

// Watches what a step adds to the managers' lists.
class RegistrationWatch {
 public:
  RegistrationWatch() : before_(Counts()) {}

  Registered Added() const {
    const Registered now = Counts();
    const auto range = [](const Range& before, const Range& after) {
      return Range{before.end, after.end};
    };
    return {range(before_.installations, now.installations),
            range(before_.layouts, now.layouts),
            range(before_.resolutions, now.resolutions),
            range(before_.interfaces, now.interfaces),
            range(before_.runnables, now.runnables),
            range(before_.preloads, now.preloads),
            range(before_.services, now.services)};
  }

 private:
  static Registered Counts() {
    const btkHostDlmManager& dlm = btkHostEmbeddedDlmManager();
    return {{0, dlm.Installations().size()},
            {0, dlm.Layouts().size()},
            {0, dlm.Resolutions().size()},
            {0, dlm.InterfaceRefs().size()},
            {0, dlm.Runnables().size()},
            {0, dlm.Preloads().size()},
            {0, btkHostEmbeddedServiceManager().Services().size()}};
  }

  Registered before_;
};

template <class Scan>
LoadResult Try(Scan scan) {
  LoadResult result;
  try {
    result.code = scan();
  } catch (...) {
    result.exception = CurrentException();
  }
  return result;
}

// A scan reads its files more than once.
void RequireFiles(const std::vector<std::string>& files) {
  std::error_code ignored;
  for (const std::string& file : files) {
    const std::filesystem::file_status status = std::filesystem::status(SystemPath(file), ignored);
    if (std::filesystem::is_directory(status)) {
      throw std::invalid_argument(fmt::format(
          "{} is a directory, not a manifest; an installation is added with --add", file));
    }
    if (std::filesystem::is_other(status)) {
      throw std::invalid_argument(
          fmt::format("{} is a pipe or a device, which cannot be read twice", file));
    }
  }
}

}  // namespace

ScanSession::ScanSession(const ScanOptions& options) {
  RequireFiles(options.files);
  for (const std::string& setting : options.options)
    SetOption(ParseOptionSwitch(setting));
  if (!options.service.empty()) PoseInService(options.service);
  btkHostEmbeddedDlmManager().SetPreloadMode(options.preload ? kBtkHostLoads : kBtkHostRecordsOnly);
  ScanProcess(options);
  if (Repository() == nullptr) {
    skipped_ = options.add;
  } else {
    for (const std::string& directory : options.add)
      ScanInstallation(directory);
  }
  FindErrors(options);
}

bool ScanSession::Failed() const {
  return std::any_of(steps_.begin(), steps_.end(),
                     [](const ScanStep& step) { return step.Failed(); });
}

void ScanSession::ScanProcess(const ScanOptions& options) {
  ScanStep& step = steps_.emplace_back();
  step.isProcess = true;
  step.directory = options.loadpoint;
  step.path = Absolute(options.loadpoint);
  if (!step.path.empty()) step.problem = DirectoryProblem(step.path);
  btkHostSetProcessLoadpoint(Widen(step.path).c_str());
  step.manifests = options.files.empty() && !options.loadpoint.empty()
                       ? ManifestsIn(options.loadpoint)
                       : options.files;
  const RegistrationWatch watch;
  step.result = Try([&] { return liMfRepository::Initialize(FileList(step.manifests), nullptr); });
  step.registered = watch.Added();
  FindData(step);
}

void ScanSession::ScanInstallation(const std::string& directory) {
  ScanStep& step = steps_.emplace_back();
  step.directory = directory;
  const std::string absolute = Absolute(directory);
  step.manifests = ManifestsIn(absolute);
  step.problem = DirectoryProblem(absolute);
  const RegistrationWatch watch;
  step.result = Try([&] { return Repository()->AddLoadpoint(Widen(absolute).c_str()); });
  step.registered = watch.Added();
  const auto installations = btkHostEmbeddedDlmManager().Installations();
  if (step.registered.installations.begin != step.registered.installations.end) {
    step.path = Narrow(installations[step.registered.installations.begin].base);
    step.scope = installations[step.registered.installations.begin].scope;
    FindData(step);
  }
}

void ScanSession::FindErrors(const ScanOptions& options) {
  ScannedLoadPoints scanned;
  if (steps_.front().problem.empty()) scanned.loadpoint = options.loadpoint;
  scanned.files = options.files;
  for (const ScanStep& step : steps_) {
    if (!step.isProcess && step.problem.empty()) scanned.installations.push_back(step.directory);
  }
  findings_ = std::make_unique<const ScanFindings>(scanned);
  std::size_t number = 0;
  for (ScanStep& step : steps_) {
    if (step.isProcess) {
      step.errors = findings_->ErrorsOfProcess();
    } else if (step.problem.empty()) {
      step.errors = findings_->ErrorsOfInstallation(number++);
    }
  }
}

void ScanSession::FindData(ScanStep& step) {
  const std::string& path = step.path;
  if (btkHostEmbeddedDlmManager().QueryLoadpointId(&step.id, Widen(path).c_str()) != kBtkOk) return;
  if (Repository() != nullptr) step.data = Repository()->FindLoadpoint(&step.id);
  if (step.data != nullptr) names_.Collect(*step.data, step.manifests);
}

}  // namespace tool
