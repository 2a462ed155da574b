// SPDX-License-Identifier: Apache-2.0
#include "platform/filesystem.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utf8.h>
#include <utility>
#include <vector>

#include "platform/host/path_rules.h"
#include "platform/host/system_path.h"

namespace {

namespace fs = std::filesystem;

using WideString = std::basic_string<btkWChar>;

// A byte that belongs to no UTF-8 character stands in the wide text as this plus its value; no
// character of Unicode has such a unit alone.
constexpr unsigned kStrayByteBase = 0xdc00;

bool IsStrayByte(char32_t unit) {
  return unit >= kStrayByteBase + 0x80 && unit <= kStrayByteBase + 0xff;
}

WideString Widen(std::string_view narrow) {
  WideString wide;
  wide.reserve(narrow.size());
  auto rest = narrow.begin();
  while (rest != narrow.end()) {
    const auto stray = utf8::find_invalid(rest, narrow.end());
    utf8::unchecked::utf8to16(rest, stray, std::back_inserter(wide));
    rest = stray;
    if (rest == narrow.end()) break;
    wide.push_back(static_cast<btkWChar>(kStrayByteBase + static_cast<unsigned char>(*rest++)));
  }
  return wide;
}

// The character at the start of `wide`, which is cut off. A surrogate without its partner stays
// alone.
char32_t TakeCharacter(std::basic_string_view<btkWChar>& wide) {
  const char32_t first = wide[0];
  const bool isLead = first >= 0xd800 && first <= 0xdbff;
  const char32_t second = isLead && wide.size() > 1 ? wide[1] : 0;
  const bool isPair = second >= 0xdc00 && second <= 0xdfff;
  wide.remove_prefix(isPair ? 2 : 1);
  return isPair ? 0x10000 + ((first - 0xd800) << 10) + (second - 0xdc00) : first;
}

std::string Narrow(std::basic_string_view<btkWChar> wide) {
  constexpr char32_t kReplacement = 0xfffd;
  std::string narrow;
  narrow.reserve(wide.size());
  while (!wide.empty()) {
    const char32_t character = TakeCharacter(wide);
    if (IsStrayByte(character)) {
      narrow.push_back(static_cast<char>(character - kStrayByteBase));
    } else {
      const bool isAlone = character >= 0xd800 && character <= 0xdfff;
      utf8::append(isAlone ? kReplacement : character, std::back_inserter(narrow));
    }
  }
  return narrow;
}

template <class Char>
std::basic_string_view<Char> TextOrEmpty(const Char* text) {
  return text != nullptr ? std::basic_string_view<Char>(text) : std::basic_string_view<Char>();
}

btkWChar UnitOf(char byte) {
  return static_cast<unsigned char>(byte);
}

// What comes between a path and what is appended to it: the kind of separator that it has already.
std::string_view SeparatorBelow(std::string_view path) {
  const auto isSeparator = [](char byte) { return IsPathSeparator(UnitOf(byte)); };
  if (path.empty() || isSeparator(path.back())) return "";
  if (path.back() == ':' && RootLength(path) == path.size()) return "";  // the drive's own folder
  const auto first = std::find_if(path.begin(), path.end(), isSeparator);
  return first != path.end() ? path.substr(static_cast<std::size_t>(first - path.begin()), 1) : "/";
}

template <class Char>
btkOwnedTextT<Char> OwnedText(const std::basic_string<Char>& text) {
  return {text.data(), text.size()};
}

btkOwnedTextT<char> Concatenated(std::string_view first, std::string_view second,
                                 std::string_view third) {
  std::string text;
  text.reserve(first.size() + second.size() + third.size());
  return OwnedText(text.append(first).append(second).append(third));
}

// Without the separators at its end, except for those of its root.
std::string_view WithoutTrailingSeparators(std::string_view path) {
  const std::size_t root = RootLength(path);
  while (path.size() > root && IsPathSeparator(UnitOf(path.back())))
    path.remove_suffix(1);
  return path;
}

std::string_view LastComponent(std::string_view path) {
  path = WithoutTrailingSeparators(path);
  path.remove_prefix(RootLength(path));
  const auto separator = std::find_if(path.rbegin(), path.rend(),
                                      [](char byte) { return IsPathSeparator(UnitOf(byte)); });
  return path.substr(path.size() - static_cast<std::size_t>(separator - path.rbegin()));
}

bool IsSameInPath(char left, char right) {
  const auto isAscii = [](char byte) { return UnitOf(byte) < 0x80; };
  return left == right || (isAscii(left) && isAscii(right) &&
                           FoldedInPath(UnitOf(left)) == FoldedInPath(UnitOf(right)));
}

bool Matches(const char* pattern, const char* name) {
  for (; *pattern != '\0'; ++pattern) {
    if (*pattern == '*') {
      for (;; ++name) {
        if (Matches(pattern + 1, name)) return true;
        if (*name == '\0') return false;
      }
    }
    if (*name == '\0' || (*pattern != '?' && !IsSameInPath(*pattern, *name))) return false;
    ++name;
  }
  return *name == '\0';
}

// Why a name that matches stands for no file; empty: it is one, or a directory.
std::string ProblemOf(const fs::directory_entry& entry) {
  std::error_code error;
  const fs::file_status status = entry.status(error);
  if (status.type() == fs::file_type::not_found) return "the link leads nowhere";
  if (error) return error.message();
  const bool isFit = fs::is_regular_file(status) || fs::is_directory(status);
  return isFit ? "" : "this is no regular file";
}

}  // namespace

std::string JoinPath(std::initializer_list<std::string_view> components) {
  std::size_t size = components.size();
  for (const std::string_view component : components)
    size += component.size();
  std::string path;
  path.reserve(size);
  for (std::string_view component : components) {
    while (!path.empty() && !component.empty() && IsPathSeparator(UnitOf(component.front())))
      component.remove_prefix(1);
    if (component.empty()) continue;
    if (!path.empty()) path += SeparatorBelow(path);
    path += component;
  }
  return path;
}

btkZString::btkZString(const char* text) : text_(text) {}

btkZString& btkZString::operator=(const char* text) {
  text_ = btkOwnedTextT<char>(text);
  return *this;
}

bool operator==(const btkZString& left, const btkWChar* right) {
  return std::ranges::equal(Widen(left.Text()), TextOrEmpty(right), {}, FoldedInPath, FoldedInPath);
}

btkFSPath::btkFSPath(const char* narrow)
    : narrow_(narrow), wide_(OwnedText(Widen(TextOrEmpty(narrow)))) {}

btkFSPath::btkFSPath(const btkWChar* wide)
    : narrow_(OwnedText(Narrow(TextOrEmpty(wide)))), wide_(wide) {}

btkFSEntry::btkFSEntry(const char* narrow) : path_(narrow) {}

btkFSEntry::btkFSEntry(const btkWChar* wide) : path_(OwnedText(Narrow(TextOrEmpty(wide)))) {}

btkFSEntry btkFSEntry::GetHead() const {
  const std::string_view path = WithoutTrailingSeparators(path_.Text());
  const std::string_view tail = LastComponent(path);
  if (tail == "." || tail == "..") return btkFSEntry((std::string(path) + "/..").c_str());
  const std::string_view head = path.substr(0, path.size() - tail.size());
  if (head.empty()) return btkFSEntry(".");
  return btkFSEntry(std::string(WithoutTrailingSeparators(head)).c_str());
}

btkZString btkFSEntry::GetTail() const {
  return btkZString(std::string(LastComponent(path_.Text())).c_str());
}

btkFSEntry& btkFSEntry::operator/=(const char* component) {
  const std::string_view path = path_.Text();
  path_ = Concatenated(path, SeparatorBelow(path), component);
  return *this;
}

btkFSEntry& btkFSEntry::operator+=(const char* text) {
  path_ = Concatenated(path_.Text(), text, "");
  return *this;
}

struct btkFSList::Entries {
  struct Problem {
    btkFSEntry place;
    btkZString text;
  };

  std::vector<btkFSEntry> list;
  std::vector<Problem> problems;
};

btkFSList::btkFSList(int reserve) {
  if (reserve <= 0) return;
  auto entries = std::make_unique<Entries>();
  entries->list.reserve(static_cast<std::size_t>(reserve));
  entries_ = entries.release();
}

btkFSList::btkFSList(const btkFSEntry& directory, const char* pattern) : btkFSList(0) {
  std::vector<std::string> names;
  const auto place = [&](const std::string& name) {
    btkFSEntry entry = directory;
    return entry /= name.c_str();
  };
  const auto tell = [&](const btkFSEntry& entry, const std::string& problem) {
    if (entries_ == nullptr) entries_ = new Entries;
    entries_->problems.push_back({entry, btkZString(problem.c_str())});
  };
  std::error_code error;
  for (fs::directory_iterator file(SystemPath(directory.Path().NarrowText()), error), end;
       !error && file != end; file.increment(error)) {
    std::string name = NarrowPath(file->path().filename());
    if (!Matches(pattern, name.c_str())) continue;
    std::error_code ignored;
    if (file->is_regular_file(ignored)) {
      names.push_back(std::move(name));
    } else if (const std::string problem = ProblemOf(*file); !problem.empty()) {
      tell(place(name), problem);
    }
  }
  if (error && error != std::errc::no_such_file_or_directory) tell(directory, error.message());
  std::sort(names.begin(), names.end());
  for (const std::string& name : names)
    Append(place(name));
}

btkFSList::btkFSList(const btkFSList& other)
    : entries_(other.entries_ != nullptr ? new Entries(*other.entries_) : nullptr) {}

btkFSList::btkFSList(btkFSList&& other) noexcept
    : entries_(std::exchange(other.entries_, nullptr)) {}

btkFSList& btkFSList::operator=(btkFSList other) noexcept {
  std::swap(entries_, other.entries_);
  return *this;
}

btkFSList::~btkFSList() {
  delete entries_;
}

unsigned btkFSList::Count() const {
  return entries_ != nullptr ? static_cast<unsigned>(entries_->list.size()) : 0;
}

const btkFSEntry& btkFSList::operator[](unsigned index) const {
  return entries_->list[index];
}

unsigned btkFSList::ProblemCount() const {
  return entries_ != nullptr ? static_cast<unsigned>(entries_->problems.size()) : 0;
}

const btkFSEntry& btkFSList::ProblemPlace(unsigned index) const {
  return entries_->problems[index].place;
}

const char* btkFSList::ProblemText(unsigned index) const {
  return entries_->problems[index].text.Text();
}

void btkFSList::Append(const btkFSEntry& entry) {
  if (entries_ == nullptr) entries_ = new Entries;
  entries_->list.push_back(entry);
}
