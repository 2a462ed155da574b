// Reads the manifest files of one load point.
#ifndef TARNMF_LDP_LOADER_H
#define TARNMF_LDP_LOADER_H

#include "tarnmf/export.h"
#include "tarnmf/ldp_data.h"
#include "tarnmf/stream_parser.h"

#include "platform/errors.h"
#include "platform/filesystem.h"
#include "platform/stream.h"

class TARNMF_API liLdpMfLoader {
 public:
  // Makes a loader, or null when memory cannot be had. `kind` selects nothing and may be null. The
  // caller releases the loader with Dispose. May be called from several threads at once.
  static liLdpMfLoader* CreateNew(const char* kind);

  liLdpMfLoader(const liLdpMfLoader&) {}
  liLdpMfLoader& operator=(const liLdpMfLoader&) { return *this; }

  // Reads `files` in order and appends their records to `data`; then lends `loadpoint` to every
  // module and runnable in `data` whose own load point is present but empty. Lent strings are
  // borrowed: `loadpoint` must stay valid as long as the records do. A null or empty `loadpoint`
  // lends nothing. `data->loadpoint` is not written.
  //
  // The first failure ends the call; later files are not read and nothing is lent. Codes:
  //   0    success
  //   1    a file cannot be opened; `data` holds the records of the files before it
  //   35   `data` is null
  //   112  no parser could be made; `data` holds the records of the files before
  //   others: as liMfStmParser::Parse; the lists of `data` are empty then
  // Exceptions pass through as from Parse.
  //
  // Thread rules: calls with different `data` may run on several threads at once.
  virtual BtkErrorT Load(MfLdpDataT* data, const btkWChar* loadpoint, const btkFSList& files) = 0;

  // Destroys the loader.
  virtual void Dispose();

 protected:
  liLdpMfLoader() = default;
  virtual ~liLdpMfLoader();

 public:
  // A new parser of manifest documents, or null when memory cannot be had. Released with Dispose.
  virtual liMfStmParser* CreateParser() = 0;

  // Opens a manifest file. The caller owns one reference; null when it cannot be opened or memory
  // cannot be had.
  virtual btkIStream* OpenStream(const btkWChar* path) = 0;
};

#endif  // TARNMF_LDP_LOADER_H
