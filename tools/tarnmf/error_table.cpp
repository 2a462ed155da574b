#include "error_table.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>

namespace tool {
namespace {

struct ErrorRowT {
  BtkErrorT code;
  const char* meaning;
};

constexpr ErrorRowT kErrors[] = {
    {kBtkOk, "success"},
    {kBtkMissing,
     "something required is missing: an attribute or a child element, a file that cannot be "
     "opened, "
     "or the service manager"},
    {kBtkNotFound, "what was asked for does not exist"},
    {kBtkNotReady, "the dynamic-library manager is not available"},
    {kBtkRefused, "the attribute \"resolvepath\" is never admitted"},
    {kBtkNullArgument, "a required argument is null or empty"},
    {kBtkForbidden, "a combination of attributes, elements or values that is not allowed"},
    {kBtkUnexpected,
     "an unknown or misplaced element or attribute, no manifest root with \"version\" alone, or a "
     "batch of records that contradict each other"},
    {kBtkOutOfRange, "a number outside 0 to 32767"},
    {kBtkTooLong, "a text that does not fit"},
    {kBtkBadText, "text that is not valid in its encoding"},
    {kBtkNoMemory, "memory could not be had"},
    {kBtkNotSharedLib, "a module inside a class side is not of type \"sharedLib\""},
    {kBtkStarting, "initialisation is under way"},
    {kBtkDuplicate,
     "something is given twice: an attribute, an element or record where one is allowed, or a load "
     "point that is filed already"},
    {kBtkWrongVersion, "the root's \"version\" is not 1"},
    {kBtkMalformed,
     "a malformed or empty value, no XML document, or a syntax error in the layout file"},
};
static_assert(std::is_sorted(std::begin(kErrors), std::end(kErrors),
                             [](const ErrorRowT& left, const ErrorRowT& right) {
                               return left.code < right.code;
                             }));

}  // namespace

const char* Meaning(BtkErrorT code) {
  const auto row = std::find_if(std::begin(kErrors), std::end(kErrors),
                                [code](const ErrorRowT& error) { return error.code == code; });
  return row != std::end(kErrors) ? row->meaning : "a code of the platform";
}

std::string CodeInWords(BtkErrorT code) {
  return fmt::format("code {}: {}", static_cast<int>(code), Meaning(code));
}

}  // namespace tool
