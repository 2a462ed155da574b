// Reads the "env" element of a role.
#ifndef XML_ENV_ELEMENT_H
#define XML_ENV_ELEMENT_H

#include "xml/dispatch.h"
#include "xml/readers.h"

namespace tarnmf {

// Fills `reader.role->env`; a second "env" of the same role takes the place of the first.
BtkErrorT ReadEnv(liMfReader::RunnableReader& reader, DOMNode& element);

}  // namespace tarnmf

#endif  // XML_ENV_ELEMENT_H
