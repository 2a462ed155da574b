// SPDX-License-Identifier: Apache-2.0
// What the class "Filter" of the manifests stands for: the interface that its libraries implement, and
// the function by which they hand it out.
#ifndef PLUGIN_HOST_FILTER_H
#define PLUGIN_HOST_FILTER_H

class Filter {
 public:
  virtual int Apply(int brightness) const = 0;
  // Destroys the filter, in the library that made it.
  virtual void Dispose() = 0;

 protected:
  virtual ~Filter() = default;
};

// Every library of the class exports a function of this type and name; null when out of memory.
using CreateFilterT = Filter* (*)();
inline constexpr char kCreateFilter[] = "CreateFilter";

#endif  // PLUGIN_HOST_FILTER_H
