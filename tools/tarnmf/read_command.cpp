// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/read_command.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fmt/format.h>
#include <iterator>
#include <memory>
#include <system_error>
#include <utility>

#include "check/files.h"
#include "check/verdict.h"
#include "platform/host/btkhost.h"
#include "platform/host/system_path.h"
#include "tools/tarnmf/manifest_files.h"
#include "tools/tarnmf/output.h"
#include "tools/tarnmf/record_json.h"
#include "tools/tarnmf/report_text.h"
#include "tools/tarnmf/tell.h"
#include "tools/tarnmf/text.h"

namespace tool {

namespace {

// What came through a pipe is gone.
bool IsReadOnce(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_other(SystemPath(path), ignored);
}

// The errors in files that were read one by one. What is wrong with them together is none of a
// reader's business.
bool PrintFailures(const std::vector<std::string>& paths, const LoadResult& result) {
  tarnmf::check::DiskFiles files;
  tarnmf::check::Verdict errors;
  std::vector<std::string> unreadable;
  for (const std::string& path : paths) {
    const std::shared_ptr<const tarnmf::check::Manifest> manifest = files.ReadManifest(path);
    if (manifest == nullptr) {
      if (!IsReadOnce(path)) unreadable.push_back(path);
      continue;
    }
    std::copy_if(manifest->findings.begin(), manifest->findings.end(),
                 std::back_inserter(errors.findings), [&](const tarnmf::check::Finding& finding) {
                   // What a document would fetch from elsewhere is missing here.
                   return finding.severity == tarnmf::check::Severity::kError ||
                          (result.Failed() && finding.rule == tarnmf::check::Rule::kExternalEntity);
                 });
  }
  std::fflush(stdout);
  WriteError(TextReport(errors, {}));
  for (const std::string& path : unreadable)
    Tell("{}: the file cannot be read", path);
  const bool isExplained = !errors.findings.empty() || !unreadable.empty();
  if (result.Failed() && (!isExplained || result.exception)) TellSentence(result.InWords());
  return isExplained || result.Failed();
}

}  // namespace

int RunRead(const ReadOptions& options) {
  const WideString loadpoint = Widen(options.loadpoint);
  // Whoever names a pipe means to wait for it.
  for (const std::string& file : options.files)
    btkHostAdmitSpecialFile(file.c_str());
  MfLdpDataT data;
  const LoadResult result = Load(FileList(options.files), loadpoint.c_str(), data);

  Json output;
  output["code"] = result.exception ? Json() : Json(static_cast<int>(result.code));
  if (result.exception) output["exception"] = *result.exception;
  output["data"] = ToJson(data);
  fmt::print("{}", JsonText(output));
  return PrintFailures(options.files, result) ? 1 : 0;
}

}  // namespace tool
