// What the reports show of a scan besides the records themselves.
#ifndef TOOLS_TARNMF_SCAN_VIEW_H
#define TOOLS_TARNMF_SCAN_VIEW_H

#include <span>
#include <string>
#include <vector>

#include "platform/host/embedded_dlm.h"
#include "platform/host/embedded_services.h"
#include "tools/tarnmf/scan_session.h"

namespace tool {

template <class Element>
std::span<const Element> Part(const std::vector<Element>& list, const Range& range) {
  return {list.data() + range.begin, range.end - range.begin};
}

// The file of a module's selected implementation; empty when there is none.
std::string ResolvedFile(const MfModuleT& module);

// Where a module's file was looked for during a step.
std::vector<std::string> TriedFiles(const ScanStep& step, const MfModuleT& module);

// Whether the module's implementation for this machine could not be found and another one stands in
// for it.
bool IsFallback(const MfModuleT& module);

// Why the repository does not answer a query for the class's name, in the step's scope and at the
// class's own version, with this very record. Empty when it does.
std::string WhyUnanswered(liMfRepository& repository, const ScanStep& step,
                          const MfIntfClassT& record);

// The exposed services of the repository; with a load point, only those that came from it.
std::vector<MfSvcResolveT> ServiceEntries(liMfRepository& repository);
std::vector<MfSvcResolveT> ServiceEntries(liMfRepository& repository, const UniIdT& loadpoint);

}  // namespace tool

#endif  // TOOLS_TARNMF_SCAN_VIEW_H
