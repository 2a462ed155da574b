// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/other_programs.h"

#include <new>
#include <system_error>

#include "check/files.h"
#include "platform/host/system_path.h"
#include "platform/unique_id.h"
#include "tools/tarnmf/child_process.h"
#include "tools/tarnmf/output.h"
#include "tools/tarnmf/text.h"

namespace tool {

namespace fs = std::filesystem;

namespace {

// Nobody else can have a name that is random.
fs::path NewDirectory() {
  UniIdT name = {};
  if (btkUniIdGen14(&name, kBtkUniIdRandom, 0) != kBtkOk) throw std::bad_alloc();
  fs::path path = fs::temp_directory_path() / ("tarnmf-" + IdText(name));
  if (!fs::create_directory(path)) {
    throw fs::filesystem_error("it is there already", path,
                               std::make_error_code(std::errc::file_exists));
  }
  return path;
}

}  // namespace

// Nobody else may look into it.
ScratchDirectory::ScratchDirectory() : ScratchDirectory(NewDirectory()) {
  fs::permissions(path_, fs::perms::owner_all);
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

bool RunProgram(const std::vector<std::string>& command) {
  return RunProcess(command, {});
}

bool RunQuietly(const std::vector<std::string>& command) {
  const ScratchDirectory scratch;
  const fs::path messages = scratch.Path() / "messages";
  if (RunProcess(command, messages)) return true;
  WriteError(tarnmf::check::DiskFiles().Read(NarrowPath(messages)).value_or(""));
  return false;
}

}  // namespace tool
