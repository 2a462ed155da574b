// The schemas in docs/schema, as other programs understand them.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/documents.h"
#include "tests/support/temp_directory.h"
#include "tests/tool/run_tool.h"

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

// Programs that check documents, with the schema that they take before the documents.
class Schema : public testing::TestWithParam<std::pair<const char*, const char*>> {
 protected:
  void SetUp() override {
    if (!IsInstalled(GetParam().first)) GTEST_SKIP() << GetParam().first << " is not installed";
  }
  Outcome Check(const std::string& files) {
    return RunCommand(std::string(GetParam().second) + files + " 2>&1");
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
      "<class id='00000000000000000000000000000001'><clientside><module name='n' type='x'/>"
      "</clientside></class>",
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
    testing::Values(std::pair("jing", "jing " TARNMF_SOURCES "/docs/schema/tarnmf-manifest.rng"),
                    std::pair("jing", "jing " TARNMF_SOURCES "/docs/schema/tarnmf-manifest.xsd"),
                    std::pair("xmllint", "xmllint --noout --relaxng " TARNMF_SOURCES
                                         "/docs/schema/tarnmf-manifest.rng"),
                    std::pair("xmllint", "xmllint --noout --schema " TARNMF_SOURCES
                                         "/docs/schema/tarnmf-manifest.xsd")));

}  // namespace
}  // namespace tarnmf::test
