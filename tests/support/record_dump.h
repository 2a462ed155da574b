// SPDX-License-Identifier: Apache-2.0
// Records as text, for comparisons of whole records in tests.
#ifndef TESTS_SUPPORT_RECORD_DUMP_H
#define TESTS_SUPPORT_RECORD_DUMP_H

#include <string>

#include "tarnmf/ldp_data.h"

namespace tarnmf::test {

// One line per record, indented below the record that holds it. Only fields that differ from a
// default-constructed record are shown: name=value, texts in quotes, a text that its record owns by
// a flag with a "+" after it. So null (not shown) and empty ("") can be told apart.
std::string Dump(const MfModuleT& module);
std::string Dump(const MfIntfClassT& record);
std::string Dump(const MfRunnableT& runnable);

// All modules, then all classes, then all runnables.
std::string Dump(const MfLdpDataT& data);

// The same with "fresh" in place of the ids that were made for nested modules, which differ from one
// parse to the next.
std::string DumpWithoutFreshIds(const MfLdpDataT& data);

// The text form of an id.
std::string Text(const UniIdT& id);

// UTF-8 of a wide string; "(null)" for none.
std::string Text(const btkWChar* wide);

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_RECORD_DUMP_H
