// SPDX-License-Identifier: Apache-2.0
// Lets the XML library read a platform stream.
#ifndef XML_XML_INPUT_SOURCE_H
#define XML_XML_INPUT_SOURCE_H

#include <cstdint>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include "platform/stream.h"
#include "support/owned.h"

namespace tarnmf {

// Names no encoding, so that the XML library detects it from the document.
class btkXMLInputSource final : public xercesc::InputSource {
 public:
  class btkIStreamAdaptor;

  // Holds a reference on `stream` for as long as it lives.
  explicit btkXMLInputSource(btkIStream* stream);
  ~btkXMLInputSource() override;

  // Called by the XML library, which destroys the result.
  xercesc::BinInputStream* makeStream() const override;

 private:
  RefPtr<btkIStream> stream_;
};

class btkXMLInputSource::btkIStreamAdaptor final : public xercesc::BinInputStream {
 public:
  explicit btkIStreamAdaptor(btkIStream* stream);
  ~btkIStreamAdaptor() override;

  XMLFilePos curPos() const override;
  // One Read of the stream. A read failure ends the input and leaves the position where it is.
  XMLSize_t readBytes(XMLByte* buffer, XMLSize_t size) override;
  const XMLCh* getContentType() const override;

 private:
  RefPtr<btkIStream> stream_;
  std::int32_t position_ = 0;
};

}  // namespace tarnmf

#endif  // XML_XML_INPUT_SOURCE_H
