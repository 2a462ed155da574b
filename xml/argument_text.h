// SPDX-License-Identifier: Apache-2.0
// How the text of an "arg" element becomes arguments.
#ifndef XML_ARGUMENT_TEXT_H
#define XML_ARGUMENT_TEXT_H

#include "platform/errors.h"
#include "support/owned.h"
#include "xml/readers.h"

namespace tarnmf {

// Appends the whole text, unchanged, as one argument; nothing when it is empty or blank.
// kBtkNoMemory when out of memory.
BtkErrorT AppendWholeArgument(WideText text, ArgList& args);

// Cuts the text at white space and appends the pieces; the text is used up. A piece that starts with
// a single or double quote runs to the next quote of that kind, or to the end; it loses the quotes,
// and each white space in it becomes a space. kBtkNoMemory when out of memory.
BtkErrorT AppendArguments(WideText text, ArgList& args);

}  // namespace tarnmf

#endif  // XML_ARGUMENT_TEXT_H
