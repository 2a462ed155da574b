// SPDX-License-Identifier: Apache-2.0
// Records as JSON: every object has exactly the record's fields, in declared order, without the
// reserved ones.
#ifndef TOOLS_TARNMF_RECORD_JSON_H
#define TOOLS_TARNMF_RECORD_JSON_H

#include "tarnmf/records.h"

#include "tools/tarnmf/json_form.h"

namespace tool {

Json ToJson(const UniIdT& id);
Json ToJson(const char* text);
Json ToJson(const btkWChar* text);
Json ToJson(const MfModuleT& module);
Json ToJson(const MfIntfClassT& record);
Json ToJson(const MfServiceRoleT& role);
Json ToJson(const MfRunnableT& runnable);
Json ToJson(const MfLdpDataT& data);
Json ToJson(const MfSvcResolveT& entry);

}  // namespace tool

#endif  // TOOLS_TARNMF_RECORD_JSON_H
