// SPDX-License-Identifier: Apache-2.0
// Memory that is asked for before it is needed.
#ifndef SUPPORT_PREFETCH_H
#define SUPPORT_PREFETCH_H

namespace tarnmf {

// Nothing happens where the address means nothing.
inline void Prefetch(const void* address) {
#if defined(__GNUC__)
  __builtin_prefetch(address);
#else
  static_cast<void>(address);
#endif
}

}  // namespace tarnmf

#endif  // SUPPORT_PREFETCH_H
