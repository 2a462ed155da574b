// SPDX-License-Identifier: Apache-2.0
// Writes files so that readers see the old text or the new one and never a part of it.
#ifndef TOOLS_TARNMF_REPLACE_FILE_H
#define TOOLS_TARNMF_REPLACE_FILE_H

#include <string>

namespace tool {

// Replaces the file's bytes by a new file in the same folder, with the old one's mode and, where that
// is permitted, its owner. A symbolic link stays one. Throws std::system_error; the old file is as it
// was then.
void ReplaceContents(const std::string& path, const std::string& bytes);

}  // namespace tool

#endif  // TOOLS_TARNMF_REPLACE_FILE_H
