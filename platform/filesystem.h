// Paths, directory entries and file lists of the base library.
//
// Narrow and wide texts of a path convert into each other without loss: a byte that is no valid
// UTF-8 travels as the single code unit 0xDC00 + byte.
#ifndef PLATFORM_FILESYSTEM_H
#define PLATFORM_FILESYSTEM_H

#include <string>
#include <vector>

#include "platform/types.h"

// A string that the platform hands out.
class BTK_API btkZString {
 public:
  btkZString() = default;
  explicit btkZString(const char* text);

  const char* Text() const { return text_.c_str(); }
  btkZString& operator=(const char* text);

 private:
  std::string text_;
};

// Compares a platform string with a wide text (null counts as empty).
BTK_API bool operator==(const btkZString& left, const btkWChar* right);

class BTK_API btkFSPath {
 public:
  explicit btkFSPath(const char* narrow);
  explicit btkFSPath(const btkWChar* wide);

  // Both live as long as this object.
  const char* NarrowText() const { return narrow_.c_str(); }
  const btkWChar* WideText() const { return wide_.c_str(); }

 private:
  std::string narrow_;
  std::basic_string<btkWChar> wide_;
};

// One place in the file system; it need not exist.
class BTK_API btkFSEntry {
 public:
  explicit btkFSEntry(const char* narrow);
  explicit btkFSEntry(const btkWChar* wide);

  btkFSPath Path() const { return btkFSPath(path_.c_str()); }

  // The path without its last component, and that component. A trailing separator is ignored.
  btkFSEntry GetHead() const;
  btkZString GetTail() const;

  // Appends a path component, and raw text.
  btkFSEntry& operator/=(const char* component);
  btkFSEntry& operator+=(const char* text);

 private:
  std::string path_;
};

// An ordered list of entries.
class BTK_API btkFSList {
 public:
  // An empty list; `reserve` is the number of entries to expect.
  explicit btkFSList(int reserve = 0);

  // The files of a directory whose names match `pattern` ("*" and "?" stand for any text and any
  // character), sorted by name. Empty when the directory cannot be read.
  btkFSList(const btkFSEntry& directory, const char* pattern);

  unsigned Count() const { return static_cast<unsigned>(entries_.size()); }
  const btkFSEntry& operator[](unsigned index) const { return entries_[index]; }
  void Append(const btkFSEntry& entry);

 private:
  std::vector<btkFSEntry> entries_;
};

#endif  // PLATFORM_FILESYSTEM_H
