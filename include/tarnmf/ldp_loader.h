// SPDX-License-Identifier: Apache-2.0
/// @file
/// Reads the manifest files of one load point.
#ifndef TARNMF_LDP_LOADER_H
#define TARNMF_LDP_LOADER_H

#include "tarnmf/export.h"
#include "tarnmf/ldp_data.h"
#include "tarnmf/stream_parser.h"

#include "platform/errors.h"
#include "platform/filesystem.h"
#include "platform/stream.h"

/// Reads manifest files into one container. A loader keeps nothing between its calls. For example:
/// @code
/// MfLdpDataT data;
/// const tarnmf::DisposePtr<liLdpMfLoader> loader(liLdpMfLoader::CreateNew(nullptr));
/// if (!loader) return kBtkNoMemory;
/// return loader->Load(&data, nullptr, btkFSList(btkFSEntry("manifests"), "*.tmfx"));
/// @endcode
class TARNMF_API liLdpMfLoader {
 public:
  /// Makes a loader, or null when out of memory. `kind` selects nothing and may be null. The
  /// caller releases the loader with Dispose. May be called from several threads at once.
  static liLdpMfLoader* CreateNew(const char* kind);

  /// Copies nothing.
  liLdpMfLoader(const liLdpMfLoader&) {}
  /// Copies nothing.
  liLdpMfLoader& operator=(const liLdpMfLoader&) { return *this; }

  /// Reads `files` in order and appends their records to `data`; then lends `loadpoint` to every
  /// module and runnable in `data` whose own load point is present but empty. Lent strings are
  /// borrowed: `loadpoint` must stay valid as long as the records do. A null or empty `loadpoint`
  /// lends nothing. `data->loadpoint` is not written.
  ///
  /// The first failure ends the call; later files are not read and nothing is lent. Codes:
  /// - kBtkOk: success.
  /// - kBtkMissing: a file cannot be opened, and `data` holds the records of the files before it;
  ///   or Parse returned this code, and the lists of `data` are empty.
  /// - kBtkNullArgument: `data` is null.
  /// - kBtkNoMemory: no parser could be made, and `data` holds the records of the files before; or
  ///   Parse returned this code, and the lists of `data` are empty.
  /// - others: as liMfStmParser::Parse; the lists of `data` are empty.
  ///
  /// Exceptions pass through as from Parse.
  ///
  /// Thread rules: calls with different `data` may run on several threads at once.
  virtual BtkErrorT Load(MfLdpDataT* data, const btkWChar* loadpoint, const btkFSList& files) = 0;

  /// Destroys the loader. Not on null: tarnmf::DisposePtr tests.
  virtual void Dispose();

 protected:
  liLdpMfLoader() = default;
  virtual ~liLdpMfLoader();

 public:
  /// A new parser of manifest documents, or null when out of memory. Released with Dispose.
  virtual liMfStmParser* CreateParser() = 0;

  /// Opens a manifest file. The caller owns one reference; null when it cannot be opened, or when
  /// out of memory.
  virtual btkIStream* OpenStream(const btkWChar* path) = 0;
};

#endif  // TARNMF_LDP_LOADER_H
