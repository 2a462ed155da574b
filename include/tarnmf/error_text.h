// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the codes mean, in words for people.
#ifndef TARNMF_ERROR_TEXT_H
#define TARNMF_ERROR_TEXT_H

#include "platform/errors.h"

namespace tarnmf {

/// Both texts live as long as the program.
struct ErrorText {
  const char* name;      ///< a word or two, in lower case
  const char* sentence;  ///< all that the code can mean, without a full stop
};

/// The words for `code`; a code that the library does not produce itself is called "other".
constexpr ErrorText DescribeError(BtkErrorT code) {
  // Without a default, so that the compiler misses the words of a code that has none.
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
      return {"no memory", "out of memory"};
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

}  // namespace tarnmf

#endif  // TARNMF_ERROR_TEXT_H
