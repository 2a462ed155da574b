#include "tools/tarnmf/read_command.h"

#include <fmt/format.h>

#include "tools/tarnmf/manifest_files.h"
#include "tools/tarnmf/record_json.h"
#include "tools/tarnmf/text.h"

namespace tool {

int RunRead(const ReadOptions& options) {
  const WideString loadpoint = Widen(options.loadpoint);
  MfLdpDataT data;
  const LoadResult result = Load(FileList(options.files), loadpoint.c_str(), data);

  Json output;
  output["code"] = result.exception ? Json() : Json(static_cast<int>(result.code));
  if (result.exception) output["exception"] = *result.exception;
  output["data"] = ToJson(data);
  fmt::print("{}", JsonText(output));
  if (!result.Failed()) return 0;
  const auto badFile = FirstBadFile(options.files);
  fmt::print(stderr, "tarnmf: {}\n", badFile.value_or(result.InWords()));
  return 1;
}

}  // namespace tool
