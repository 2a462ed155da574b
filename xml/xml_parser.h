// SPDX-License-Identifier: Apache-2.0
// The parser of manifest documents.
#ifndef XML_XML_PARSER_H
#define XML_XML_PARSER_H

#include "tarnmf/stream_parser.h"

namespace tarnmf {

// Keeps nothing between its Parse calls.
class liMfXMLParser final : public liMfStmParser {
 public:
  BtkErrorT Parse(MfLdpDataT* data, btkIStream* stream) override;
};

}  // namespace tarnmf

#endif  // XML_XML_PARSER_H
