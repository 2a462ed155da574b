// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/name_hint.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <span>

#include "check/suggestions.h"
#include "check/wording.h"

namespace tool {
namespace {

constexpr std::size_t kListed = 8;

}  // namespace

std::string CloseNamesHint(const std::string& wanted, const std::vector<std::string>& names) {
  tarnmf::check::CloseNames close(wanted);
  for (const std::string& name : names)
    close.Offer(name);
  return tarnmf::check::DidYouMean(close.Best(), tarnmf::check::Quoted);
}

std::string NameHint(const std::string& wanted, const std::vector<std::string>& names,
                     const char* listing) {
  std::string hint = CloseNamesHint(wanted, names);
  if (!hint.empty()) return hint;
  if (names.empty()) return fmt::format("; {}: none", listing);
  const std::span<const std::string> listed(names.data(), std::min(names.size(), kListed));
  const std::string more =
      names.size() > kListed ? fmt::format(" and {} more", names.size() - kListed) : "";
  return fmt::format("; {}: {}{}", listing, fmt::join(listed, ", "), more);
}

}  // namespace tool
