// SPDX-License-Identifier: Apache-2.0
#include "check/answers.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <numeric>
#include <optional>
#include <utility>

#include "platform/filesystem.h"
#include "platform/host/embedded_services.h"
#include "support/ignore_refusal.h"

namespace tarnmf::check {
namespace {

// The service that hosts classes which name none.
constexpr char kDefaultHost[] = "GenLWSC";

using IdBytes = std::array<std::uint8_t, sizeof(UniIdT)>;

IdBytes BytesOf(const UniIdT& id) {
  return std::to_array(id.bytes);
}

std::int16_t VersionKey(std::int16_t version) {
  return static_cast<std::int16_t>(2 * version);
}

bool IsEqual(const UniIdT& left, const UniIdT& right) {
  return btkUniIdIsEqual(&left, &right);
}

// Keys have 16 bits, so that high versions wrap.
bool IsOfVersion(const NamedClass& named, std::int16_t version) {
  const auto threshold = static_cast<std::int16_t>((version < 0 ? 0 : 2 * version) - 1);
  return VersionKey(named.version) > threshold;
}

// The entry that comes first among those that a query may find, after entries of lower versions.
template <class Bucket>
auto FirstOfVersion(const Bucket& bucket, std::int16_t version) {
  return std::partition_point(bucket.begin(), bucket.end(), [&](const NamedClass* named) {
    return !IsOfVersion(*named, version);
  });
}

}  // namespace

// Puts the questions of the indexing pass to a service manager of its own, which is told of the
// services of one load point after the other.
class Answers::Indexing {
 public:
  explicit Indexing(Answers& answers) : answers_(answers) {}

  void Add(const IndexedLoadPoint& indexed) {
    path_ = btkFSPath(indexed.loadpoint->path.c_str());
    resolved_.clear();
    hosts_.clear();
    DefineServices(*indexed.loadpoint);
    for (const ClassRecord& record : *indexed.classes) {
      if (!record.declaration->commonname) continue;
      NamedClass& named = answers_.classes_.emplace_back();
      named.loadpoint = indexed.loadpoint;
      named.record = &record;
      named.state = File(named);
      if (named.state == NamedClass::State::kFiled)
        answers_.byName_[std::string(named.Name())].push_back(&named);
    }
  }

 private:
  void DefineServices(const LoadPoint& loadpoint) {
    for (const auto& manifest : loadpoint.manifests) {
      for (const RunnableDeclaration& runnable : manifest->declarations.runnables) {
        for (const ServiceDeclaration& service : runnable.services) {
          if (!service.id) continue;
          hosts_.try_emplace(BytesOf(service.id->id), Host{manifest.get(), &service});
          Define(service);
        }
      }
    }
  }

  void Define(const ServiceDeclaration& service) {
    const UniIdT& id = service.id->id;
    const UniIdT model{};
    // The embedded manager defines every service, and knows those that it has defined.
    IgnoreRefusal(manager_.DefineService(&id, path_.WideText(), "", &model, 0, 0, 0, 0));
    if (service.multiplicity != kMfSingleInstance && !service.commonname) return;
    IgnoreRefusal(manager_.SetServiceInfo(
        &id, path_.WideText(), service.commonname ? service.commonname->text.c_str() : nullptr,
        static_cast<std::int16_t>(service.version), kBtkInfoShared));
  }

  NamedClass::State File(NamedClass& named) {
    using State = NamedClass::State;
    const ClassRecord& record = *named.record;
    const ClassDeclaration& declaration = *record.declaration;
    ServiceId id;
    if (declaration.xsname) {
      id = Resolve(declaration.xsname->text, declaration.xsversion);
    } else if (declaration.xsid && !btkUniIdIsNull(declaration.xsid->id)) {
      id = declaration.xsid->id;
    } else if (record.sides[kMfServiceSide] == nullptr) {
      return State::kNamesNoHost;
    } else {
      id = Resolve(kDefaultHost, 0);
    }
    if (!id) return State::kHostUnknown;
    const auto host = hosts_.find(BytesOf(*id));
    if (host == hosts_.end()) return State::kHostElsewhere;
    named.host = host->second;
    if (!btkUniIdIsNull(record.serviceId)) {
      // A service that hosts is defined.
      IgnoreRefusal(
          manager_.QueryServiceVersions(&named.version, &named.minVersion, &*id, path_.WideText()));
    }
    return State::kFiled;
  }

  using ServiceId = std::optional<UniIdT>;  // nothing: no service has the name and the version
  static bool IsSame(const ServiceId& left, const ServiceId& right) {
    return left.has_value() == right.has_value() && (!left || IsEqual(*left, *right));
  }

  // The newest service of the load point is the answer up to its version, then the newest one of all
  // up to that one's, then none. So few questions tell the answers to all.
  ServiceId Resolve(const std::string& name, std::int32_t version) {
    const auto asked = static_cast<std::int16_t>(0U - static_cast<std::uint32_t>(version));
    const int least = asked < 0 ? -asked : 0;
    std::map<int, ServiceId>& known = resolved_[name];
    if (known.empty()) {
      for (const int end : {0, kHighestLeast})
        known.emplace(end, Ask(name, end));
    }
    for (;;) {
      const auto above = known.lower_bound(least);
      if (above->first == least) return above->second;
      const auto below = std::prev(above);
      if (IsSame(below->second, above->second)) return above->second;
      const int middle = std::midpoint(below->first, above->first);
      const int next = middle > below->first ? middle : least;
      known.emplace(next, Ask(name, next));
    }
  }

  ServiceId Ask(const std::string& name, int least) {
    UniIdT id{};
    const BtkErrorT code = manager_.ResolveExternalService(
        &id, name.c_str(), static_cast<std::int16_t>(-least), 0, path_.WideText());
    return code == kBtkOk ? ServiceId(id) : std::nullopt;
  }

  static constexpr int kHighestLeast = 1 << 15;

  Answers& answers_;
  btkHostServiceManager manager_;
  // Of the load point at hand.
  btkFSPath path_{""};
  std::map<std::string, std::map<int, ServiceId>> resolved_;  // by name and least version
  std::map<IdBytes, Host> hosts_;                             // the first service of each id
};

Answers::Answers(const std::vector<IndexedLoadPoint>& loadpoints) {
  Indexing indexing(*this);
  for (const IndexedLoadPoint& indexed : loadpoints)
    indexing.Add(indexed);
  for (auto& [name, bucket] : byName_) {
    std::stable_sort(bucket.begin(), bucket.end(),
                     [](const NamedClass* left, const NamedClass* right) {
                       return VersionKey(left->version) < VersionKey(right->version);
                     });
  }
  FindAll();
}

// Each class by a query of its own. The last entry of a scope is the newest one.
void Answers::FindAll() {
  std::map<std::pair<std::string_view, IdBytes>, const NamedClass*> newest;
  for (const auto& [name, bucket] : byName_) {
    for (const NamedClass* named : bucket)
      newest[{name, BytesOf(named->loadpoint->scope)}] = named;
  }
  for (NamedClass& named : classes_) {
    for (const UniIdT& scope : {named.loadpoint->scope, kBtkNullUniId}) {
      const auto entry = newest.find({named.Name(), BytesOf(scope)});
      if (entry == newest.end() || !IsOfVersion(*entry->second, named.version)) continue;
      named.found = entry->second;
      break;
    }
  }
}

// An entry of the caller's own scope is preferred to any one without a scope.
const NamedClass* Answers::Find(const Query& query) const {
  const auto named = byName_.find(query.name);
  if (named == byName_.end()) return nullptr;
  const Bucket& bucket = named->second;
  const auto first = FirstOfVersion(bucket, query.version);
  const NamedClass* unscoped = nullptr;
  for (auto place = bucket.end(); place != first;) {
    const NamedClass& entry = **--place;
    if (entry.minVersion > query.limit) continue;
    if (IsEqual(entry.loadpoint->scope, query.scope)) return &entry;
    if (unscoped == nullptr && btkUniIdIsNull(entry.loadpoint->scope)) unscoped = &entry;
  }
  return unscoped;
}

std::vector<Candidate> Answers::Candidates(const Query& query) const {
  std::vector<Candidate> candidates;
  if (const auto named = byName_.find(query.name); named != byName_.end()) {
    const Bucket& bucket = named->second;
    const NamedClass* const found = Find(query);
    const auto first = FirstOfVersion(bucket, query.version);
    for (auto place = bucket.end(); place != bucket.begin();) {
      const NamedClass* const entry = *--place;
      const UniIdT& scope = entry->loadpoint->scope;
      candidates.push_back({entry, entry == found  ? Candidate::Test::kFound
                                   : place < first ? Candidate::Test::kVersionTooLow
                                   : entry->minVersion > query.limit ? Candidate::Test::kAboveLimit
                                   : !IsEqual(scope, query.scope) && !btkUniIdIsNull(scope)
                                       ? Candidate::Test::kOtherScope
                                       : Candidate::Test::kLater});
    }
  }
  for (const NamedClass& named : classes_) {
    if (named.state != NamedClass::State::kFiled && named.Name() == query.name) {
      candidates.push_back({&named, Candidate::Test::kNotFiled});
    }
  }
  return candidates;
}

}  // namespace tarnmf::check
