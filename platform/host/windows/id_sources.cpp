// SPDX-License-Identifier: Apache-2.0
#include "platform/host/id_sources.h"

#include <windows.h>
#include <algorithm>
#include <array>
#include <bcrypt.h>
#include <string>

namespace {

// Says in the bits of an id how it was made.
void MarkKind(UniIdT& id, unsigned kind) {
  id.bytes[6] = static_cast<std::uint8_t>((id.bytes[6] & 0x0fU) | (kind << 4U));
  id.bytes[8] = static_cast<std::uint8_t>((id.bytes[8] & 0x3fU) | 0x80U);
}

// Null when the system has none.
BCRYPT_ALG_HANDLE Sha1() {
  static const BCRYPT_ALG_HANDLE handle = [] {
    BCRYPT_ALG_HANDLE opened = nullptr;
    return BCryptOpenAlgorithmProvider(&opened, BCRYPT_SHA1_ALGORITHM, nullptr, 0) == 0 ? opened
                                                                                        : nullptr;
  }();
  return handle;
}

}  // namespace

BtkErrorT RandomId(UniIdT& id) {
  if (BCryptGenRandom(nullptr, id.bytes, sizeof id.bytes, BCRYPT_USE_SYSTEM_PREFERRED_RNG) != 0)
    return kBtkNotReady;
  MarkKind(id, 4);
  return kBtkOk;
}

BtkErrorT NamedId(UniIdT& id, const UniIdT& nameSpace, std::string_view name) {
  std::string input(std::begin(nameSpace.bytes), std::end(nameSpace.bytes));
  input += name;
  std::array<std::uint8_t, 20> digest;
  if (BCryptHash(Sha1(), nullptr, 0, reinterpret_cast<PUCHAR>(input.data()),
                 static_cast<ULONG>(input.size()), digest.data(), digest.size()) != 0) {
    return kBtkNotReady;
  }
  std::copy_n(digest.begin(), sizeof id.bytes, id.bytes);
  MarkKind(id, 5);
  return kBtkOk;
}
