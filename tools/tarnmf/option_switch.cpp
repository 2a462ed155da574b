// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/option_switch.h"

#include <fmt/format.h>
#include <stdexcept>

#include "tools/tarnmf/text.h"

namespace tool {

OptionSwitch ParseOptionSwitch(const std::string& setting) {
  const std::size_t equals = setting.find('=');
  const UniIdT id = ParseId(setting.substr(0, equals));
  std::size_t used = 0;
  unsigned long value = 0;
  const std::string text = equals != std::string::npos ? setting.substr(equals + 1) : "";
  try {
    value = std::stoul(text, &used);
  } catch (const std::exception&) {
    used = 0;
  }
  if (used == 0 || used != text.size() || value > UINT32_MAX) {
    throw std::invalid_argument(
        fmt::format("\"{}\": an option is set as ID=VALUE with a number", setting));
  }
  return {id, static_cast<std::uint32_t>(value)};
}

}  // namespace tool
