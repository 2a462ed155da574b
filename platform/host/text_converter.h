// SPDX-License-Identifier: Apache-2.0
// Text in any encoding that the system knows, into UTF-8.
#ifndef PLATFORM_HOST_TEXT_CONVERTER_H
#define PLATFORM_HOST_TEXT_CONVERTER_H

#include <string>
#include <string_view>

// What is made of bytes that stand for nothing, by the XML library as well.
enum class Meaningless { kRefused, kKept, kReplaced };

class TextConverter {
 public:
  // The name, in capitals, by which the system knows an encoding that documents may spell otherwise.
  static std::string KnownName(std::string upperName);
  static Meaningless TreatmentOf(unsigned char byte, std::string_view upperName);

  explicit TextConverter(const std::string& upperName);
  TextConverter(const TextConverter&) = delete;
  TextConverter& operator=(const TextConverter&) = delete;
  ~TextConverter();

  bool IsKnown() const;

  // Converts up to the first bytes that stand for nothing, which stay in `bytes`. REQUIRES: IsKnown().
  void Convert(std::string_view& bytes, std::string& text);

 private:
  void* converter_;
};

#endif  // PLATFORM_HOST_TEXT_CONVERTER_H
