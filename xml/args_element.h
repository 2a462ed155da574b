// Reads the "args" element of a role.
#ifndef XML_ARGS_ELEMENT_H
#define XML_ARGS_ELEMENT_H

#include "xml/dispatch.h"
#include "xml/readers.h"

namespace tarnmf {

// Fills `reader.role->args`; a second "args" of the same role takes the place of the first.
BtkErrorT ReadArgs(liMfReader::RunnableReader& reader, DOMNode& element);

}  // namespace tarnmf

#endif  // XML_ARGS_ELEMENT_H
