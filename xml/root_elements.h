// Reads the root elements of manifest documents.
#ifndef XML_ROOT_ELEMENTS_H
#define XML_ROOT_ELEMENTS_H

#include "xml/dispatch.h"

namespace tarnmf {

// The four kinds of roots; used with liMfReader.
extern const MfTagTableT kRoots;

}  // namespace tarnmf

#endif  // XML_ROOT_ELEMENTS_H
