// SPDX-License-Identifier: Apache-2.0
#include "tests/support/temp_directory.h"

#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

#include "platform/host/system_path.h"
#include "tests/support/system_names.h"

namespace tarnmf::test {

TempDirectory::TempDirectory() {
  std::random_device random;
  do {
    path_ = std::filesystem::temp_directory_path() / ("tarnmf-test-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(path_));
}

TempDirectory::~TempDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TempDirectory::At(const std::string& name) const {
  const std::filesystem::path path = name.empty() ? path_ : path_ / SystemPath(InSystemNames(name));
  return NarrowPath(path.generic_string<std::filesystem::path::value_type>());
}

std::string TempDirectory::Write(const std::string& name, std::string_view content) const {
  const std::filesystem::path file = path_ / SystemPath(InSystemNames(name));
  std::filesystem::create_directories(file.parent_path());
  std::ofstream out(file, std::ios::binary);
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!out.flush()) throw std::runtime_error("cannot write " + At(name));
  return At(name);
}

std::string ReadFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace tarnmf::test
