// SPDX-License-Identifier: Apache-2.0
#include "bench/bare_dom.h"

#include <stdexcept>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "xml/xml_input_source.h"

namespace tarnmf::bench {
namespace {

void Check(xercesc::XercesDOMParser& parser) {
  const xercesc::DOMDocument* const document = parser.getDocument();
  if (document == nullptr || document->getDocumentElement() == nullptr)
    throw std::runtime_error("no document");
}

}  // namespace

void ParseBareDom(btkIStream& stream) {
  btkXMLInputSource source(&stream);
  xercesc::XercesDOMParser parser;
  parser.parse(source);
  Check(parser);
}

void ParseBareDom(const std::string& file) {
  xercesc::XercesDOMParser parser;
  parser.parse(file.c_str());
  Check(parser);
}

}  // namespace tarnmf::bench
