// The attribute tables of "module", "platformmodule" and "preload"; used with ModuleReader.
#ifndef XML_MODULE_ATTRIBUTES_H
#define XML_MODULE_ATTRIBUTES_H

#include "xml/dispatch.h"

namespace tarnmf {

extern const MfTagTableT kModuleAttributes;
extern const MfTagTableT kPlatformModuleAttributes;
extern const MfTagTableT kPreloadAttributes;

}  // namespace tarnmf

#endif  // XML_MODULE_ATTRIBUTES_H
