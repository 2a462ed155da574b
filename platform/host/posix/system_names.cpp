// SPDX-License-Identifier: Apache-2.0
#include "platform/host/system_names.h"

const SystemNames kSystemNames = {"linux-x64", "linux-x86", "lib", ".so", ""};
