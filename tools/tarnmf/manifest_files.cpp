// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/manifest_files.h"

#include <cstdlib>
#include <exception>
#include <memory>
#include <typeinfo>

#if defined(__GNUG__)
#include <cxxabi.h>
#endif

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_loader.h"

#include "tools/tarnmf/text.h"

namespace tool {
namespace {

// The name of the type of the exception being handled.
std::string ExceptionType() {
#if defined(__GNUG__)
  const std::type_info* const type = abi::__cxa_current_exception_type();
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> name(
      abi::__cxa_demangle(type->name(), nullptr, nullptr, &status), &std::free);
  return status == 0 ? name.get() : type->name();
#else
  return "an exception";
#endif
}

}  // namespace

std::string LoadResult::InWords() const {
  return exception ? "the XML library says: " + *exception : CodeInWords(code);
}

btkFSList FileList(const std::vector<std::string>& files) {
  btkFSList list(static_cast<int>(files.size()));
  for (const std::string& file : files)
    list.Append(btkFSEntry(file.c_str()));
  return list;
}

std::vector<std::string> ManifestsIn(const std::string& directory) {
  std::vector<std::string> files;
  const btkFSList list(btkFSEntry(directory.c_str()), "*.tmfx");
  for (unsigned i = 0; i < list.Count(); ++i)
    files.emplace_back(list[i].Path().NarrowText());
  return files;
}

LoadResult Load(const btkFSList& files, const btkWChar* loadpoint, MfLdpDataT& data) {
  LoadResult result;
  try {
    const tarnmf::DisposePtr<liLdpMfLoader> loader(liLdpMfLoader::CreateNew(nullptr));
    result.code = loader ? loader->Load(&data, loadpoint, files) : kBtkNoMemory;
  } catch (...) {
    result.exception = CurrentException();
  }
  return result;
}

std::string CurrentException() {
  try {
    throw;
  } catch (const std::exception& exception) {
    return exception.what();
  } catch (...) {
    // The XML library's exceptions share no base with the standard ones; their type says what kind
    // of document cannot be processed.
    return ExceptionType();
  }
}

}  // namespace tool
