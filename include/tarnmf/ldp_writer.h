// Two interfaces that are declared for their place in the platform and have no implementation here.
#ifndef TARNMF_LDP_WRITER_H
#define TARNMF_LDP_WRITER_H

#include "tarnmf/export.h"

// The operations of both interfaces are reserved: their names only fix the order of slots.
class TARNMF_API liLdpMfWriter {
 public:
  // Always null, whatever `kind` is.
  static liLdpMfWriter* CreateNew(const char* kind);

  liLdpMfWriter(const liLdpMfWriter&) {}
  liLdpMfWriter& operator=(const liLdpMfWriter&) { return *this; }

  virtual void Reserved1() = 0;
  virtual void Dispose();

 protected:
  liLdpMfWriter() = default;
  virtual ~liLdpMfWriter();

 public:
  virtual void Reserved2() = 0;
  virtual void Reserved3() = 0;
};

class TARNMF_API liMfBuilder {
 public:
  // Always null, whatever `kind` is.
  static liMfBuilder* CreateNew(const char* kind);

  liMfBuilder(const liMfBuilder&) {}
  liMfBuilder& operator=(const liMfBuilder&) { return *this; }

  virtual void Reserved1() = 0;
  virtual void Reserved2() = 0;
  virtual void Reserved3() = 0;
  virtual void Dispose();

 protected:
  liMfBuilder() = default;
  virtual ~liMfBuilder();
};

#endif  // TARNMF_LDP_WRITER_H
