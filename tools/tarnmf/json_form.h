// SPDX-License-Identifier: Apache-2.0
// The forms of the JSON that commands print. docs/schema/json describes each of them.
#ifndef TOOLS_TARNMF_JSON_FORM_H
#define TOOLS_TARNMF_JSON_FORM_H

#include <nlohmann/json.hpp>
#include <string>

namespace tool {

using Json = nlohmann::ordered_json;

// The number of a form grows whenever one of its keys is added, removed or changes its meaning, also
// one within the records, findings or grammar that it shares with others. The findings of check and the
// records of read are printed as they are; the number of their form stands in its schema alone.
namespace json_format {
inline constexpr int kDiff = 1;
inline constexpr int kExplain = 1;
inline constexpr int kFindClass = 1;
inline constexpr int kFindService = 1;
inline constexpr int kGraph = 1;
inline constexpr int kListClasses = 1;
inline constexpr int kListLoadpoints = 1;
inline constexpr int kListServices = 1;
inline constexpr int kScan = 1;
inline constexpr int kSchema = 1;
inline constexpr int kVersion = 1;
inline constexpr int kWhyClass = 1;
inline constexpr int kWhyPreload = 1;
}  // namespace json_format

// Bytes that are no valid UTF-8 are replaced.
std::string JsonText(const Json& json);

// An object that begins with the number of its form.
std::string FormText(int format, Json keys);

}  // namespace tool

#endif  // TOOLS_TARNMF_JSON_FORM_H
