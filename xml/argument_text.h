// How the text of an "arg" element becomes arguments.
#ifndef XML_ARGUMENT_TEXT_H
#define XML_ARGUMENT_TEXT_H

#include "platform/errors.h"
#include "xml/readers.h"

namespace tarnmf {

// Appends the whole text, unchanged, as one argument; nothing when it is empty or blank. 112 when
// memory cannot be had.
BtkErrorT AppendWholeArgument(const btkWChar* text, ArgList& args);

// Cuts the text at white space and appends the pieces. A piece that starts with a single or double
// quote runs to the next quote of that kind, or to the end; it loses the quotes, and each white
// space in it becomes a space. 112 when memory cannot be had.
BtkErrorT AppendArguments(const btkWChar* text, ArgList& args);

}  // namespace tarnmf

#endif  // XML_ARGUMENT_TEXT_H
