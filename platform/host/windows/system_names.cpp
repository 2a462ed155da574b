// SPDX-License-Identifier: Apache-2.0
#include "platform/host/system_names.h"

const SystemNames kSystemNames = {"windows-x64", "windows-x86", "", ".dll", ".exe"};
