// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/json_form.h"

#include <utility>

namespace tool {

std::string JsonText(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string FormText(int format, Json keys) {
  Json form = {{"format", format}};
  for (auto& [key, value] : keys.items())
    form[key] = std::move(value);
  return JsonText(form);
}

}  // namespace tool
