// SPDX-License-Identifier: Apache-2.0
/// @file
/// The owner of the library's objects that are released with Dispose.
#ifndef TARNMF_DISPOSE_H
#define TARNMF_DISPOSE_H

#include <memory>

namespace tarnmf {

/// Releases an object with its Dispose, which must not be called on null.
struct Disposer {
  /// REQUIRES: `object` is not null; std::unique_ptr sees to it.
  template <class Interface>
  void operator()(Interface* object) const {
    object->Dispose();
  }
};

/// Owns an object of one of the library's interfaces; null calls nothing. For example
/// `tarnmf::DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));`
template <class Interface>
using DisposePtr = std::unique_ptr<Interface, Disposer>;

}  // namespace tarnmf

#endif  // TARNMF_DISPOSE_H
