// Owns an object of the library that ends with Dispose.
#ifndef TOOLS_TARNMF_DISPOSE_H
#define TOOLS_TARNMF_DISPOSE_H

#include <memory>

namespace tool {

struct DisposeT {
  template <class Interface>
  void operator()(Interface* object) const {
    object->Dispose();
  }
};
template <class Interface>
using DisposePtrT = std::unique_ptr<Interface, DisposeT>;

}  // namespace tool

#endif  // TOOLS_TARNMF_DISPOSE_H
