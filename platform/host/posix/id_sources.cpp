// SPDX-License-Identifier: Apache-2.0
#include "platform/host/id_sources.h"

#include <uuid/uuid.h>

BtkErrorT RandomId(UniIdT& id) {
  uuid_generate_random(id.bytes);
  return kBtkOk;
}

BtkErrorT NamedId(UniIdT& id, const UniIdT& nameSpace, std::string_view name) {
  uuid_generate_sha1(id.bytes, nameSpace.bytes, name.data(), name.size());
  return kBtkOk;
}
