// SPDX-License-Identifier: Apache-2.0
#include "platform/host/process_facts.h"

#include <atomic>
#include <cstdlib>
#include <pthread.h>
#include <system_error>

#include "platform/host/system_path.h"

std::basic_string<btkWChar> RealExecutable() {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
  return btkFSPath(path.c_str()).WideText();
}

const char* EnvironmentValue(const char* name) {
  return std::getenv(name);
}

unsigned ForkGeneration() {
  static std::atomic<unsigned> generation{0};
  [[maybe_unused]] static const int watched =
      pthread_atfork(nullptr, nullptr, [] { ++generation; });
  return generation.load(std::memory_order_relaxed);
}
