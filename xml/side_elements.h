// Reads the sides of a class. Each fills its part of `reader.current`.
#ifndef XML_SIDE_ELEMENTS_H
#define XML_SIDE_ELEMENTS_H

#include "xml/dispatch.h"
#include "xml/readers.h"

namespace tarnmf {

BtkErrorT ReadClientSide(liMfReader::ClassReader& reader, DOMNode& element);
BtkErrorT ReadServiceSide(liMfReader::ClassReader& reader, DOMNode& element);
BtkErrorT ReadAgentSide(liMfReader::ClassReader& reader, DOMNode& element);

}  // namespace tarnmf

#endif  // XML_SIDE_ELEMENTS_H
