// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host/btkhost.h"
#include "platform/host/process_facts.h"
#include "platform/host/system_names.h"
#include "platform/runtime.h"

namespace {

using WideString = std::basic_string<btkWChar>;

// What the process queries answer. Machine types are handed out as pointers that live as long as
// the process, so an earlier answer is left where it is when a new one is set.
struct ProcessAnswers {
  WideString loadpoint;
  WideString executable;  // empty: the real one
  const char* nativeMachine;
  const char* otherMachine;
};

ProcessAnswers& Process() {
  static ProcessAnswers process{{}, {}, kSystemNames.nativeMachine, kSystemNames.otherMachine};
  return process;
}

BtkErrorT CopyTo(btkWChar* buffer, std::size_t units, const WideString& text) {
  if (text.size() >= units) return kBtkTooLong;
  std::copy_n(text.c_str(), text.size() + 1, buffer);
  return kBtkOk;
}

// Kept for the life of the process: answers given out earlier stay valid.
const char* KeepForever(const char* text) {
  static auto* const kept = new std::vector<std::unique_ptr<std::string>>;
  return kept->emplace_back(std::make_unique<std::string>(text))->c_str();
}

}  // namespace

std::size_t btkGetLoadpointW(btkWChar* buffer, std::size_t units) {
  const WideString& path = Process().loadpoint;
  if (CopyTo(buffer, units, path) != kBtkOk) return static_cast<std::size_t>(-1);
  return path.size();
}

BtkErrorT btkDlmGetCurProcessImagePathW(btkWChar* buffer, std::size_t units) {
  const WideString& set = Process().executable;
  return CopyTo(buffer, units, set.empty() ? RealExecutable() : set);
}

BtkErrorT btkGetExecutableNameW(btkWChar* buffer, std::size_t units, const void* /*reserved*/,
                                const btkWChar* name) {
  if (name == nullptr) return kBtkNullArgument;
  const std::string_view suffix = kSystemNames.programSuffix;
  return CopyTo(buffer, units, WideString(name).append(suffix.begin(), suffix.end()));
}

const char* btkGetVexMachine() {
  return Process().nativeMachine;
}
const char* btkGetVexMachine3264(const char* /*machine*/) {
  return Process().otherMachine;
}

void btkHostSetProcessLoadpoint(const btkWChar* path) {
  Process().loadpoint = path != nullptr ? path : BTK_W("");
}

void btkHostSetExecutablePath(const btkWChar* path) {
  Process().executable = path != nullptr ? path : BTK_W("");
}

void btkHostSetMachineTypes(const char* native, const char* other) {
  Process().nativeMachine = native != nullptr ? KeepForever(native) : kSystemNames.nativeMachine;
  Process().otherMachine = other != nullptr ? KeepForever(other) : kSystemNames.otherMachine;
}
