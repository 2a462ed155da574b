// SPDX-License-Identifier: Apache-2.0
// The schemas in docs/schema, as other programs understand them.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

#include "tests/support/documents.h"
#include "tests/support/temp_directory.h"
#include "tests/tool/run_tool.h"

#define TARNMF_SCHEMA TARNMF_SOURCES "/docs/schema/tarnmf-manifest"

namespace tarnmf::test {
namespace {

using testing::HasSubstr;
using testing::Not;

bool IsInstalled(const std::string& program) {
  return RunCommand("command -v " + program).status == 0;
}

std::string Sources(const std::string& path) {
  return std::string(TARNMF_SOURCES "/") + path;
}

std::string Samples() {
  std::string files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(Sources("samples"))) {
    if (entry.path().extension() == ".tmfx") files += " " + entry.path().string();
  }
  return files;
}

// A program that checks documents.
struct Validator {
  const char* name;  // of the test
  const char* program;
  const char* arguments;  // before the documents; the last one is a schema in docs/schema
};

void PrintTo(const Validator& validator, std::ostream* out) {
  *out << validator.program << " " << validator.name;
}

class Schema : public testing::TestWithParam<Validator> {
 protected:
  void SetUp() override {
    if (!IsInstalled(GetParam().program)) GTEST_SKIP() << GetParam().program << " is not installed";
  }
  Outcome Check(const std::string& files) {
    const Validator& validator = GetParam();
    return RunCommand(std::string(validator.program) + " " + validator.arguments + files + " 2>&1");
  }
};

TEST_P(Schema, AcceptsTheSamplesAndTellsMistakes) {
  const Outcome samples = Check(Samples());
  EXPECT_EQ(samples.status, 0) << samples.out;

  const char* const wrong[] = {
      "<module id='m' nmae='n'/>",
      "<module id='m'/>",
      "<module id='m' name='n' private='1'/>",
      "<module id='m' name='n' abits='16'/>",
      "<module id='m' name='n' resolvepath='x'/>",
      "<module id='m' name='n'><preload by='anybody'/></module>",
      "<class id='1'/>",
      "<class id='00000000000000000000000000000001' version='40000'/>",
      ("<class id='00000000000000000000000000000001'><clientside><module name='n' type='x'/>"
       "</clientside></class>"),
      "<runnable moduleref='m'><app nameid='a'><env><set name='x'/></env></app></runnable>",
      "<runnable moduleref='m'><launcher nameid='a' types=';'/></runnable>",
      "<modules version='1'/>",
      "<service/>",
  };
  const TempDirectory directory;
  std::string files;
  int number = 0;
  for (const char* content : wrong)
    files += " " + directory.Write("wrong" + std::to_string(number++) + ".", InRoot(content));
  files += " " + directory.Write("right.", InRoot("<class id='00000000000000000000000000000001'>"
                                                  "<clientside multiplicity='perldp'>"
                                                  "<module name='n'/></clientside></class>"));
  const Outcome told = Check(files);
  EXPECT_NE(told.status, 0);
  for (int i = 0; i < number; ++i)
    EXPECT_THAT(told.out, HasSubstr("wrong" + std::to_string(i) + ".:")) << wrong[i];
  EXPECT_THAT(told.out, Not(HasSubstr("right.:")));
}

INSTANTIATE_TEST_SUITE_P(
    Docs, Schema,
    testing::Values(Validator{"JingRng", "jing", TARNMF_SCHEMA ".rng"},
                    Validator{"JingXsd", "jing", TARNMF_SCHEMA ".xsd"},
                    Validator{"XmllintRng", "xmllint", "--noout --relaxng " TARNMF_SCHEMA ".rng"},
                    Validator{"XmllintXsd", "xmllint", "--noout --schema " TARNMF_SCHEMA ".xsd"}),
    [](const auto& test) { return std::string(test.param.name); });

// What trang cannot translate exactly is nothing to tell; its failure is.
TEST(SchemaCommand, TellsOnlyFailuresOfTrang) {
  const TempDirectory path;
  const std::string trang =
      path.Write("trang", "#!/bin/sh\necho told; cp \"$1\" \"$2\"; exit $TRANG\n");
  std::filesystem::permissions(trang, std::filesystem::perms::owner_all);
  const std::string run = " PATH=" + path.At() + ":$PATH " TARNMF_TOOL " schema --xsd";
  const Outcome good = RunCommand("TRANG=0" + run);
  EXPECT_EQ(good.status, 0);
  EXPECT_EQ(good.errors, "");
  EXPECT_EQ(good.out, RunTool("schema").out);
  const Outcome bad = RunCommand("TRANG=1" + run);
  EXPECT_EQ(bad.status, 1);
  EXPECT_EQ(bad.out, "");
  EXPECT_THAT(bad.errors, testing::StartsWith("told\ntarnmf: the XML Schema is made by"));
}

}  // namespace
}  // namespace tarnmf::test
