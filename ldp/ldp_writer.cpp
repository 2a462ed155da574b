// SPDX-License-Identifier: Apache-2.0
#include "tarnmf/ldp_writer.h"

liLdpMfWriter* liLdpMfWriter::CreateNew(const char* /*kind*/) {
  return nullptr;
}
void liLdpMfWriter::Dispose() {
  delete this;
}
liLdpMfWriter::~liLdpMfWriter() = default;

liMfBuilder* liMfBuilder::CreateNew(const char* /*kind*/) {
  return nullptr;
}
void liMfBuilder::Dispose() {
  delete this;
}
liMfBuilder::~liMfBuilder() = default;
