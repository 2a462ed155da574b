// SPDX-License-Identifier: Apache-2.0
// Parses documents of tests and shows what came of them.
#ifndef TESTS_SUPPORT_PARSE_H
#define TESTS_SUPPORT_PARSE_H

#include <string>

#include "tarnmf/ldp_data.h"

#include "platform/errors.h"
#include "tests/support/memory_stream.h"

namespace tarnmf::test {

// The stream is given back as it was, and what is refused leaves nothing.
BtkErrorT Parse(MemoryStream& stream, MfLdpDataT& data);
BtkErrorT Parse(const std::string& document, MfLdpDataT& data);

bool IsEmpty(const MfLdpDataT& data);

// The code of parsing one document, or the dump when all went well. The document is parsed twice,
// and the second time must leave nothing allocated; the first time, the XML library makes what it
// keeps.
std::string ParseAndDump(const std::string& document);

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_PARSE_H
