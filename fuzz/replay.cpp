// SPDX-License-Identifier: Apache-2.0
// Stands in for the fuzzer: hands every file below the folders given to the target, once.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i])) {
      if (!entry.is_regular_file()) continue;
      std::ifstream file(entry.path(), std::ios::binary);
      const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
      std::fprintf(stderr, "%s\n",
                   entry.path().string().c_str());  // the last one is the one that failed
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++count;
    }
    if (count == 0) {
      std::fprintf(stderr, "%s holds no input\n", argv[i]);
      return 1;
    }
    std::printf("%s: %d inputs\n", argv[i], count);
  }
  return argc > 1 ? 0 : 1;
}
