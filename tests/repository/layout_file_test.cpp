// SPDX-License-Identifier: Apache-2.0
#include "repository/layout_file.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/case_file.h"
#include "tests/support/fault.h"
#include "tests/support/memory_stream.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::test {
namespace {

// "-" for none, line feeds as "~".
std::string Narrow(const btkWChar* text) {
  std::string narrow = text != nullptr ? btkFSPath(text).NarrowText() : "-";
  std::replace(narrow.begin(), narrow.end(), '\n', '~');
  return narrow;
}

// As the table of cases shows it.
std::string Dump(const LayoutFile& layout) {
  std::string dump = Narrow(layout.base.get()) + " " + std::to_string(layout.scope.bytes[0]) + " " +
                     std::to_string(layout.bits);
  for (const MfLayoutEntryT* entry : layout.entries) {
    dump += " [" + std::to_string(entry->bits) + " " + Narrow(entry->text1) + "|" +
            Narrow(entry->text2);
    for (const btkWChar* const* list : {entry->list1, entry->list2, entry->list3}) {
      dump += "|";
      for (; *list != nullptr; ++list)
        dump += Narrow(*list) + (list[1] != nullptr ? "," : "");
    }
    dump += entry->flag ? " flag]" : "]";
  }
  return dump;
}

std::string Read(btkIStream& stream) {
  LayoutFile layout;
  const BtkErrorT code = ReadLayoutStream(stream, btkFSEntry("/i/d/.installed"), layout);
  if (code == kBtkOk) return Dump(layout);
  EXPECT_EQ(Dump(layout), "- 0 0");
  return std::to_string(code);
}

std::string Read(const std::string& text) {
  MemoryStream stream(text);
  return Read(stream);
}

// Empty lines, then the statement; `size` bytes in all.
std::string EndingAt(std::size_t size, const std::string& statement) {
  return std::string(size - statement.size(), '\n') + statement;
}

// The table, and what is made by arithmetic with the size of a block: a statement may end with the
// block but not reach into the next.
std::vector<FileCase> Cases() {
  const std::string scope = "scope=0a000000-0000-0000-0000-000000000000";
  const FileCase made[] = {
      {"", "", "/i 0 0"},
      {"", EndingAt(2048, "bits = 5\n"), "/i 0 5"},
      {"", EndingAt(2049, "bits = 5\n"), "432"},
      {"", EndingAt(2048, scope + "\n") + "bits = 7\n", "/i 10 7"},
      {"", EndingAt(2048, scope), "432"},
      {"", EndingAt(2048, "bits=12") + "34\n", "432"},
      {"", EndingAt(2048, "layout += 1 {\"a\"}\n") + "bits=2\n", "/i 0 2 [1 a|-|||]"},
      {"", EndingAt(2048, "layout += 1 {\"a\"") + "}\n", "432"},
      {"", EndingAt(2048, "\n") + EndingAt(2048, "bits = 3\n") + "bits = 4\n", "/i 0 4"},
      // What the block before left after the end of the text is not read.
      {"", EndingAt(8, "") + "4\n" + EndingAt(2038, "") + "bits = 6", "432"},
  };
  std::vector<FileCase> cases = ReadCaseFile(TARNMF_CASES "/layout.cases");
  cases.insert(cases.end(), std::begin(made), std::end(made));
  return cases;
}

TEST(LayoutFile, ReadsStatements) {
  for (const FileCase& row : Cases())
    EXPECT_EQ(Read(row.input), row.result) << row.name << " " << row.input;
}

TEST(LayoutFile, SurvivesTextsThatAreCutOrDamaged) {
  const LeakCheck check;
  for (const auto& [name, text, result] : Cases()) {
    for (std::size_t at = text.find_first_not_of('\n'); at < text.size(); ++at) {
      const std::string cut = text.substr(0, at);
      const std::size_t lastLine = cut.rfind('\n') + 1;
      if (cut.find_first_not_of(" \t\r\v\f", lastLine) != std::string::npos) {
        const std::string answer = Read(cut);
        EXPECT_TRUE(answer == "432" || answer == "71") << name << " " << cut;
      }
      for (const char with : {'\0', '"', '\xFF', '{', '|', '\n', '9'}) {
        std::string damaged = text;
        damaged[at] = with;
        Read(damaged);
      }
    }
  }
}

TEST(LayoutFile, TakesEveryReadAsABlock) {
  for (const unsigned limit : {1U, 8U, 9U, 18U, 27U}) {
    MemoryStream stream("bits = 5\nbits = 6\nbits = 7\n");
    stream.LimitReads(limit);
    EXPECT_EQ(Read(stream), limit < 9 ? "432" : "/i 0 7") << limit;
  }
  for (const std::int32_t failure : {-1, 0, 5}) {  // reads like the end of the file
    MemoryStream stream(EndingAt(2048, "bits = 5\n") + "bits = 6\nx");
    stream.FailFrom(2048, failure);
    EXPECT_EQ(Read(stream), "/i 0 5") << failure;
  }
  const LeakCheck check;
  MemoryStream stream(EndingAt(2048, "layout += 1 {\"a\"}\n"));
  stream.ThrowFrom(2048);
  EXPECT_THROW(Read(stream), std::runtime_error);
}

TEST(LayoutFile, FindsItsFile) {
  const TempDirectory root;
  root.Write("plain/x.tmfx", "");
  root.Write("folder/.installed/file", "");
  root.Write("given/.installed", "bits = 32\nbase = \"../lib\"\n");
  const auto read = [&](const char* dir) {
    LayoutFile layout;
    EXPECT_EQ(ReadLayoutFile(btkFSPath(root.At(dir).c_str()).WideText(), layout), kBtkOk);
    return Dump(layout).substr(root.At().size());
  };
  EXPECT_EQ(read("plain"), " 0 0");
  EXPECT_EQ(read("plain/"), " 0 0");
  EXPECT_EQ(read("folder"), " 0 0");
  EXPECT_EQ(read("given"), "/given/../lib/ 0 32");
}

}  // namespace
}  // namespace tarnmf::test
