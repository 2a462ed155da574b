// SPDX-License-Identifier: Apache-2.0
/// @file
/// Paths, directory entries and file lists of the base library.
///
/// Narrow and wide texts of a path convert into each other without loss: a byte that is no valid
/// UTF-8 travels as the single code unit 0xDC00 + byte.
#ifndef PLATFORM_FILESYSTEM_H
#define PLATFORM_FILESYSTEM_H

#include "platform/owned_text.h"
#include "platform/types.h"

/// A string that the platform hands out.
class BTK_API btkZString {
 public:
  btkZString() = default;
  /// A copy of `text`; null counts as empty.
  explicit btkZString(const char* text);

  /// Never null; valid until this object changes.
  const char* Text() const { return text_.Text(); }
  /// Copies `text`; null counts as empty.
  btkZString& operator=(const char* text);

 private:
  btkOwnedTextT<char> text_;
};

/// Compares a platform string with a wide text (null counts as empty), as the names of files are
/// compared: on Windows the case of letters does not count.
BTK_API bool operator==(const btkZString& left, const btkWChar* right);

/// A path in both encodings.
class BTK_API btkFSPath {
 public:
  /// Null counts as empty.
  explicit btkFSPath(const char* narrow);
  /// Null counts as empty.
  explicit btkFSPath(const btkWChar* wide);

  /// Never null; lives as long as this object.
  const char* NarrowText() const { return narrow_.Text(); }
  /// Never null; lives as long as this object.
  const btkWChar* WideText() const { return wide_.Text(); }

 private:
  btkOwnedTextT<char> narrow_;
  btkOwnedTextT<btkWChar> wide_;
};

/// One place in the file system; it need not exist.
class BTK_API btkFSEntry {
 public:
  /// The place at this path; null counts as empty.
  explicit btkFSEntry(const char* narrow);
  /// The place at this path; null counts as empty.
  explicit btkFSEntry(const btkWChar* wide);

  /// Its path.
  btkFSPath Path() const { return btkFSPath(path_.Text()); }

  /// The path without its last component. A trailing separator is ignored.
  btkFSEntry GetHead() const;
  /// The last component of the path. A trailing separator is ignored.
  btkZString GetTail() const;

  /// Appends a path component, with a separator of the kind that the path has already.
  btkFSEntry& operator/=(const char* component);
  /// Appends text as it stands.
  btkFSEntry& operator+=(const char* text);

 private:
  btkOwnedTextT<char> path_;
};

/// An ordered list of entries.
class BTK_API btkFSList {
 public:
  /// An empty list; `reserve` is the number of entries to expect.
  explicit btkFSList(int reserve = 0);

  /// The files of a directory whose names match `pattern` ("*" and "?" stand for any text and any
  /// character; on Windows the case of letters does not count), sorted by name. Pipes, devices and whatever else is no regular file are left out, as
  /// is what cannot be read: see ProblemCount. Directories whose names match are no problem.
  btkFSList(const btkFSEntry& directory, const char* pattern);

  /// Copies the entries.
  btkFSList(const btkFSList& other);
  /// Leaves the other one empty.
  btkFSList(btkFSList&& other) noexcept;
  /// Takes a copy, or what is moved into it.
  btkFSList& operator=(btkFSList other) noexcept;
  ~btkFSList();

  /// The number of entries.
  unsigned Count() const;
  /// REQUIRES: `index` is less than Count(). Valid until the list changes.
  const btkFSEntry& operator[](unsigned index) const;
  /// Adds a copy at the end.
  void Append(const btkFSEntry& entry);

  /// How many reasons there are why a list made of a directory may lack files: the directory is there
  /// and cannot be read, or not to its end, or a name that matches leads to nothing that can be listed.
  unsigned ProblemCount() const;
  /// What the problem is about. REQUIRES: `index` is less than ProblemCount().
  const btkFSEntry& ProblemPlace(unsigned index) const;
  /// The problem in the system's words, without the place. REQUIRES: as above.
  const char* ProblemText(unsigned index) const;

 private:
  struct Entries;

  Entries* entries_ = nullptr;  // null: none
};

#endif  // PLATFORM_FILESYSTEM_H
