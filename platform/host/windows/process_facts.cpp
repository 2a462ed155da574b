// SPDX-License-Identifier: Apache-2.0
#include "platform/host/process_facts.h"

#include <windows.h>
#include <array>
#include <map>
#include <mutex>

#include "platform/filesystem.h"

std::basic_string<btkWChar> RealExecutable() {
  std::array<wchar_t, 32768> path;  // the longest that there is
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return {path.data(), length};
}

const char* EnvironmentValue(const char* name) {
  static std::mutex mutex;
  static std::map<std::string, std::string> handedOut;
  const wchar_t* const value = _wgetenv(btkFSPath(name).WideText());
  if (value == nullptr) return nullptr;
  const btkFSPath converted(value);
  const std::lock_guard lock(mutex);
  std::string& kept = handedOut[name];
  if (kept != converted.NarrowText()) kept = converted.NarrowText();
  return kept.c_str();
}

unsigned ForkGeneration() {
  return 0;
}
