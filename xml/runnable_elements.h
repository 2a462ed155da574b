// Reads "runnable" elements.
#ifndef XML_RUNNABLE_ELEMENTS_H
#define XML_RUNNABLE_ELEMENTS_H

#include "xml/dispatch.h"

namespace tarnmf {

// "runnable" and "runnables" at document level; used with RunnableMfReader.
extern const MfTagTableT kDocumentRunnables;

}  // namespace tarnmf

#endif  // XML_RUNNABLE_ELEMENTS_H
