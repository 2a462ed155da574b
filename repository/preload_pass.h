// Loads libraries ahead of use.
#ifndef REPOSITORY_PRELOAD_PASS_H
#define REPOSITORY_PRELOAD_PASS_H

#include "tarnmf/ldp_data.h"

#include "platform/dlm.h"
#include "platform/errors.h"

namespace tarnmf {

// Loads every published shared library of the load point that has a preload condition which holds
// for this process and whose option, if it names one, is on; each library once. A library that
// cannot be loaded is no failure. Codes: those of btkDlmGetCurProcessImagePathW.
BtkErrorT PreloadModules(btkDlmManager& dlm, const MfLdpDataT& data);

}  // namespace tarnmf

#endif  // REPOSITORY_PRELOAD_PASS_H
