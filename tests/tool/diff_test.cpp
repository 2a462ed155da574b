// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/support/documents.h"
#include "tests/support/temp_directory.h"
#include "tests/tool/run_tool.h"

namespace tarnmf::test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr char kHost[] = "00000000-0000-0000-0000-0000000000e1";

// A class called Render below a host of the version, with a nested module that has no id.
std::string Hosted(const std::string& classId, int version) {
  return "<class id=\"0000000000000000000000000000000" + classId +
         "\" affinity=\"service\" commonname=\"Render\"><serviceside svcid=\"" + kHost +
         "\" xsid=\"" + kHost + "\"><module name=\"r\"/></serviceside></class>" +
         "<runnable moduleref=\"m\"><service id=\"" + kHost + "\" commonname=\"Host\" version=\"" +
         std::to_string(version) + "\"/></runnable>";
}

TEST(Diff, TellsEachChangeOnce) {
  const TempDirectory root;
  const std::string module = "<module id=\"m\" name=\"m\"/>";
  const auto scan = [&](const std::string& name) {
    const std::string at = root.At("pack");
    return root.Write(name, RunTool("scan --json --loadpoint " + at + "/platform --add " + at +
                                    "/a/m --add " + at + "/b/m")
                                .out);
  };
  root.Write("pack/platform/a.tmfx", InRoot(module));
  root.Write("pack/a/m/a.tmfx",
             InRoot(module + "<module id=\"gone\" name=\"g\"/>" + Hosted("1", 2)));
  root.Write("pack/b/m/b.tmfx", InRoot(module + Hosted("2", 1)));
  root.Write("pack/b/libr.so", "");
  const std::string before = scan("before.json");
  const Outcome same = RunTool("diff " + before + " " + scan("again.json"));
  EXPECT_EQ(same.status, 0) << same.errors;
  EXPECT_EQ(same.out, "");

  root.Write("pack/a/m/a.tmfx", InRoot(module + "<module id=\"new\" name=\"n\"/>" +
                                       "<runnable moduleref=\"m\"><app nameid=\"start\"/>"
                                       "</runnable>"));
  root.Write("pack/b/linux-x64/libr.so", "");
  const std::string after = scan("after.json");
  const std::string pack = root.At("pack");
  const std::string first = "00000000-0000-0000-0000-000000000001";
  const std::string second = "00000000-0000-0000-0000-000000000002";
  const Outcome changed = RunTool("diff " + before + " " + after);
  EXPECT_EQ(changed.status, 1);
  EXPECT_EQ(changed.out,
            "load point " + pack + "/a: changed in interfaces\n" + "module gone in " + pack +
                "/a: removed\n" +                          //
                "module new in " + pack + "/a: added\n" +  //
                "module service side of " + first + " in " + pack + "/a: removed\n" +
                "module service side of " + second + " in " + pack + "/b: resolves to " +
                root.At("pack/b/linux-x64/libr.so") + ", before to " + root.At("pack/b/libr.so") +
                "\n" + "class \"Render\" (" + first + ") in " + pack + "/a: removed\n" +
                "service \"Host\" (" + kHost + ") in " + pack + "/a: removed\n" + "runnable " +
                "000000000000000000000000000000e1 in " + pack + "/a: removed\n" +
                "runnable start in " + pack + "/a: added\n" +
                "class \"Render\" for callers without a scope: answered by " + second + " in " +
                pack + "/b, service version 1, before by " + first + " in " + pack +
                "/a, service version 2\n");
  const auto json = nlohmann::json::parse(RunTool("diff --json " + before + " " + after).out);
  EXPECT_EQ(json["differences"].size(), 10U);
  EXPECT_EQ(json["differences"][9]["after"]["loadpoint"], pack + "/b");

  root.Write("none.json", RunTool("scan --json").out);
  EXPECT_THAT(RunTool("diff " + after + " " + root.At("none.json")).out,
              HasSubstr("the process without a load point: added\n"));

  // Callers of the scope have found what was for everybody before.
  root.Write("pack/b/m/.installed", "scope = 00000000-0000-0000-0000-0000000000aa\n");
  const Outcome scoped = RunTool("diff " + after + " " + scan("scoped.json"));
  EXPECT_THAT(scoped.out, HasSubstr("without a scope: answered by nothing, before by " + second));
  EXPECT_THAT(scoped.out, Not(HasSubstr("callers of scope")));
}

TEST(Diff, RefusesWhatIsNoScanHoweverDeep) {
  const TempDirectory root;
  const std::string deep = std::string(200'000, '[') + std::string(200'000, ']');
  const std::string file = root.Write("x.json", R"({"format": 1, "steps": )" + deep + "}");
  EXPECT_EQ(RunTool("diff " + file + " " + file).status, 2);
}

}  // namespace
}  // namespace tarnmf::test
