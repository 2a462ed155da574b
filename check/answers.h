// SPDX-License-Identifier: Apache-2.0
// Which classes are found by name and which are not: what comes of the load points' classes when
// they are indexed one load point after the other, and what queries then find.
#ifndef CHECK_ANSWERS_H
#define CHECK_ANSWERS_H

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "check/class_records.h"
#include "check/declared.h"
#include "check/finding.h"
#include "check/installation.h"

namespace tarnmf::check {

// A load point with its class records.
struct IndexedLoadPoint {
  const LoadPoint* loadpoint;
  const std::vector<ClassRecord>* classes;
};

struct Host {
  const Manifest* manifest = nullptr;
  const ServiceDeclaration* service = nullptr;
};

// A class record with a common name.
struct NamedClass {
  enum class State {
    kFiled,
    kNamesNoHost,    // and has no service side
    kHostUnknown,    // no service has the name, and the version, that the host is asked for by
    kHostElsewhere,  // its host is no service of its load point
  };

  const LoadPoint* loadpoint = nullptr;
  const ClassRecord* record = nullptr;
  State state = State::kFiled;
  Host host;                          // of a filed one
  std::int16_t version = 0;           // of its hosting service, when it is offered as a service
  std::int16_t minVersion = 0;        // likewise
  const NamedClass* found = nullptr;  // by a query of its own scope for its name and version

  bool Answers() const { return found == this; }
  std::string_view Name() const { return record->declaration->commonname->text; }
};

struct Query {
  std::string name;
  UniIdT scope{};
  std::int16_t version = 0;  // the least
  std::int16_t limit = INT16_MAX;
};

struct Candidate {
  enum class Test {
    kFound,
    kNotFiled,
    kVersionTooLow,  // than the query asks for
    kAboveLimit,     // its oldest supported version
    kOtherScope,
    kLater,  // another one is found before it
  };
  const NamedClass* named;
  Test test;
};

class Answers {
 public:
  // The load points in the order in which a process has them: its own first. Those that the library
  // does not file are left out by the caller.
  explicit Answers(const std::vector<IndexedLoadPoint>& loadpoints);

  // In the order of the load points and of their records.
  const std::deque<NamedClass>& Classes() const { return classes_; }

  const NamedClass* Find(const Query& query) const;

  // All classes of the query's name: those that are filed in the order in which it looks at them,
  // then the others.
  std::vector<Candidate> Candidates(const Query& query) const;

 private:
  class Indexing;
  void FindAll();
  using Bucket = std::vector<const NamedClass*>;  // by version, then in the order of filing

  std::deque<NamedClass> classes_;
  std::map<std::string, Bucket, std::less<>> byName_;
};

// Tells of the classes that are never found by name.
void CheckAnswers(const Answers& answers, const LoadPoint& loadpoint,
                  std::vector<Finding>& findings);

}  // namespace tarnmf::check

#endif  // CHECK_ANSWERS_H
