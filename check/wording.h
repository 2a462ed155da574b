// SPDX-License-Identifier: Apache-2.0
// The words that messages are made of.
#ifndef CHECK_WORDING_H
#define CHECK_WORDING_H

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnmf::check {

// A text in double quotes, on one line and of bearable length.
std::string Quoted(std::string_view text);
// name="value"
std::string Assigned(std::string_view name, std::string_view value);
// A name as an element: <name>
std::string Tagged(std::string_view name);

// "a, b or c", with the word between the last two.
std::string Listed(std::span<const std::string> items, std::string_view word);

// "; did you mean a or b?" with each name shown by `show`; nothing when there is none.
std::string DidYouMean(std::span<const std::string_view> names,
                       std::string (*show)(std::string_view));

}  // namespace tarnmf::check

#endif  // CHECK_WORDING_H
