// SPDX-License-Identifier: Apache-2.0
/// @file
/// Two interfaces that are declared for their place in the platform and have no implementation
/// here.
#ifndef TARNMF_LDP_WRITER_H
#define TARNMF_LDP_WRITER_H

#include "tarnmf/export.h"

/// Writes load points. Its operations are reserved: their names only fix the order of slots.
class TARNMF_API liLdpMfWriter {
 public:
  /// Always null, whatever `kind` is.
  static liLdpMfWriter* CreateNew(const char* kind);

  /// Copies nothing.
  liLdpMfWriter(const liLdpMfWriter&) {}
  /// Copies nothing.
  liLdpMfWriter& operator=(const liLdpMfWriter&) { return *this; }

  virtual void Reserved1() = 0;  ///< reserved
  /// Destroys the object. Not on null: tarnmf::DisposePtr tests.
  virtual void Dispose();

 protected:
  liLdpMfWriter() = default;
  virtual ~liLdpMfWriter();

 public:
  virtual void Reserved2() = 0;  ///< reserved
  virtual void Reserved3() = 0;  ///< reserved
};

/// Builds records. Its operations are reserved: their names only fix the order of slots.
class TARNMF_API liMfBuilder {
 public:
  /// Always null, whatever `kind` is.
  static liMfBuilder* CreateNew(const char* kind);

  /// Copies nothing.
  liMfBuilder(const liMfBuilder&) {}
  /// Copies nothing.
  liMfBuilder& operator=(const liMfBuilder&) { return *this; }

  virtual void Reserved1() = 0;  ///< reserved
  virtual void Reserved2() = 0;  ///< reserved
  virtual void Reserved3() = 0;  ///< reserved
  /// Destroys the object. Not on null: tarnmf::DisposePtr tests.
  virtual void Dispose();

 protected:
  liMfBuilder() = default;
  virtual ~liMfBuilder();
};

#endif  // TARNMF_LDP_WRITER_H
