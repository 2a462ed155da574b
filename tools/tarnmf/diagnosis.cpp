#include "tools/tarnmf/diagnosis.h"

#include <fmt/format.h>
#include <optional>

#include "tools/tarnmf/batch_diagnosis.h"
#include "tools/tarnmf/scan_session.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

// An installation that was not even announced failed at its layout file or at its place.
std::optional<std::string> ExplainInstallation(const ScanStep& step) {
  const Range& announced = step.registered.installations;
  if (step.isProcess || announced.begin != announced.end) return std::nullopt;
  if (step.directory.empty())
    return fmt::format("no directory is named ({})", step.result.InWords());
  if (step.result.code == kBtkDuplicate) {
    return fmt::format("a load point with the same base directory is filed already ({})",
                       CodeInWords(step.result.code));
  }
  return fmt::format("the layout file {}/.installed cannot be used; {}", step.directory,
                     step.result.InWords());
}

}  // namespace

std::string ExplainFailure(const ScanStep& step) {
  if (auto reason = ExplainInstallation(step)) return *reason;
  if (auto reason = FirstBadFile(step.manifests)) return *reason;
  if (step.result.code == kBtkUnexpected) {
    if (auto reason = ExplainBatch(step.manifests)) {
      return fmt::format("{} ({})", *reason, CodeInWords(step.result.code));
    }
  }
  return step.result.InWords();
}

}  // namespace tool
