#include "repository/layout_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/allocation_fault.h"
#include "tests/support/memory_stream.h"
#include "tests/support/temp_directory.h"

namespace tarnmf {
namespace {

using test::AllocationFault;

std::string Narrow(const btkWChar* text) {
  return text != nullptr ? btkFSPath(text).NarrowText() : "-";
}

// "BASE SCOPE-BYTE BITS" and every layout as "[BITS TEXT1|TEXT2|LIST1|LIST2|LIST3]".
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

// The dump of what the stream says, or the code.
std::string Read(btkIStream& stream) {
  LayoutFile layout;
  const BtkErrorT code = ReadLayoutStream(stream, btkFSEntry("/i/d/.installed"), layout);
  if (code == kBtkOk) return Dump(layout);
  EXPECT_EQ(Dump(layout), "- 0 0");
  return std::to_string(code);
}

std::string Read(const std::string& text) {
  test::MemoryStream stream(text);
  return Read(stream);
}

// Empty lines, then the statement; `size` bytes in all.
std::string EndingAt(std::size_t size, const std::string& statement) {
  return std::string(size - statement.size(), '\n') + statement;
}

std::string Repeat(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i)
    all += text;
  return all;
}

struct Row {
  std::string text;
  std::string result;
};

const std::string kId = "0a000000-0000-0000-0000-000000000000";
const std::string kStrings17 = "\"0\"" + Repeat(16, ",\"x\"");
const std::string kList16 = "0" + Repeat(15, ",x");

const std::vector<Row> kRows = {
    // Nothing said.
    {"", "/i 0 0"},
    {"\n \t\r\n\v\f\n", "/i 0 0"},
    {" ", "/i 0 0"},
    // Lines that say nothing.
    {"# comment\n; x\n\"\n", "/i 0 0"},
    {"Bits = 32\nBASE = \"x\"\nbitss = 5\nbit = 5\n", "/i 0 0"},
    {"\xE4\xF6 = 1\n\x80\n\xFF\xFE = 2\n", "/i 0 0"},
    {std::string("\0bits = 5\n\0\n", 12), "/i 0 0"},
    {"= 5\n+= 5\n", "/i 0 0"},
    {"other\nbits = 64\nbits = 32\n", "/i 0 32"},  // an unknown key alone swallows the next line
    {"other\n", "432"},
    {Repeat(127, "k") + " = 1\n", "/i 0 0"},
    {Repeat(128, "k") + " = 1\n", "432"},
    {"k " + Repeat(15, "+") + "\n#\n", "/i 0 0"},
    {"k " + Repeat(16, "=") + "\n#\n", "432"},
    {"bits", "432"},
    {"bits =", "432"},
    {"bits = \n", "432"},
    {"bits = 64", "432"},
    {"bits = 64\n x", "432"},
    // bits
    {"bits=64\n", "/i 0 64"},
    {"bits\n=\n\n32 64\n", "/i 0 32"},
    {"bits = -1x\n", "/i 0 -1"},
    {"bits = +7\n", "/i 0 7"},
    {"bits =+7\n", "432"},  // the sign belongs to the operator
    {"bits = x\n", "/i 0 0"},
    {"bits = 0x20\n", "/i 0 0"},
    {"bits == 64\n", "432"},
    {"bits += 64\n", "432"},
    {"bits 64\n", "432"},
    {"bits = 2147483647\n", "/i 0 2147483647"},
    {"bits = 2147483648\n", "432"},
    {"bits = -2147483648\n", "/i 0 -2147483648"},
    {"bits = -2147483649\n", "432"},
    {"bits = 99999999999999999999\n", "432"},
    // version
    {"version = 1.0 beta\n", "/i 0 0"},
    {"version = \"\n", "/i 0 0"},
    {"version += 1\n", "432"},
    {"version = \r", "432"},
    {std::string("version = \0x\n", 13), "432"},
    // scope
    {"scope = " + kId + " x\n", "/i 10 0"},
    {"scope=" + kId + "\nscope = " + std::string(36, '0') + "\n", "432"},
    {"scope = " + kId.substr(0, 35) + "\n", "432"},
    {"scope += " + kId + "\n", "432"},
    {"scope = " + kId, "432"},
    // base
    {"base = \"sub\" rest\n", "/i/d/sub/ 0 0"},
    {"base = \"a/b\"\nbase\n=\n\"c\"\n", "/i/d/c/ 0 0"},
    {"base = \"\xC3\xA4\"\n", "/i/d/\xC3\xA4/ 0 0"},
    {"base = \"\xE4\"\n", "71"},
    {"base = \"x\", \"y\"\n", "/i/d/x/ 0 0"},
    {"base += \"x\"\n", "432"},
    {"base = x\n", "432"},
    {"base = | \"x\"\n", "432"},
    {"base = \"x\n", "432"},
    {"base = \"x\"", "432"},
    // layout: the shapes of its groups
    {"layout += 64 { \"t1\" | \"t2\" | \"a\", \"b\" | \"c\" | \"d\" }\n",
     "/i 0 0 [64 t1|t2|a,b|c|d]"},
    {"layout+={}\n", "/i 0 0 [0 -|-|||]"},
    {"layout += 64 { }\nlayout += 32{\"x\"}\n", "/i 0 0 [64 -|-|||] [32 x|-|||]"},
    {"layout += 0 {||||}\n", "/i 0 0 [0 -|-|||]"},
    {"layout += 6432 { | \"b\" | | \"c\" }\n", "/i 0 0 [6432 -|b||c|]"},
    {"layout += 1 {\n\"a\"\n|\n\"b\"\n}\nbits = 5\n", "/i 0 5 [1 a|b|||]"},
    {"layout += 1 {\"a\nb\"|\"\"}\n", "/i 0 0 [1 a\nb||||]"},
    {"layout += 1 {\"a\", \"b\"} \n", "/i 0 0 [1 a|-|||]"},
    {"layout += 1 {\"a\", }\n", "/i 0 0 [1 a|-|||]"},
    {"layout += 1 {\"a\"|\"b\"|\"c\",}\n", "/i 0 0 [1 a|b|c||]"},
    {"layout += 1 {\"a\"|\"b\"|\"c\"|\"d\"|\"e\"|\"f\"}\n", "/i 0 0 [1 a|b|c|d|e]"},
    {"layout += 1 {||" + kStrings17 + "}\n", "/i 0 0 [1 -|-|" + kList16 + "|x|]"},
    {"layout += 1 {||" + kStrings17.substr(0, 63) + " | \"n\"}\n",
     "/i 0 0 [1 -|-|" + kList16 + "||n]"},
    {"layout += 1 {\"\xC3\xB6\"|\"\"|\"\xE2\x82\xAC\"}\n", "/i 0 0 [1 \xC3\xB6||\xE2\x82\xAC||]"},
    // layout: faults
    {"layout = 64 { }\n", "432"},
    {"layout ++= 64 { }\n", "432"},
    {"layout += 64\n", "432"},
    {"layout += 64 \"a\" }\n", "432"},
    {"layout += 2147483648 { }\n", "432"},
    {"layout += 1 {\"a\", \"b\" | \"c\"}\n", "432"},
    {"layout += 1 {\"a\" \"b\"}\n", "432"},
    {"layout += 1 {\"a\", | \"b\"}\n", "432"},
    {"layout += 1 {\"a\" | \"b\", \"c\" | }\n", "432"},
    {"layout += 1 { x }\n", "432"},
    {"layout += 1 {|||x}\n", "432"},
    {"layout += 1 {\"a\n", "432"},
    {"layout += 1 {\"a\"\n", "432"},
    {"layout += 1 {\"a\",\n", "432"},
    {"layout += 1 {||||\"e\"\n", "432"},
    {"layout += 1 {\"a\"}", "432"},
    {"layout += 1 {\"\xE4\"|x}\n", "71"},  // the first fault counts
    {"layout += 1 {x|\"\xE4\"}\n", "432"},
    {"layout += 1 {||\"a\",\"\xE4\"}\n", "71"},
    {"bits = 5\nlayout += 1 {\"a\"}\nbits = y z\nscope = x\n", "432"},  // all is discarded
    // Blocks: a statement may end with the block but not reach into the next.
    {EndingAt(2047, "bits = 5\n"), "/i 0 5"},
    {EndingAt(2048, "bits = 5\n"), "/i 0 5"},
    {EndingAt(2049, "bits = 5\n"), "432"},
    {EndingAt(2048, "scope=" + kId + "\n") + "bits = 7\n", "/i 10 7"},
    {EndingAt(2048, "scope=" + kId), "432"},
    {EndingAt(2048, "bits=12") + "34\n", "432"},
    {EndingAt(2048, "layout += 1 {\"a\"}\n") + "base=\"b\"\n", "/i/d/b/ 0 0 [1 a|-|||]"},
    {EndingAt(2048, "layout += 1 {\"a\"") + "}\n", "432"},
    {EndingAt(2048, "\n") + EndingAt(2048, "bits = 3\n") + "layout += 4 {}\n", "/i 0 3 [4 -|-|||]"},
    {EndingAt(4097, "bits = 3\n"), "432"},
    // What the block before left behind the end of the text is not read.
    {Repeat(8, "\n") + EndingAt(2040, "#").replace(0, 2, "4\n").replace(2039, 1, "\n") + "bits = 6",
     "432"},
};

TEST(LayoutFile, ReadsStatements) {
  for (const Row& row : kRows)
    EXPECT_EQ(Read(row.text), row.result) << row.text;
}

TEST(LayoutFile, SurvivesTextsThatAreCutOrDamaged) {
  const std::int64_t live = test::LiveAllocations();
  for (const Row& row : kRows) {
    for (std::size_t at = row.text.find_first_not_of('\n'); at < row.text.size(); ++at) {
      const std::string cut = row.text.substr(0, at);
      const std::size_t lastLine = cut.rfind('\n') + 1;
      if (cut.find_first_not_of(" \t\r\v\f", lastLine) != std::string::npos) {
        EXPECT_THAT(Read(cut), testing::AnyOf("432", "71")) << cut;
      }
      for (const char with : {'\0', '"', '\xFF', '{', '|', '\n', '9'}) {
        std::string damaged = row.text;
        damaged[at] = with;
        Read(damaged);
      }
    }
  }
  EXPECT_EQ(test::LiveAllocations(), live);
}

TEST(LayoutFile, TakesEveryReadAsABlock) {
  const std::string text = "bits = 5\nbits = 6\nbits = 7\n";
  for (const auto& [limit, result] : std::vector<std::pair<std::size_t, std::string>>{
           {9, "/i 0 7"}, {18, "/i 0 7"}, {8, "432"}, {1, "432"}, {27, "/i 0 7"}}) {
    test::MemoryStream stream(text);
    stream.LimitReads(limit);
    EXPECT_EQ(Read(stream), result) << limit;
  }
}

TEST(LayoutFile, EndsAtAReadFailure) {
  for (const std::int32_t answer : {-1, 0, 5}) {
    test::MemoryStream stream(EndingAt(2048, "bits = 5\n") + "bits = 6\nx");
    stream.FailFrom(2048, answer);
    EXPECT_EQ(Read(stream), "/i 0 5") << answer;
  }
  const std::int64_t live = test::LiveAllocations();
  {
    test::MemoryStream stream(EndingAt(2048, "layout += 1 {\"a\"}\n"));
    stream.ThrowFrom(2048);
    EXPECT_THROW(Read(stream), std::runtime_error);
  }
  EXPECT_EQ(test::LiveAllocations(), live);
}

TEST(LayoutFile, ReportsEveryFailedAllocation) {
  const std::string text =
      "base = \"b\"\nbase = \"c\"\nlayout += 1 {\"a\"|\"b\"|\"c\",\"d\"|\"e\"}\n" +
      Repeat(20, "layout += 2 {|\"x\"}\n");
  const std::string result = "/i/d/c/ 0 0 [1 a|b|c,d|e|]" + Repeat(20, " [2 -|x|||]");
  for (const auto source : {AllocationFault::kPlatform, AllocationFault::kOperatorNew}) {
    int kept = 0;
    bool hit = true;
    for (int n = 0; hit; ++n) {
      const std::int64_t live = test::LiveAllocations();
      {
        test::MemoryStream stream(text);
        AllocationFault fault(source, n);
        fault.Arm();
        const std::string answer = Read(stream);
        hit = fault.Hit();
        kept += hit && answer == result ? 1 : 0;
        EXPECT_TRUE(answer == "112" || answer == result) << n << " " << answer;
      }
      EXPECT_EQ(test::LiveAllocations(), live) << n;
    }
    // Only the array of the result may stay larger than it needs to be.
    EXPECT_LE(kept, 1);
  }
}

TEST(LayoutFile, FindsItsFile) {
  const test::TempDirectory root;
  const auto read = [&](const char* dir) {
    LayoutFile layout;
    const btkFSPath path((root.Path() / dir).c_str());
    EXPECT_EQ(ReadLayoutFile(path.WideText(), layout), kBtkOk);
    return Dump(layout).substr(root.Path().native().size());
  };
  root.Write("plain/x.tmfx", "");
  root.Write("folder/.installed/file", "");
  root.Write("given/.installed", "bits = 32\nbase = \"../lib\"\n");
  EXPECT_EQ(read("plain"), " 0 0");
  EXPECT_EQ(read("plain/"), " 0 0");
  EXPECT_EQ(read("folder"), " 0 0");
  EXPECT_EQ(read("given"), "/given/../lib/ 0 32");
}

}  // namespace
}  // namespace tarnmf
