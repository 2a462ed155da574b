// Reads the roles of a runnable. Each is appended to its list in `reader.runnable`.
#ifndef XML_ROLE_ELEMENTS_H
#define XML_ROLE_ELEMENTS_H

#include "xml/dispatch.h"
#include "xml/readers.h"

namespace tarnmf {

BtkErrorT ReadServiceRole(liMfReader::RunnableReader& reader, DOMNode& element);
BtkErrorT ReadAppRole(liMfReader::RunnableReader& reader, DOMNode& element);
BtkErrorT ReadLauncherRole(liMfReader::RunnableReader& reader, DOMNode& element);

}  // namespace tarnmf

#endif  // XML_ROLE_ELEMENTS_H
