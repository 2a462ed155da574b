// SPDX-License-Identifier: Apache-2.0
// The loader of manifest files.
#ifndef LDP_XML_FILE_LOADER_H
#define LDP_XML_FILE_LOADER_H

#include "tarnmf/ldp_loader.h"

namespace tarnmf {

// Loaders of files, whatever format these have.
class liLdpMfFileLoader : public liLdpMfLoader {};

// Keeps nothing between its Load calls.
class liLdpMfXMLFileLoader final : public liLdpMfFileLoader {
 public:
  BtkErrorT Load(MfLdpDataT* data, const btkWChar* loadpoint, const btkFSList& files) override;
  liMfStmParser* CreateParser() override;
  btkIStream* OpenStream(const btkWChar* path) override;

 private:
  BtkErrorT LoadFile(MfLdpDataT& data, const btkFSEntry& file);
};

}  // namespace tarnmf

#endif  // LDP_XML_FILE_LOADER_H
