// SPDX-License-Identifier: Apache-2.0
// Where the bits of unique ids come from.
#ifndef PLATFORM_HOST_ID_SOURCES_H
#define PLATFORM_HOST_ID_SOURCES_H

#include <string_view>

#include "platform/errors.h"
#include "platform/unique_id.h"

// An id that nobody else has. Codes of both: kBtkOk; kBtkNotReady when the system lacks the means.
BtkErrorT RandomId(UniIdT& id);

// The id of a name below a namespace, the same one every time and everywhere; never the null id.
BtkErrorT NamedId(UniIdT& id, const UniIdT& nameSpace, std::string_view name);

#endif  // PLATFORM_HOST_ID_SOURCES_H
