// SPDX-License-Identifier: Apache-2.0
// The layout file ".installed" of an installation directory: where the installation's base
// directory is, its scope, the address bits that it was built for and its library layouts.
//
// One statement per line, a key, an operator and a value; what follows the value is ignored, as is
// a line whose key is unknown:
//   base = "sub"
//   scope = 01234567-89ab-cdef-0123-456789abcdef
//   bits = 64
//   version = 1.0
//   layout += 64 { "t1" | "t2" | "a", "b" | "c" | "d" }
// Every line ends with a line feed. The text is read in blocks of 2048 bytes, and no statement may
// reach from one block into the next.
#ifndef REPOSITORY_LAYOUT_FILE_H
#define REPOSITORY_LAYOUT_FILE_H

#include <cstdint>

#include "tarnmf/list.h"

#include "platform/errors.h"
#include "platform/filesystem.h"
#include "platform/stream.h"
#include "platform/types.h"
#include "platform/unique_id.h"
#include "support/owned.h"

namespace tarnmf {

inline constexpr std::int32_t kLayoutListMax = 16;  // strings of one group

// One layout statement. It owns its strings.
struct MfLayoutEntryT {
  MfLayoutEntryT() = default;
  // Takes the strings over.
  MfLayoutEntryT(MfLayoutEntryT&& other) noexcept;
  MfLayoutEntryT& operator=(MfLayoutEntryT&&) = delete;
  ~MfLayoutEntryT();

  std::int32_t bits = 0;  // 0: those of the whole file
  btkWChar* text1 = nullptr;
  btkWChar* text2 = nullptr;
  btkWChar* list1[kLayoutListMax + 1] = {};  // the used slots first, the others null
  btkWChar* list2[kLayoutListMax + 1] = {};
  btkWChar* list3[kLayoutListMax + 1] = {};
  bool flag = false;
};

// Releases the entries, the last one first, and their array, and leaves the list empty.
void FreeLayoutEntries(MfListT<MfLayoutEntryT>& entries);

// What a layout file says.
struct LayoutFile {
  LayoutFile() = default;
  LayoutFile(const LayoutFile&) = delete;
  LayoutFile& operator=(const LayoutFile&) = delete;
  ~LayoutFile() { FreeLayoutEntries(entries); }

  WideText base;                    // by default the parent of the file's directory
  UniIdT scope{};                   // null id: none
  std::int32_t bits = 0;            // 0: not given
  MfListT<MfLayoutEntryT> entries;  // in file order
};

// Reads the layout file of the directory `dir`. A file that is missing or cannot be opened reads
// like an empty one, and a read failure like the end of the file. `layout` is left empty on failure. Codes:
// kBtkOk; kBtkNoMemory; kBtkMalformed for a syntax error, a number outside 32 bits or a statement that
// does not end in its block; others for an id that could not be parsed or a text that could not be
// converted.
// REQUIRES: `layout` is as it was made.
BtkErrorT ReadLayoutFile(const btkWChar* dir, LayoutFile& layout);

// The same for a layout file that is open already; `file` is its place.
BtkErrorT ReadLayoutStream(btkIStream& stream, const btkFSEntry& file, LayoutFile& layout);

}  // namespace tarnmf

#endif  // REPOSITORY_LAYOUT_FILE_H
