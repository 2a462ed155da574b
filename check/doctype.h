// SPDX-License-Identifier: Apache-2.0
// The outline of a document type declaration.
#ifndef CHECK_DOCTYPE_H
#define CHECK_DOCTYPE_H

#include <cstddef>
#include <string_view>

namespace tarnmf::check {

// Past the declaration that begins at `begin`. One that is not ended ends before the next tag, or,
// within its brackets, with the text.
std::size_t EndOfDoctype(std::string_view text, std::size_t begin);

}  // namespace tarnmf::check

#endif  // CHECK_DOCTYPE_H
