// Text in any encoding that the system knows, into UTF-8.
#ifndef PLATFORM_HOST_TEXT_CONVERTER_H
#define PLATFORM_HOST_TEXT_CONVERTER_H

#include <string>
#include <string_view>

class TextConverter {
 public:
  explicit TextConverter(const std::string& encoding);
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
