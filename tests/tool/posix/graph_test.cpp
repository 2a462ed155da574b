// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/documents.h"
#include "tests/support/temp_directory.h"
#include "tests/tool/run_tool.h"

namespace tarnmf::test {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

constexpr char kPlatform[] = R"(
<module id="m" name="m"><preload svcid="000000000000000000000000000000e1"/></module>
<class id="00000000000000000000000000000001" affinity="service" commonname="A &quot;b\">
  <clientside><module name="nested"/></clientside>
  <serviceside moduleref="m" svcid="000000000000000000000000000000f1" xsname="Host"/>
</class>
<class id="00000000000000000000000000000002" affinity="service" commonname="A &quot;b\">
  <serviceside moduleref="gone" svcid="000000000000000000000000000000f2" xsname="Old"/>
</class>
<runnable moduleref="m">
  <service id="000000000000000000000000000000e1" commonname="Host" version="2"/>
  <service id="000000000000000000000000000000e2" commonname="Old" version="1"/>
</runnable>
)";

// Nodes and edges as graphviz reads them: "node ID SHAPE STYLE COLOR", "edge FROM TO LABEL STYLE".
std::vector<std::string> Plain(const std::string& dot) {
  std::vector<std::string> lines;
  std::istringstream text(dot);
  for (std::string line; std::getline(text, line);) {
    std::istringstream words(line);
    std::vector<std::string> fields;
    for (std::string word; words >> std::quoted(word);)
      fields.push_back(word);
    if (fields[0] == "node") {
      lines.push_back("node " + fields[1] + " " + fields[8] + " " + fields[7] + " " + fields[9]);
    } else if (fields[0] == "edge") {
      const std::size_t label = 4 + 2 * std::stoul(fields[3]);
      lines.push_back("edge " + fields[1] + " > " + fields[2] + " " + fields[label] + " " +
                      fields[label + 3]);
    }
  }
  return lines;
}

class GraphTest : public testing::Test {
 protected:
  void SetUp() override {
    if (RunCommand("command -v dot").status != 0) GTEST_SKIP() << "graphviz is not installed";
    root_.Write("platform/a.tmfx", InRoot(kPlatform));
    root_.Write("platform/libm.so", "");
  }
  Outcome Draw(const std::string& arguments) {
    return RunCommand("cd " + root_.At() + " && " TARNMF_TOOL " graph --loadpoint platform " +
                      arguments);
  }

  const TempDirectory root_;
};

// The load point is refused, since a module is not declared.
TEST_F(GraphTest, IsReadByGraphviz) {
  const Outcome outcome = Draw("| dot -Tplain");
  EXPECT_EQ(outcome.errors, "");
  const std::string first = "0 class 00000000-0000-0000-0000-000000000001";
  const std::string second = "0 class 00000000-0000-0000-0000-000000000002";
  const std::string host = "0 service 00000000-0000-0000-0000-0000000000e1";
  const std::string old = "0 service 00000000-0000-0000-0000-0000000000e2";
  const std::string nested = "0 module platform/a.tmfx:4";
  EXPECT_THAT(
      Plain(outcome.out),
      testing::UnorderedElementsAre(
          "node 0 module m box solid black", "node " + nested + " box dashed red",
          "node 0 module gone box dashed red", "node " + first + " ellipse solid black",
          "node " + second + " ellipse solid black", "node " + host + " hexagon solid black",
          "node " + old + " hexagon solid black",
          "edge 0 module m > " + host + " preloaded with dotted",
          "edge " + first + " > " + nested + " client solid",
          "edge " + first + " > 0 module m service solid",
          "edge " + second + " > 0 module gone service solid",
          "edge " + first + " > " + host + " hosted by bold",
          "edge " + second + " > " + old + " hosted by bold",
          "edge " + second + " > " + first + " hidden by dashed",
          "edge " + host + " > 0 module m runs solid", "edge " + old + " > 0 module m runs solid"));
  EXPECT_THAT(Draw("").out, HasSubstr(R"(label="A \"b\\\nversion 2", shape=ellipse, )"
                                      R"(URL="platform/a.tmfx:3", tooltip="platform/a.tmfx:3")"));
  EXPECT_THAT(Draw("--svg").out, HasSubstr("</svg>"));
}

TEST_F(GraphTest, ShowsTheSurroundingsOfTheFocus) {
  const std::string id = "000000000000000000000000000000e2";
  EXPECT_THAT(Plain(Draw("--focus " + id + " --depth 0 | dot -Tplain").out), SizeIs(1));
  EXPECT_THAT(Plain(Draw("--focus Old --depth 1 | dot -Tplain").out), SizeIs(3 + 2));
  const Outcome nothing = Draw("--focus Hots");
  EXPECT_EQ(nothing.status, 1);
  EXPECT_THAT(nothing.errors, HasSubstr("did you mean \"Host\"?"));

  std::string modules;
  for (int i = 0; i < 200; ++i)
    modules += "<module id='x" + std::to_string(i) + "' name='n'/>";
  root_.Write("platform/b.tmfx", InRoot(modules));
  EXPECT_THAT(Draw("").errors, HasSubstr("207 nodes; --focus NAME"));
}

}  // namespace
}  // namespace tarnmf::test
