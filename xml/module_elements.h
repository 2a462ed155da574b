// Reads "module" elements and what stands below them.
#ifndef XML_MODULE_ELEMENTS_H
#define XML_MODULE_ELEMENTS_H

#include "xml/dispatch.h"
#include "xml/readers.h"

namespace tarnmf {

// "module" and "modules" at document level; used with ModuleMfReader.
extern const MfTagTableT kDocumentModules;

// A "module" element that stands anywhere: the module with its implementations is appended to
// `reader.modules`.
BtkErrorT ReadModule(liMfReader::ModuleReader& reader, DOMNode& element);

}  // namespace tarnmf

#endif  // XML_MODULE_ELEMENTS_H
