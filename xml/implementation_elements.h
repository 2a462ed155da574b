// Reads what stands below a "module" element.
#ifndef XML_IMPLEMENTATION_ELEMENTS_H
#define XML_IMPLEMENTATION_ELEMENTS_H

#include "xml/dispatch.h"
#include "xml/readers.h"

namespace tarnmf {

// "platformmodule": one more implementation, appended to `reader.impls`. What it does not give is
// taken from the module's own implementation.
BtkErrorT ReadPlatformModule(liMfReader::ModuleReader& reader, DOMNode& element);

// "preload": a condition of the implementation that is being read.
BtkErrorT ReadPreload(liMfReader::ModuleReader& reader, DOMNode& element);

}  // namespace tarnmf

#endif  // XML_IMPLEMENTATION_ELEMENTS_H
