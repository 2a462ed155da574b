// SPDX-License-Identifier: Apache-2.0
// Owners of what comes from the platform or is handed out through an interface: each releases what
// it holds on every way out of a scope, an exception included.
#ifndef SUPPORT_OWNED_H
#define SUPPORT_OWNED_H

#include <memory>
#include <utility>

#include "platform/memory.h"
#include "platform/types.h"

namespace tarnmf {

struct StringRelease {
  void operator()(void* text) const { btkStrFree(text); }
};
using Utf8Text = std::unique_ptr<char, StringRelease>;
using WideText = std::unique_ptr<btkWChar, StringRelease>;

// Hands the address of an owner's pointer to an operation that stores a new object through it.
template <class Owner>
class OutParameter {
 public:
  explicit OutParameter(Owner& owner) : owner_(owner) {}
  OutParameter(const OutParameter&) = delete;
  OutParameter& operator=(const OutParameter&) = delete;
  ~OutParameter() { owner_.reset(value_); }
  operator typename Owner::pointer *() { return &value_; }

 private:
  Owner& owner_;
  typename Owner::pointer value_ = nullptr;
};
template <class Owner>
OutParameter<Owner> Out(Owner& owner) {
  return OutParameter<Owner>(owner);
}

// One counted reference on an object.
template <class Counted>
class RefPtr {
 public:
  RefPtr() = default;
  RefPtr(const RefPtr&) = delete;
  RefPtr& operator=(const RefPtr&) = delete;
  ~RefPtr() {
    if (object_ != nullptr) object_->Release();
  }

  // Takes over a reference that the caller holds; takes a reference of its own.
  static RefPtr Adopt(Counted* object) { return RefPtr(object); }
  static RefPtr Share(Counted* object) {
    if (object != nullptr) object->AddRef();
    return RefPtr(object);
  }

  Counted* get() const { return object_; }
  Counted* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  explicit RefPtr(Counted* object) : object_(object) {}

  Counted* object_ = nullptr;
};

}  // namespace tarnmf

#endif  // SUPPORT_OWNED_H
