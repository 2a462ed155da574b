// SPDX-License-Identifier: Apache-2.0
#include "check/document_rules.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <iterator>
#include <string>
#include <system_error>
#include <unordered_set>
#include <utility>
#include <vector>

#include "check/characters.h"
#include "check/encoding.h"
#include "check/expansion.h"
#include "check/suggestions.h"
#include "check/wording.h"
#include "platform/host/system_path.h"

namespace tarnmf::check {
namespace {

// What references come to is told when it is much, and much more than the file.
constexpr std::uint64_t kNotableBytes = 100'000;
constexpr std::uint64_t kNotableRatio = 10;

bool IsAsciiName(std::string_view encoding) {
  return encoding == "US-ASCII" || encoding == "ASCII" || encoding == "us-ascii" ||
         encoding == "ascii";
}

// ---- The document type --------------------------------------------------------------------------

// Whether reading it would open a connection.
bool IsRemote(std::string_view systemId) {
  return systemId.starts_with("http:") || systemId.starts_with("https:") ||
         systemId.starts_with("ftp:");
}

// Readers look for a relative path in the working directory of their process.
bool IsReadableFile(std::string_view systemId) {
  if (systemId.starts_with("file://")) systemId.remove_prefix(7);
  std::error_code error;
  return std::filesystem::is_regular_file(SystemPath(std::string(systemId)), error);
}

class TypeRules {
 public:
  TypeRules(Manifest& manifest, const Verdict& verdict)
      : manifest_(manifest), verdict_(verdict), text_(manifest.source.Text()) {}

  void Check() {
    CheckExternals();
    const bool isLarge = CheckExpansion();
    if (!isLarge) CheckChanges();
  }

 private:
  const DocumentType& Type() const { return verdict_.type; }

  void Tell(Rule rule, BtkErrorT code, Span span, std::string message) {
    manifest_.findings.push_back(Found(rule, code, {&manifest_.source, span}, std::move(message)));
  }

  // `what` from `from` on; the name of the document type where it cannot be found.
  Span Find(std::string_view what, std::size_t from) const {
    const std::size_t at = text_.find(what, from);
    return at != std::string_view::npos ? Span{at, at + what.size()} : Heading();
  }

  // "<!DOCTYPE name".
  Span Heading() const {
    const Span all = manifest_.document.doctype;
    const std::size_t end = text_.find_first_of("[>\"'\r\n", all.begin);
    const std::string_view heading =
        text_.substr(all.begin, std::min<std::size_t>(end, all.end) - all.begin);
    return {all.begin, all.begin + heading.find_last_not_of(" \t") + 1};
  }

  // The names after "&" and "%" with these before them, wherever they stand.
  std::unordered_set<std::string_view> References() const {
    std::unordered_set<std::string_view> names;
    std::size_t at = manifest_.document.doctype.begin;
    while ((at = text_.find_first_of("&%", at)) != std::string_view::npos) {
      const std::size_t begin = at++;
      while (at < text_.size() && IsOfName(text_[at]))
        ++at;
      if (at < text_.size() && text_[at] == ';') names.insert(text_.substr(begin, at - begin));
    }
    return names;
  }

  void CheckExternals() {
    std::size_t from = manifest_.document.doctype.begin;
    if (!Type().systemId.empty())
      CheckExternal("document type", Type().systemId, kBtkUnexpected, from);
    const auto isOutside = [](const Entity& each) { return each.isExternal && !each.isUnparsed; };
    if (std::none_of(Type().entities.begin(), Type().entities.end(), isOutside)) return;
    const std::unordered_set<std::string_view> references = References();
    for (const Entity& entity : Type().entities) {
      const std::string reference = (entity.isParameter ? '%' : '&') + entity.name;
      if (!isOutside(entity) || !references.contains(reference)) continue;
      // Entities come in the order of their declarations, so that the search goes on where it was.
      from = std::max<std::size_t>(from, Find(entity.name, from).begin);
      CheckExternal(fmt::format("entity \"{}\"", entity.name), entity.systemId,
                    entity.isParameter ? kBtkUnexpected : kBtkOk, from + entity.name.size());
    }
  }

  void CheckExternal(std::string_view what, std::string_view systemId, BtkErrorT code,
                     std::size_t from) {
    manifest_.isExternal = true;
    const Span span = Find(systemId, from);
    if (IsRemote(systemId)) {
      Tell(Rule::kExternalEntity, kBtkOk, span,
           fmt::format("reading this file fetches the {} from \"{}\"", what, systemId));
    } else if (IsReadableFile(systemId)) {
      Tell(Rule::kExternalEntity, kBtkOk, span,
           fmt::format("reading this file reads the {} from \"{}\", too", what, systemId));
    } else {
      Tell(Rule::kEntityUnreadable, code, span,
           fmt::format("the {} cannot be read from \"{}\": {}", what, systemId,
                       code != kBtkOk ? "the whole file is refused"
                                      : "everything after the reference to it is lost"));
    }
  }

  // Whether references come to much.
  bool CheckExpansion() {
    const std::uint64_t size =
        Expansion(Type().entities).SizeOfReferences(text_.substr(manifest_.document.doctype.end));
    const bool isLarge = size > kNotableBytes && size / kNotableRatio > text_.size();
    if (!isLarge && !verdict_.isCutShort) return false;
    // Nobody can say how long the library would be at it.
    manifest_.isExternal |= verdict_.isCutShort;
    Tell(Rule::kEntityExpansion, kBtkOk, Heading(),
         isLarge ? fmt::format("references to entities grow to {} bytes", size)
                 : std::string("references to entities grow beyond measure"));
    return true;
  }

  void CheckChanges() {
    std::vector<std::string> changes;
    for (const Entity& entity : Type().entities) {
      if (!entity.isExternal && !entity.isParameter)
        changes.push_back(fmt::format("the entity \"{}\"", entity.name));
    }
    for (const DefaultValue& value : Type().defaults)
      changes.push_back(fmt::format("\"{}\" of <{}> by default", value.attribute, value.element));
    if (changes.empty()) return;
    constexpr std::size_t kShown = 3;
    std::string more;
    if (changes.size() > kShown) more = fmt::format(" and {} more", changes.size() - kShown);
    changes.resize(std::min(changes.size(), kShown));
    Tell(Rule::kDoctype, kBtkOk, Heading(),
         fmt::format("the document type declaration changes what is read: it declares {}{}",
                     fmt::join(changes, ", "), more));
  }

  Manifest& manifest_;
  const Verdict& verdict_;
  const std::string_view text_;
};

// ---- The encoding -------------------------------------------------------------------------------

void TellUnknownEncoding(std::string_view name, Finding& finding) {
  constexpr std::string_view kUsual[] = {"UTF-8",      "UTF-16",      "US-ASCII",
                                         "ISO-8859-1", "ISO-8859-15", "windows-1252"};
  CloseNames close(name);
  for (const std::string_view usual : kUsual)
    close.Offer(usual);
  finding.message += close.Best().empty() ? "; write UTF-8" : DidYouMean(close.Best(), Quoted);
  for (const std::string_view meant : close.Best())
    finding.suggestions.push_back(Replace(finding.place.span, name, std::string(meant)));
}

}  // namespace

void CheckEncoding(Manifest& manifest) {
  const Source& source = manifest.source;
  const std::string& encoding = source.Encoding();
  const Span span = DeclaredValue(source.Text(), "encoding");
  const std::string_view declared = source.Text(span);
  const auto tell = [&](std::string message) -> Finding& {
    manifest.findings.push_back(
        Found(Rule::kEncoding, kBtkOk, {&source, span}, std::move(message)));
    return manifest.findings.back();
  };
  if (!source.IsDecoded()) {
    TellUnknownEncoding(declared, tell(fmt::format("the encoding {} is not known here, so that "
                                                   "nothing of this file is judged",
                                                   Quoted(encoding))));
  } else if (encoding == "UTF-8" && NamesWideUnits(declared)) {
    tell(fmt::format("{} is declared, but the file is read as UTF-8; write UTF-8",
                     Quoted(declared)));
  } else if (encoding != "UTF-8" && !IsAsciiName(encoding)) {
    tell(fmt::format("read as {}; write UTF-8", encoding));
  }
}

void CheckDocumentType(Manifest& manifest, const Verdict& verdict) {
  if (manifest.document.doctype.Size() > 0) TypeRules(manifest, verdict).Check();
}

}  // namespace tarnmf::check
