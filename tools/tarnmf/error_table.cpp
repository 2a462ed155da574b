#include "error_table.h"

#include <fmt/format.h>

namespace tool {
namespace {

struct ErrorRowT {
  const char* name;
  const char* sentence;
};

// Without a default, so that the compiler misses the row of a code that has none.
constexpr ErrorRowT RowOf(BtkErrorT code) {
  switch (code) {
    case kBtkOk:
      return {"ok", "success"};
    case kBtkMissing:
      return {"missing",
              "something required is missing: an attribute or a child element, a file that cannot "
              "be opened, or the service manager"};
    case kBtkNotFound:
      return {"not found", "what was asked for does not exist"};
    case kBtkNotReady:
      return {"not ready", "the dynamic-library manager is not available"};
    case kBtkRefused:
      return {"refused", "the attribute \"resolvepath\" is never admitted"};
    case kBtkNullArgument:
      return {"null argument", "a required argument is null or empty"};
    case kBtkForbidden:
      return {"forbidden", "a combination of attributes, elements or values that is not allowed"};
    case kBtkUnexpected:
      return {"unexpected",
              "an unknown or misplaced element or attribute, no manifest root with \"version\" "
              "alone, or a batch of records that contradict each other"};
    case kBtkOutOfRange:
      return {"out of range", "a number outside 0 to 32767"};
    case kBtkTooLong:
      return {"too long", "a text that does not fit"};
    case kBtkBadText:
      return {"bad text", "text that is not valid in its encoding"};
    case kBtkNoMemory:
      return {"no memory", "memory could not be had"};
    case kBtkNotSharedLib:
      return {"not a shared library", "a module inside a class side is not of type \"sharedLib\""};
    case kBtkStarting:
      return {"starting", "initialisation is under way"};
    case kBtkDuplicate:
      return {"duplicate",
              "something is given twice: an attribute, an element or record where one is allowed, "
              "or a load point that is filed already"};
    case kBtkWrongVersion:
      return {"wrong version", "the root's \"version\" is not 1"};
    case kBtkMalformed:
      return {"malformed",
              "a malformed or empty value, no XML document, or a syntax error in the layout file"};
  }
  return {"other", "a code of the platform"};
}

}  // namespace

const char* Meaning(BtkErrorT code) {
  return RowOf(code).sentence;
}

std::string CodeInWords(BtkErrorT code) {
  const ErrorRowT row = RowOf(code);
  return fmt::format("code {}, {}: {}", static_cast<int>(code), row.name, row.sentence);
}

}  // namespace tool
