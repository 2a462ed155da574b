// SPDX-License-Identifier: Apache-2.0
// The layout file ".installed" of an installation, read as the library reads it, but to its end:
// after a mistake the reading goes on with the next line.
#ifndef CHECK_LAYOUT_FILE_H
#define CHECK_LAYOUT_FILE_H

#include <memory>
#include <string>

#include "check/installation.h"

namespace tarnmf::check {

// `directory` is the absolute path of the directory that holds the file, which is told by `path`.
// An error is found exactly in those texts that the library refuses.
std::unique_ptr<LayoutFileText> ReadLayout(std::string path, const std::string& directory,
                                           std::string bytes);

}  // namespace tarnmf::check

#endif  // CHECK_LAYOUT_FILE_H
