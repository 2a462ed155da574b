// Reads "class" elements.
#ifndef XML_CLASS_ELEMENTS_H
#define XML_CLASS_ELEMENTS_H

#include "xml/dispatch.h"

namespace tarnmf {

// "class" and "classes" at document level; used with ClassMfReader.
extern const MfTagTableT kDocumentClasses;

}  // namespace tarnmf

#endif  // XML_CLASS_ELEMENTS_H
