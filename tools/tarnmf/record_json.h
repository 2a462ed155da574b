// SPDX-License-Identifier: Apache-2.0
// Records as JSON: every object has exactly the record's fields, in declared order, without the
// reserved ones.
#ifndef TOOLS_TARNMF_RECORD_JSON_H
#define TOOLS_TARNMF_RECORD_JSON_H

#include <nlohmann/json.hpp>
#include <string>

#include "tarnmf/records.h"

namespace tool {

using Json = nlohmann::ordered_json;

Json ToJson(const UniIdT& id);
Json ToJson(const char* text);
Json ToJson(const btkWChar* text);
Json ToJson(const MfModuleT& module);
Json ToJson(const MfIntfClassT& record);
Json ToJson(const MfServiceRoleT& role);
Json ToJson(const MfRunnableT& runnable);
Json ToJson(const MfLdpDataT& data);
Json ToJson(const MfSvcResolveT& entry);

// Bytes that are no valid UTF-8 are replaced.
std::string JsonText(const Json& json);

}  // namespace tool

#endif  // TOOLS_TARNMF_RECORD_JSON_H
