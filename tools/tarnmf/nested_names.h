// SPDX-License-Identifier: Apache-2.0
// Names for modules that carry no id of their own. Such a module stands in the side of a class, and
// the id that is made for it is another one each time its manifest is read.
#ifndef TOOLS_TARNMF_NESTED_NAMES_H
#define TOOLS_TARNMF_NESTED_NAMES_H

#include <string>
#include <unordered_map>
#include <vector>

#include "tarnmf/ldp_data.h"

#include "tools/tarnmf/record_json.h"

namespace tool {

class NestedNames {
 public:
  // Takes in the modules of a load point that has been published, with the manifests that it was
  // read from.
  void Collect(const MfLdpDataT& data, const std::vector<std::string>& manifests);

  // "client side of ID-OF-THE-CLASS" for an id that was made, any other as it is.
  std::string Shown(const std::string& id) const;
  // Puts these names in place of the ids wherever one is a value.
  void Show(Json& json) const;

 private:
  std::unordered_map<std::string, std::string> names_;  // by the id
};

}  // namespace tool

#endif  // TOOLS_TARNMF_NESTED_NAMES_H
