// What the library's codes mean, in words.
#ifndef TOOLS_TARNMF_ERROR_TABLE_H
#define TOOLS_TARNMF_ERROR_TABLE_H

#include <string>

#include "platform/errors.h"

namespace tool {

// One sentence without a full stop; codes of the platform that are not known here say so.
const char* Meaning(BtkErrorT code);

// "code 42, unexpected: ...".
std::string CodeInWords(BtkErrorT code);

}  // namespace tool

#endif  // TOOLS_TARNMF_ERROR_TABLE_H
