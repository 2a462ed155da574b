// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/text.h"

#include <fmt/format.h>
#include <stdexcept>

#include "tarnmf/error_text.h"

#include "platform/filesystem.h"

namespace tool {

std::string Narrow(const btkWChar* wide) {
  return btkFSPath(wide).NarrowText();
}

WideString Widen(const std::string& narrow) {
  return btkFSPath(narrow.c_str()).WideText();
}

std::string CodeName(BtkErrorT code) {
  return fmt::format("code {}, {}", static_cast<int>(code), tarnmf::DescribeError(code).name);
}

std::string CodeInWords(BtkErrorT code) {
  return fmt::format("{}: {}", CodeName(code), tarnmf::DescribeError(code).sentence);
}

std::string IdText(const UniIdT& id) {
  char text[kBtkUniIdDashedLength + 1];
  const BtkErrorT e = btkUniIdFormat(text, sizeof text, nullptr, &id, kBtkUniIdDashed, 0);
  return e == kBtkOk ? text : "";
}

UniIdT ParseId(const std::string& text) {
  UniIdT id;
  const int form = text.size() == 32 ? kBtkUniIdPlain : kBtkUniIdDashed;
  if (btkUniIdParse(&id, text.c_str(), kBtkWholeText, nullptr, form) != kBtkOk) {
    throw std::invalid_argument(
        fmt::format("\"{}\" is not an id (36 characters with dashes, or 32 digits)", text));
  }
  return id;
}

}  // namespace tool
