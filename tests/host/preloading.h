// SPDX-License-Identifier: Apache-2.0
// Preloading a library that is a file of the test's own making.
#ifndef TESTS_HOST_PRELOADING_H
#define TESTS_HOST_PRELOADING_H

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "platform/host/embedded_dlm.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::test {

// The bytes of a library that can be loaded.
std::string ProbeLibrary();

class Preloading : public testing::Test {
 protected:
  // Why a library with this content is not loaded; empty: it is.
  std::string Load(std::string_view content) {
    return LoadFile(root_.Write("lib" + std::to_string(number_++) + ".so", content));
  }
  std::string LoadFile(const std::string& path) {
    void* handle = nullptr;
    const BtkErrorT code = manager_.PreloadModule(&handle, path.c_str(), 0, 0, nullptr, nullptr);
    const btkHostPreloadT& preload = manager_.Preloads().back();
    EXPECT_EQ(preload.path, path);
    EXPECT_EQ(code, preload.isLoaded ? kBtkOk : kBtkNotFound);
    EXPECT_EQ(handle != nullptr, preload.isLoaded);
    EXPECT_EQ(*preload.failure == '\0', preload.isLoaded);
    return preload.failure;
  }

  const std::string whole_ = ProbeLibrary();
  const TempDirectory root_;
  btkHostDlmManager manager_;
  int number_ = 0;
};

}  // namespace tarnmf::test

#endif  // TESTS_HOST_PRELOADING_H
