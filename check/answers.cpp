#include "check/answers.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <set>
#include <utility>

#include "platform/filesystem.h"
#include "platform/host/embedded_services.h"
#include "support/ignore_refusal.h"

namespace tarnmf::check {
namespace {

// The service that hosts classes which name none.
constexpr char kDefaultHost[] = "GenLWSC";

std::int16_t VersionKey(std::int16_t version) {
  return static_cast<std::int16_t>(2 * version);
}

bool IsEqual(const UniIdT& left, const UniIdT& right) {
  return btkUniIdIsEqual(&left, &right);
}

// The entry that comes first among those that a query may find, after entries of lower versions.
template <class Bucket>
auto FirstOfVersion(const Bucket& bucket, std::int16_t version) {
  const auto threshold = static_cast<std::int16_t>((version < 0 ? 0 : 2 * version) - 1);
  return std::find_if(bucket.begin(), bucket.end(), [&](const NamedClass* named) {
    return VersionKey(named->version) > threshold;
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
  using IdBytes = std::array<std::uint8_t, sizeof(UniIdT)>;

  void DefineServices(const LoadPoint& loadpoint) {
    for (const auto& manifest : loadpoint.manifests) {
      for (const RunnableDeclaration& runnable : manifest->declarations.runnables) {
        for (const ServiceDeclaration& service : runnable.services) {
          if (!service.id) continue;
          hosts_.try_emplace(std::to_array(service.id->id.bytes), Host{manifest.get(), &service});
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
    std::optional<UniIdT> id;
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
    const auto host = hosts_.find(std::to_array(id->bytes));
    if (host == hosts_.end()) return State::kHostElsewhere;
    named.host = host->second;
    if (!btkUniIdIsNull(record.serviceId)) {
      // A service that hosts is defined.
      IgnoreRefusal(
          manager_.QueryServiceVersions(&named.version, &named.minVersion, &*id, path_.WideText()));
    }
    return State::kFiled;
  }

  // Nothing when no service has the name.
  std::optional<UniIdT> Resolve(const std::string& name, std::int32_t version) {
    const auto asked = static_cast<std::int16_t>(0U - static_cast<std::uint32_t>(version));
    const auto [known, isNew] = resolved_.try_emplace({name, asked});
    if (isNew) {
      UniIdT id{};
      if (manager_.ResolveExternalService(&id, name.c_str(), asked, 0, path_.WideText()) == kBtkOk)
        known->second = id;
    }
    return known->second;
  }

  Answers& answers_;
  btkHostServiceManager manager_;
  // Of the load point at hand.
  btkFSPath path_{""};
  std::map<std::pair<std::string, std::int16_t>, std::optional<UniIdT>> resolved_;
  std::map<IdBytes, Host> hosts_;  // the first service of each id
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
  for (NamedClass& named : classes_)
    named.found = Find({std::string(named.Name()), named.loadpoint->scope, named.version});
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
