#include "tests/support/temp_directory.h"

#include <fstream>
#include <random>
#include <stdexcept>

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

std::string TempDirectory::Write(const std::filesystem::path& name,
                                 std::string_view content) const {
  const std::filesystem::path file = path_ / name;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream out(file, std::ios::binary);
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!out.flush()) throw std::runtime_error("cannot write " + file.string());
  return file.string();
}

}  // namespace tarnmf::test
