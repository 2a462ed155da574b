// SPDX-License-Identifier: Apache-2.0
#include "tests/host/preloading.h"

namespace tarnmf::test {

std::string ProbeLibrary() {
  return ReadFile(TARNMF_PROBE_LIBRARY);
}

namespace {

TEST_F(Preloading, SurvivesLibrariesThatAreCutOff) {
  // Past what the loader reads of it a library can be loaded, whatever is cut off behind that.
  bool wasLoaded = false;
  for (std::size_t length = 0; length < whole_.size(); length += whole_.size() / 64 + 1) {
    const bool isLoaded = Load(whole_.substr(0, length)).empty();
    EXPECT_TRUE(isLoaded || !wasLoaded) << length;
    wasLoaded = isLoaded;
  }
  EXPECT_EQ(Load(whole_), "");
  for (const std::string& path : {root_.At(), root_.At("none.so"), std::string("a.so")})
    EXPECT_NE(LoadFile(path), "");
}

TEST_F(Preloading, IsOnlyNotedWhereThatIsAsked) {
  manager_.SetPreloadMode(kBtkHostRecordsOnly);
  EXPECT_EQ(manager_.PreloadModule(nullptr, TARNMF_PROBE_LIBRARY, 0, 0, nullptr, nullptr), kBtkOk);
  EXPECT_FALSE(manager_.Preloads().back().isLoaded);
}

}  // namespace
}  // namespace tarnmf::test
