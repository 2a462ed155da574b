// "tarnmf find": one question to the repository of a scan.
#ifndef TOOLS_TARNMF_FIND_COMMAND_H
#define TOOLS_TARNMF_FIND_COMMAND_H

#include <cstdint>
#include <string>

#include "scan_session.h"

namespace tool {

struct FindClassOptionsT {
  ScanOptionsT scan;
  std::string name;
  std::string scope;  // empty: none
  std::int16_t version = 0;
  std::int16_t limit = INT16_MAX;
};

struct FindServiceOptionsT {
  ScanOptionsT scan;
  std::string id;
  std::string in;  // path of the load point; empty: all of them
};

// Both return the exit status.
int RunFindClass(const FindClassOptionsT& options);
int RunFindService(const FindServiceOptionsT& options);

}  // namespace tool

#endif  // TOOLS_TARNMF_FIND_COMMAND_H
