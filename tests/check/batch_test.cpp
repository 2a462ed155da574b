// SPDX-License-Identifier: Apache-2.0
// The records of a load point together, with the publisher's checks as the measure.
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "check/batch_rules.h"
#include "publish/batch_checks.h"
#include "tests/support/documents.h"
#include "tests/support/parse.h"

namespace tarnmf::check {
namespace {

// Batches of few ids, so that they meet.
class RandomBatches {
 public:
  std::string Next() {
    std::string text;
    modules_ = 3 + Below(6);
    for (std::size_t i = Below(3); i < 6; ++i)
      text += Module();
    for (std::size_t i = Below(4); i < 4; ++i)
      text += Class();
    return test::DocumentOf(text);
  }

 private:
  std::size_t Below(std::size_t count) { return random_() % count; }

  std::string Module() {
    std::string text = fmt::format("<module id='{}' name='n'>", moduleIds_++ % (modules_ + 1));
    for (std::size_t i = Below(30); i >= 27; --i)
      text += fmt::format("<platformmodule machinetype='{}' name='p'/>", Below(9));
    return text + "</module>";
  }

  std::string Side(const char* name, const char* attributes) {
    if (Below(4) == 0) return fmt::format("<{} {}><module name='n'/></{}>", name, attributes, name);
    return fmt::format("<{} moduleref='{}' {}/>", name, Below(modules_ + 1), attributes);
  }

  std::string Class() {
    const char* const affinity =
        std::array{"generic", "app", "agent", "service", "service"}[Below(5)];
    const std::string kind = affinity;
    std::string text = fmt::format("<class id='${}' affinity='{}'>", 1 + Below(5), affinity);
    if (kind != "agent" && Below(5) != 0) text += Side("clientside", "multiplicity='perLdp'");
    if (kind == "service" && Below(2) == 0) text += Side("serviceside", "svcid='$9'");
    if (kind != "app" && Below(3) == 0) text += Side("agentside", "multiplicity='perLdp'");
    return text + "</class>";
  }

  std::mt19937 random_{11};
  std::size_t modules_ = 1;
  std::size_t moduleIds_ = 0;
};

TEST(BatchRules, RefuseWhatThePublisherRefuses) {
  RandomBatches batches;
  int refused = 0;
  for (int round = 0; round < 5000; ++round) {
    const std::string document = batches.Next();
    MfLdpDataT data;
    ASSERT_EQ(test::Parse(document, data), kBtkOk) << document;
    const Refusal refusal = CheckFirstBatch({data.modules.items, data.modules.count},
                                            {data.classes.items, data.classes.count});
    LoadPoint loadpoint(LoadPoint::Role::kInstallation, "pack");
    loadpoint.manifests.push_back(ReadManifest("a.tmfx", document));
    std::vector<Finding> findings;
    CheckBatch(loadpoint, ClassRecordsOf(loadpoint), {}, findings);
    const bool isRefused =
        std::any_of(findings.begin(), findings.end(),
                    [](const Finding& finding) { return finding.code == kBtkUnexpected; });
    ASSERT_EQ(isRefused, static_cast<bool>(refusal)) << static_cast<int>(refusal.cause) << document;
    refused += isRefused ? 1 : 0;
  }
  EXPECT_GT(refused, 1000);
  EXPECT_LT(refused, 4500);
}

}  // namespace
}  // namespace tarnmf::check
