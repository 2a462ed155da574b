// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <new>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "bench/contest.h"
#include "platform/unique_id.h"
#include "repository/indexes.h"

namespace tarnmf::bench {
namespace {

constexpr const char* kWords[] = {
    "Access",  "Account", "Action",   "Audio",   "Backup",  "Batch",   "Buffer", "Cache",
    "Channel", "Client",  "Codec",    "Config",  "Content", "Context", "Cursor", "Data",
    "Device",  "Display", "Document", "Event",   "Export",  "Factory", "File",   "Filter",
    "Format",  "Handler", "Image",    "Import",  "Index",   "Layout",  "Link",   "Manager",
    "Media",   "Message", "Monitor",  "Network", "Object",  "Package", "Parser", "Policy",
    "Printer", "Query",   "Reader",   "Session", "Store",   "Stream",  "View",   "Writer"};
constexpr const char* kPrefixes[] = {"com.example.imaging.", "com.example.storage.",
                                     "com.example.session.", "com.vendor.print.",
                                     "net.sample.codec.",    "org.project.core."};

// Names like "ImageStoreFactory8", with none, one or one of several long prefixes.
class Names {
 public:
  explicit Names(std::string_view style)
      : prefixes_(style == "plain"    ? 0
                  : style == "prefix" ? 1
                                      : std::size(kPrefixes)) {}

  // Numbers at the end are even.
  std::string Filed() { return Name(0); }
  // They are odd.
  std::string Missing() { return Name(1); }

  std::mt19937_64& Random() { return random_; }

 private:
  std::string Name(std::uint64_t odd) {
    std::string name = prefixes_ == 0 ? "" : kPrefixes[random_() % prefixes_];
    for (int i = 0; i < 3; ++i)
      name += kWords[random_() % std::size(kWords)];
    return name + std::to_string(random_() % 20 * 2 + odd);
  }

  const std::size_t prefixes_;
  std::mt19937_64 random_{2};
};

// A run asks for some hundred names, so that reading the clock does not count, and the sides ask
// for names far from each other's, so that neither finds the cache warmed by the other. There are so
// many names in random order that no branch predictor learns them. The names asked for lie in memory
// as they are asked, since who asks for a name has just made or read it.
class Lookup final : public Contest {
 public:
  Lookup(Names names, bool filed, std::size_t size) : classes_(size), filed_(filed) {
    File(names);
    if (!filed) asked_.clear();
    const std::size_t questions = std::max<std::size_t>(size, 100'000);
    while (asked_.size() < questions)
      asked_.push_back(filed ? asked_[asked_.size() - size] : names.Missing());
    std::shuffle(asked_.begin(), asked_.end(), names.Random());
    asked_ = std::vector<std::string>(asked_);  // anew, so that they lie in this order
    othersNext_ = asked_.size() / kRun / 2 * kRun;
  }

  void Ours() override {
    Ask(oursNext_, [this](const std::string& name) {
      return repo_->FindClassImpl(&kBtkNullUniId, name.c_str(), 0, 0);
    });
  }
  void Other() override {
    Ask(othersNext_,
        [this](const std::string& name) { return FindInMap(kBtkNullUniId, name.c_str(), 0, 0); });
  }

 private:
  static constexpr std::size_t kRun = 250;

  // Filed in the order of names, since each moves the names after it; a million in random order
  // would take half an hour.
  void File(Names& names) {
    std::set<std::string> sorted;
    while (sorted.size() < classes_.size())
      sorted.insert(names.Filed());
    auto cls = classes_.begin();
    for (const std::string& name : sorted) {
      if (!FileClassEntry(*repo_, name.c_str(), &kBtkNullUniId, &kBtkNullUniId, kMfPerLdp, &*cls++))
        throw std::bad_alloc();
      byName_[name].push_back(repo_->FindClassImpl(&kBtkNullUniId, name.c_str(), 0, 0));
    }
    asked_.assign(sorted.begin(), sorted.end());
  }

  // Answers the same question as the repository, by the same rules.
  const MfSvcResolveT* FindInMap(const UniIdT& scope, const char* name, std::int16_t reqVersion,
                                 std::int16_t limit) const {
    const auto found = byName_.find(std::string_view(name));
    if (found == byName_.end()) return nullptr;
    const MfSvcResolveT* withoutScope = nullptr;
    const std::vector<MfSvcResolveT*>& entries = found->second;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
      if ((*entry)->versionKey < 2 * reqVersion) break;
      if ((*entry)->record->svcMinVersion > limit) continue;
      if (btkUniIdIsEqual(&(*entry)->ids[kMfScopeId], &scope)) return *entry;
      if (withoutScope == nullptr && btkUniIdIsNull((*entry)->ids[kMfScopeId]))
        withoutScope = *entry;
    }
    return withoutScope;
  }

  template <class Find>
  void Ask(std::size_t& next, Find find) {
    std::size_t found = 0;
    for (std::size_t i = next; i < next + kRun; ++i)
      found += find(asked_[i]) != nullptr;
    if (found != (filed_ ? kRun : 0)) throw std::runtime_error("a wrong answer");
    next = next + 2 * kRun <= asked_.size() ? next + kRun : 0;
  }

  std::vector<MfIntfClassT> classes_;
  const bool filed_;
  const RepositoryPtr repo_{new liMfRepoBaseImpl};
  std::map<std::string, std::vector<MfSvcResolveT*>, std::less<>> byName_;
  std::vector<std::string> asked_;
  std::size_t oursNext_ = 0;
  std::size_t othersNext_;
};

}  // namespace

ContestPtr LookupContest(std::string_view names, bool filed, std::int64_t size) {
  return std::make_unique<Lookup>(Names(names), filed, static_cast<std::size_t>(size));
}

}  // namespace tarnmf::bench
