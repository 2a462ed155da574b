// SPDX-License-Identifier: Apache-2.0
#include "xml/xml_input_source.h"

#include <xercesc/util/PlatformUtils.hpp>

namespace tarnmf {

using xercesc::XMLPlatformUtils;

btkXMLInputSource::btkXMLInputSource(btkIStream* stream)
    : InputSource(XMLPlatformUtils::fgMemoryManager), stream_(RefPtr<btkIStream>::Share(stream)) {}

btkXMLInputSource::~btkXMLInputSource() = default;

xercesc::BinInputStream* btkXMLInputSource::makeStream() const {
  return new (XMLPlatformUtils::fgMemoryManager) btkIStreamAdaptor(stream_.get());
}

btkXMLInputSource::btkIStreamAdaptor::btkIStreamAdaptor(btkIStream* stream)
    : stream_(RefPtr<btkIStream>::Share(stream)) {}

btkXMLInputSource::btkIStreamAdaptor::~btkIStreamAdaptor() = default;

XMLFilePos btkXMLInputSource::btkIStreamAdaptor::curPos() const {
  return static_cast<XMLFilePos>(position_);
}

XMLSize_t btkXMLInputSource::btkIStreamAdaptor::readBytes(XMLByte* buffer, XMLSize_t size) {
  const std::int32_t bytes = stream_->Read(buffer, size);
  if (bytes < 0) return 0;
  // Counted without a sign, so that a document past the counter's range wraps instead of trapping.
  position_ = static_cast<std::int32_t>(static_cast<std::uint32_t>(position_) +
                                        static_cast<std::uint32_t>(bytes));
  return static_cast<XMLSize_t>(bytes);
}

const XMLCh* btkXMLInputSource::btkIStreamAdaptor::getContentType() const {
  return nullptr;
}

}  // namespace tarnmf
