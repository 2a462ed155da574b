// SPDX-License-Identifier: Apache-2.0
// What the reports show of a scan besides the records themselves. All of it is collected at once, in
// time that grows with what was scanned.
#ifndef TOOLS_TARNMF_SCAN_VIEW_H
#define TOOLS_TARNMF_SCAN_VIEW_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host/embedded_dlm.h"
#include "platform/host/embedded_services.h"
#include "tools/tarnmf/scan_session.h"

namespace tool {

template <class Element>
btkHostListT<Element> Part(const btkHostListT<Element>& list, const Range& range) {
  return {list.begin() + range.begin, range.end - range.begin};
}

// The file of a module's selected implementation; empty when there is none.
std::string ResolvedFile(const MfModuleT& module);

// Whether the module's implementation for this machine could not be found and another one stands in
// for it.
bool IsFallback(const MfModuleT& module);

// What a query for a class's name, in the scope of its step and at its own version, is answered with.
struct ClassAnswer {
  enum class Kind {
    kItself,
    kAnother,      // an entry that comes first
    kUnknownHost,  // never with this record: it says where it is hosted, and no such service is there
    kNoHost,       // never with this record: it does not say where it is hosted
    kNoName,       // there is no such query
    kNegative,     // never with this record: queries do not ask for negative versions
  };
  Kind kind = Kind::kItself;
  const MfSvcResolveT* entry = nullptr;  // null: nothing answers
  std::string why;                       // in words, unless it is itself
};

class StepView {
 public:
  StepView(const ScanSession& session, const ScanStep& step);

  const ScanStep& Step() const { return step_; }
  // The paths where a module's file was looked for.
  std::vector<std::string> TriedFiles(const MfModuleT& module) const;
  // Why it was not looked for, each reason once.
  std::vector<std::string> Refusals(const MfModuleT& module) const;
  // Both in words, for a module without a file.
  std::string WhyUnresolved(const MfModuleT& module) const;
  // Of each class of the step's data, in their order.
  const std::vector<ClassAnswer>& Answers() const { return answers_; }
  // The exposed services that came from the step.
  const std::vector<const MfSvcResolveT*>& Services() const { return services_; }
  std::vector<const MfModuleT*> UnresolvedModules() const;

 private:
  friend class ScanView;

  std::vector<const btkHostResolutionT*> ResolutionsOf(const MfModuleT& module) const;
  ClassAnswer AnswerFor(liMfRepository& repository, const MfIntfClassT& record) const;

  const ScanStep& step_;
  IdSet hosts_;  // the services of the step's load point
  std::multimap<std::string_view, const btkHostResolutionT*> resolutions_;
  std::vector<ClassAnswer> answers_;
  std::vector<const MfSvcResolveT*> services_;
};

class ScanView {
 public:
  // The session has to outlive it.
  explicit ScanView(const ScanSession& session);
  ScanView(const ScanView&) = delete;
  ScanView& operator=(const ScanView&) = delete;

  const ScanSession& Session() const { return session_; }
  // Of each step, in their order.
  const std::vector<StepView>& Steps() const { return steps_; }

 private:
  const ScanSession& session_;
  std::vector<StepView> steps_;
  std::vector<MfSvcResolveT> services_;  // those of all steps
};

// All exposed services of the repository.
std::vector<MfSvcResolveT> ServiceEntries(liMfRepository& repository);

}  // namespace tool

#endif  // TOOLS_TARNMF_SCAN_VIEW_H
