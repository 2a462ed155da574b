// SPDX-License-Identifier: Apache-2.0
#include "repository/layout_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>
#include <utility>

#include "platform/memory.h"
#include "platform/text.h"
#include "repository/quoted_list.h"
#include "support/growable_array.h"

namespace tarnmf {
namespace {

constexpr std::size_t kBlockSize = 2048;
constexpr std::ptrdiff_t kLongestKey = 127;
constexpr std::ptrdiff_t kLongestOperator = 15;
constexpr std::int32_t kFirstRoom = 16;  // strings of a list, entries of a file

// ASCII's letters, whatever the locale is.
bool IsLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}
bool IsOperator(char character) {
  return character == '=' || character == '+';
}

BtkErrorT Widen(const char* text, btkWChar** wide) {
  return btkStrMultibyteToWideAlloc(wide, nullptr, text, kBtkWholeText);
}

BtkErrorT Widen(const btkFSEntry& entry, WideText& wide) {
  return Widen(entry.Path().NarrowText(), Out(wide));
}

void ReleaseTexts(btkWChar* const* list) {
  for (; *list != nullptr; ++list)
    btkStrFree(*list);
}

// Collects what the statements of one file say.
class LayoutReader {
 public:
  explicit LayoutReader(const btkFSEntry& file) : file_(file) {}

  BtkErrorT Read(btkIStream& stream);
  BtkErrorT HandOver(LayoutFile& layout);

 private:
  struct Statement {
    std::string_view key;
    std::string_view assignment;  // the operator that it must have
    BtkErrorT (LayoutReader::*readValue)();
  };
  static const Statement kStatements[];

  BtkErrorT ReadBlock(std::size_t size);
  BtkErrorT ReadStatement();
  BtkErrorT ReadBase();
  BtkErrorT ReadScope();
  BtkErrorT ReadBits() { return ReadNumber(bits_); }
  BtkErrorT SkipVersion();
  BtkErrorT ReadLayout();
  BtkErrorT ReadGroups(MfLayoutEntryT& entry);
  BtkErrorT ReadGroup();
  BtkErrorT ReadTextGroup(btkWChar** text);
  BtkErrorT ReadListGroup(btkWChar** list);
  BtkErrorT KeepEntry(MfLayoutEntryT&& entry);
  BtkErrorT ReadNumber(std::int32_t& number);
  BtkErrorT SkipLine();

  template <class Belongs>
  bool TakeRun(Belongs belongs, std::ptrdiff_t longest, std::string_view& run);
  void SkipBlanks() { cursor_ = SkipSpace(cursor_, end_); }
  bool AtEnd() const { return cursor_ == end_; }
  bool AtBrace() const { return !AtEnd() && *cursor_ == '}'; }

  const btkFSEntry& file_;
  // The NUL after the block's text keeps the C library's scanners inside it.
  char block_[kBlockSize + 1];
  const char* cursor_ = block_;
  const char* end_ = block_;

  QuotedList list_;
  GrowableArray<MfLayoutEntryT*, 2, DeletesElements> entries_;
  WideText base_;
  UniIdT scope_{};
  std::int32_t bits_ = 0;
};

const LayoutReader::Statement LayoutReader::kStatements[] = {
    {"base", "=", &LayoutReader::ReadBase},      {"scope", "=", &LayoutReader::ReadScope},
    {"bits", "=", &LayoutReader::ReadBits},      {"version", "=", &LayoutReader::SkipVersion},
    {"layout", "+=", &LayoutReader::ReadLayout},
};

BtkErrorT LayoutReader::Read(btkIStream& stream) {
  if (!list_.Reserve(kFirstRoom) || !entries_.Reserve(kFirstRoom)) return kBtkNoMemory;
  for (;;) {
    const std::int32_t size = stream.Read(block_, kBlockSize);
    if (size <= 0 || (stream.State() & kBtkStreamFailed) != 0) return kBtkOk;
    if (BtkErrorT e = ReadBlock(static_cast<std::size_t>(size))) return e;
  }
}

BtkErrorT LayoutReader::HandOver(LayoutFile& layout) {
  if (!base_) {
    if (BtkErrorT e = Widen(file_.GetHead().GetHead(), base_)) return e;
  }
  layout.base = std::move(base_);
  layout.scope = scope_;
  layout.bits = bits_;
  entries_.HandOver(layout.entries);
  return kBtkOk;
}

BtkErrorT LayoutReader::ReadBlock(std::size_t size) {
  block_[size] = '\0';
  cursor_ = block_;
  end_ = block_ + size;
  for (SkipBlanks(); !AtEnd(); SkipBlanks()) {
    if (BtkErrorT e = ReadStatement()) return e;
    if (BtkErrorT e = SkipLine()) return e;
  }
  return kBtkOk;
}

// The white space around the operator may hold line ends. So a line whose key is unknown and that
// has nothing else swallows the next line.
BtkErrorT LayoutReader::ReadStatement() {
  std::string_view key;
  std::string_view assignment;
  if (!TakeRun(IsLetter, kLongestKey, key)) return kBtkMalformed;
  SkipBlanks();
  if (!TakeRun(IsOperator, kLongestOperator, assignment)) return kBtkMalformed;
  SkipBlanks();
  if (AtEnd()) return kBtkMalformed;
  for (const Statement& statement : kStatements) {
    if (statement.key != key) continue;
    return statement.assignment == assignment ? (this->*statement.readValue)() : kBtkMalformed;
  }
  return kBtkOk;
}

// False when the run is longer than `longest` or reaches the end of the block.
template <class Belongs>
bool LayoutReader::TakeRun(Belongs belongs, std::ptrdiff_t longest, std::string_view& run) {
  const char* const stop = std::find_if_not(cursor_, end_, belongs);
  run = {cursor_, stop};
  const bool fits = stop - cursor_ <= longest;
  cursor_ = stop;
  return fits && !AtEnd();
}

BtkErrorT LayoutReader::ReadBase() {
  if (BtkErrorT e = ParseQuotedList(&cursor_, end_, 1, list_)) return e;
  if (list_.Empty()) return kBtkMalformed;
  btkFSEntry base = file_.GetHead();
  base /= list_[0];
  base += "/";
  return Widen(base, base_);
}

BtkErrorT LayoutReader::ReadScope() {
  return btkUniIdParse(&scope_, cursor_, static_cast<std::size_t>(end_ - cursor_), &cursor_,
                       kBtkUniIdDashed);
}

BtkErrorT LayoutReader::SkipVersion() {
  cursor_ += std::strspn(cursor_, " \t");
  const std::size_t length = std::strcspn(cursor_, " \t\r\n");
  cursor_ += length;
  return length > 0 ? kBtkOk : kBtkMalformed;
}

BtkErrorT LayoutReader::ReadLayout() {
  MfLayoutEntryT entry;
  if (BtkErrorT e = ReadNumber(entry.bits)) return e;
  SkipBlanks();
  if (AtEnd() || *cursor_ != '{') return kBtkMalformed;
  ++cursor_;
  if (BtkErrorT e = ReadGroups(entry)) return e;
  return KeepEntry(std::move(entry));
}

BtkErrorT LayoutReader::ReadGroups(MfLayoutEntryT& entry) {
  const auto stepOverSeparator = [this] {
    if (!AtEnd() && !AtBrace()) ++cursor_;
  };
  if (BtkErrorT e = ReadTextGroup(&entry.text1)) return e;
  stepOverSeparator();
  if (BtkErrorT e = ReadTextGroup(&entry.text2)) return e;
  for (btkWChar** list : {entry.list1, entry.list2, entry.list3}) {
    stepOverSeparator();
    if (BtkErrorT e = ReadListGroup(list)) return e;
  }
  return kBtkOk;
}

// Reads the strings of one group. A brace may end it wherever a string or a separator may stand.
BtkErrorT LayoutReader::ReadGroup() {
  const BtkErrorT e = ParseQuotedList(&cursor_, end_, kLayoutListMax, list_);
  return e == kBtkMalformed && AtBrace() ? kBtkOk : e;
}

BtkErrorT LayoutReader::ReadTextGroup(btkWChar** text) {
  if (BtkErrorT e = ReadGroup()) return e;
  if (list_.Count() > 1 && !AtBrace()) return kBtkMalformed;
  return list_.Empty() ? kBtkOk : Widen(list_[0], text);
}

BtkErrorT LayoutReader::ReadListGroup(btkWChar** list) {
  if (BtkErrorT e = ReadGroup()) return e;
  for (const char* text : list_) {
    if (BtkErrorT e = Widen(text, list++)) return e;
  }
  return kBtkOk;
}

BtkErrorT LayoutReader::KeepEntry(MfLayoutEntryT&& entry) {
  if (!entries_.ReserveMore(1)) return kBtkNoMemory;
  auto* const kept = new (std::nothrow) MfLayoutEntryT(std::move(entry));
  if (kept == nullptr) return kBtkNoMemory;
  entries_.AppendReserved(kept);
  return kBtkOk;
}

// A text without digits gives 0. The number has 32 bits, however wide `long` is.
BtkErrorT LayoutReader::ReadNumber(std::int32_t& number) {
  using Limits = std::numeric_limits<std::int32_t>;
  char* stop = nullptr;
  errno = 0;
  const long value = std::strtol(cursor_, &stop, 10);
  if (errno == ERANGE || value < Limits::min() || value > Limits::max()) return kBtkMalformed;
  cursor_ = stop;
  number = static_cast<std::int32_t>(value);
  return kBtkOk;
}

BtkErrorT LayoutReader::SkipLine() {
  const char* const lineFeed = std::find(cursor_, end_, '\n');
  if (lineFeed == end_) return kBtkMalformed;
  cursor_ = lineFeed + 1;
  return kBtkOk;
}

}  // namespace

MfLayoutEntryT::MfLayoutEntryT(MfLayoutEntryT&& other) noexcept {
  std::swap(bits, other.bits);
  std::swap(text1, other.text1);
  std::swap(text2, other.text2);
  std::swap(list1, other.list1);
  std::swap(list2, other.list2);
  std::swap(list3, other.list3);
  std::swap(flag, other.flag);
}

MfLayoutEntryT::~MfLayoutEntryT() {
  btkStrFree(text1);
  btkStrFree(text2);
  ReleaseTexts(list1);
  ReleaseTexts(list2);
  ReleaseTexts(list3);
}

void FreeLayoutEntries(MfListT<MfLayoutEntryT>& entries) {
  while (entries.count > 0)
    delete entries[--entries.count];
  btkFree(std::exchange(entries.items, nullptr));
}

BtkErrorT ReadLayoutStream(btkIStream& stream, const btkFSEntry& file, LayoutFile& layout) {
  LayoutReader reader(file);
  if (BtkErrorT e = reader.Read(stream)) return e;
  return reader.HandOver(layout);
}

BtkErrorT ReadLayoutFile(const btkWChar* dir, LayoutFile& layout) {
  btkFSEntry file(btkFSPath(dir).NarrowText());
  file /= ".installed";
  btkFileStream stream;
  if (stream.Open(file.Path().NarrowText(), kBtkOpenRead, btkGetAsciiSerializer()) == kBtkOk)
    return ReadLayoutStream(stream, file, layout);
  return LayoutReader(file).HandOver(layout);
}

}  // namespace tarnmf
