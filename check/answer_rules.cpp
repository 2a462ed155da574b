// SPDX-License-Identifier: Apache-2.0
// Rules about what queries come to.
#include <fmt/format.h>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "check/answers.h"
#include "check/suggestions.h"
#include "check/wording.h"

namespace tarnmf::check {
namespace {

Finding FoundAt(Rule rule, const ClassRecord& record, Span span, std::string message) {
  return Found(rule, kBtkOk, record.At(span), std::move(message));
}

std::string NeverFound(const NamedClass& named, const std::string& why) {
  return fmt::format("class {} is never found by name: {}", Quoted(named.Name()), why);
}

// Halves of a class do not share their host: what names it may be the half without a common name.
void RelateOtherHalf(Finding& finding, const ClassRecord* half) {
  if (half == nullptr) return;
  const ClassDeclaration& declaration = *half->declaration;
  if (!declaration.xsname && !declaration.xsid) return;
  const Span span = declaration.xsname ? declaration.xsname->span : declaration.xsid->span;
  finding.related.push_back({half->At(span),
                             "a host that is named by the other half of the class "
                             "counts for that alone"});
}

Finding HostOfNobody(const NamedClass& named) {
  const ClassRecord& record = *named.record;
  const SideDeclaration& side = record.declaration->sides[kMfServiceSide];
  Finding finding = FoundAt(
      Rule::kHostUnknown, record,
      side.IsThere() ? record.manifest->document[side.node].name
                     : record.declaration->commonname->span,
      NeverFound(named,
                 "it names no host, and no service of its load point is called \"GenLWSC\""));
  RelateOtherHalf(finding, record.completedBy);
  return finding;
}

// The half that has the name has no service side, and so no host.
std::optional<Finding> HostOfOtherHalf(const NamedClass& named) {
  const ClassRecord& record = *named.record;
  if (!record.completesFirst || record.first->sides[kMfServiceSide] == nullptr) {
    return std::nullopt;
  }
  Finding finding = FoundAt(Rule::kHostUnknown, record, record.declaration->commonname->span,
                            NeverFound(named, "it names no host"));
  RelateOtherHalf(finding, record.first);
  return finding;
}

// The names that services of a load point have.
class ServiceNames {
 public:
  explicit ServiceNames(const LoadPoint& loadpoint) {
    for (const auto& manifest : loadpoint.manifests) {
      for (const RunnableDeclaration& runnable : manifest->declarations.runnables) {
        for (const ServiceDeclaration& service : runnable.services) {
          if (service.commonname) names_.insert(service.commonname->text);
        }
      }
    }
  }

  // One that there is was not meant otherwise.
  std::string CloseTo(const std::string& name) {
    if (compared_ > kMostCompared || names_.contains(name)) return {};
    compared_ += names_.size();
    CloseNames close(name);
    for (const std::string_view each : names_)
      close.Offer(each);
    return DidYouMean(close.FewBest(), Quoted);
  }

 private:
  // It bounds the time that a load point full of unknown names takes.
  static constexpr std::size_t kMostCompared = 200'000;

  std::set<std::string_view> names_;
  std::size_t compared_ = 0;
};

Finding HostUnknown(const NamedClass& named, ServiceNames& names) {
  const ClassRecord& record = *named.record;
  const ClassDeclaration& declaration = *record.declaration;
  if (declaration.xsname) {
    const std::string name = Quoted(declaration.xsname->text);
    const std::string least = declaration.xsversion > 0
                                  ? fmt::format(" with version {} or above", declaration.xsversion)
                                  : "";
    return FoundAt(
        Rule::kHostUnknown, record, declaration.xsname->span,
        NeverFound(named, fmt::format("it names the host {}, and no service of its load "
                                      "point has that name{}{}",
                                      name, least, names.CloseTo(declaration.xsname->text))));
  }
  if (declaration.xsid && !btkUniIdIsNull(declaration.xsid->id)) {
    return FoundAt(Rule::kHostUnknown, record, declaration.xsid->span,
                   NeverFound(named, fmt::format("it names the host {}, and no service of its load "
                                                 "point has that id",
                                                 IdText(declaration.xsid->id))));
  }
  return HostOfNobody(named);
}

Finding Hidden(const NamedClass& named) {
  const ClassRecord& other = *named.found->record;
  const Place place = other.At(other.declaration->commonname->span);
  Finding finding = FoundAt(
      Rule::kClassHidden, *named.record, named.record->declaration->commonname->span,
      NeverFound(named,
                 fmt::format("{}:{} answers instead, with version {}", place.source->Path(),
                             place.source->At(place.span.begin).line, named.found->version)));
  finding.related.push_back({place, "this one answers"});
  return finding;
}

// Of two classes with one id only one can stay.
bool IsRefused(const ClassRecord& record) {
  return record.first != nullptr && !record.completesFirst;
}

}  // namespace

void CheckAnswers(const Answers& answers, const LoadPoint& loadpoint,
                  std::vector<Finding>& findings) {
  ServiceNames names(loadpoint);
  for (const NamedClass& named : answers.Classes()) {
    if (named.loadpoint != &loadpoint || named.record->hasErrors || named.Answers()) continue;
    std::optional<Finding> finding;
    if (named.state == NamedClass::State::kFiled) {
      // Without another one its version is negative, which is told where that is written.
      const bool isHidden = named.found != nullptr && !IsRefused(*named.found->record);
      if (isHidden && !IsRefused(*named.record)) finding = Hidden(named);
    } else if (loadpoint.knowsServices) {
      finding = named.state == NamedClass::State::kNamesNoHost
                    ? HostOfOtherHalf(named)
                    : std::optional(HostUnknown(named, names));
    }
    if (finding) findings.push_back(*std::move(finding));
  }
}

}  // namespace tarnmf::check
