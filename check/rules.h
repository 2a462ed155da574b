// SPDX-License-Identifier: Apache-2.0
// The catalogue of rules: what can be found, how grave it is, and how it is explained.
#ifndef CHECK_RULES_H
#define CHECK_RULES_H

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace tarnmf::check {

enum class Severity : std::uint8_t { kOff, kInfo, kWarning, kError };

// In the order of the catalogue.
enum class Rule : std::uint8_t {
  // Documents.
  kUnreadable,
  kNotWellFormed,
  kEncoding,
  kDoctype,
  kExternalEntity,
  kEntityExpansion,
  kEntityUnreadable,
  // Elements and attributes.
  kElementUnknown,
  kElementMisplaced,
  kAttributeUnknown,
  kAttributeRefused,
  kAttributeMissing,
  kAttributeTwice,
  kAttributeNeeds,
  kAttributeExcludes,
  kNothingGiven,
  // Values.
  kEmptyValue,
  kBadNumber,
  kOutOfRange,
  kWrongVersion,
  kBadId,
  kBadBoolean,
  kBadKeyword,
  kNotANumber,
  kNumberWraps,
  // Content.
  kOnlyText,
  kTextForbidden,
  kOnlyElements,
  kTextMissing,
  kTextCut,
  kStrayText,
  kContentBesideModuleref,
  kSideIncomplete,
  kSideForbidden,
  kSideTwice,
  kNestedNotShared,
  kSecondBareElement,
  kRolePartTwice,
  // The records of a load point together.
  kDuplicateModule,
  kDuplicateMachinetype,
  kDuplicateClass,
  kSideMissing,
  kModuleRole,
  kModuleUnknown,
  kRunnableModuleUnknown,
  kDuplicateService,
  // What queries and preloads come to.
  kHostUnknown,
  kClassHidden,
  kPreloadNeverHolds,
  kPreloadNotActedOn,
  // Files.
  kFileMissing,
  kNoImplementation,
  kPathTooLong,
  kOutsideLoadpoint,
  kBackslash,
  // Layout files and installations.
  kLineNotEnded,
  kLayoutSyntax,
  kLayoutKeyUnknown,
  kLayoutBits,
  kBaseMissing,
  kDuplicateLoadpoint,
  kNoManifests,
  // Check itself.
  kAllowUnknown,
  kAllowUnused,
  kLibraryDisagrees,
};
inline constexpr std::size_t kRuleCount = static_cast<std::size_t>(Rule::kLibraryDisagrees) + 1;

enum class Fix : std::uint8_t {
  kNone,     // nothing is suggested
  kOffered,  // for people to choose
  kSafe,     // "--fix" applies it where it is certain
};

// An example is one installation, written as files that each follow a line "== PATH". The
// installation to be checked is the directory "pack"; a first line "$ ARGUMENTS" says otherwise. A
// text without such lines is a manifest of it, and one without a root element stands in a
// <tarnmanifest version="1">.
struct RuleT {
  Rule rule;
  const char* name;
  Severity severity;  // an error is refused by the library or loses records, and cannot be lowered
  const char* codes;  // of the library, such as "1 or 39"; empty: none
  Fix fix;
  const char* summary;  // what is found, in one sentence
  const char* advice;   // why it matters and what to do
  const char* wrong;    // an example in which this rule alone is broken; null: no text can show it
  const char* right;    // the same without the mistake
};

// All rules, in the order of `Rule`.
std::span<const RuleT> Catalogue();

const RuleT& Describe(Rule rule);
std::optional<Rule> RuleNamed(std::string_view name);

}  // namespace tarnmf::check

#endif  // CHECK_RULES_H
