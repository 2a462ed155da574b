// SPDX-License-Identifier: Apache-2.0
#include "check/suggestions.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <utility>

#include "platform/text.h"

namespace tarnmf::check {
namespace {

constexpr std::size_t kLongest = 64;
constexpr std::size_t kFew = 3;
constexpr std::size_t kCertainLength = 5;
constexpr std::size_t kShortestPart = 3;
constexpr std::size_t kPart = kLongest;  // the distance of a long form: further than any steps

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), btkAsciiToLower<char>);
  return lower;
}

// A word that would have to be exchanged as a whole is not close to anything.
std::size_t MostSteps(std::size_t length) {
  if (length <= 1 || length > kLongest) return 0;
  return length <= 4 ? 1 : length <= 8 ? 2 : 3;
}

}  // namespace

std::size_t Distance(std::string_view one, std::string_view other, std::size_t limit) {
  const std::size_t apart =
      one.size() > other.size() ? one.size() - other.size() : other.size() - one.size();
  if (apart > limit || std::max(one.size(), other.size()) > kLongest) return limit + 1;
  using Row = std::array<std::size_t, kLongest + 1>;
  Row rows[3];  // of the letter at hand and the two before it
  for (std::size_t j = 0; j <= other.size(); ++j)
    rows[0][j] = j;
  for (std::size_t i = 1; i <= one.size(); ++i) {
    const Row& above = rows[(i - 1) % 3];
    Row& row = rows[i % 3];
    row[0] = i;
    for (std::size_t j = 1; j <= other.size(); ++j) {
      const std::size_t exchange = one[i - 1] != other[j - 1] ? 1 : 0;
      row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + exchange});
      if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1]) {
        row[j] = std::min(row[j], rows[(i - 2) % 3][j - 2] + 1);
      }
    }
  }
  return std::min(rows[one.size() % 3][other.size()], limit + 1);
}

CloseNames::CloseNames(std::string_view word)
    : word_(word.size() <= kLongest ? Lower(word) : std::string()),
      distance_(MostSteps(word.size()) + 1) {}

void CloseNames::Offer(std::string_view name) {
  if (word_.empty() || name.empty() || name.size() > kLongest) return;
  // One step more than those found so far is too far away already.
  const std::size_t limit = best_.empty() ? distance_ - 1 : distance_;
  const std::size_t steps = Distance(word_, Lower(name), limit);
  if (steps > limit) return;
  if (steps < distance_) best_.clear();
  distance_ = steps;
  if (std::find(best_.begin(), best_.end(), name) == best_.end()) best_.push_back(name);
}

void CloseNames::OfferAsLongForm(std::string_view name) {
  if (word_.size() < kShortestPart || (!best_.empty() && distance_ != kPart)) return;
  const std::string lower = Lower(name);
  if (!lower.starts_with(word_) && !lower.ends_with(word_)) return;
  distance_ = kPart;
  best_.push_back(name);
}

std::vector<std::string_view> CloseNames::FewBest() const {
  return best_.size() <= kFew ? best_ : std::vector<std::string_view>();
}

bool CloseNames::IsCertain() const {
  return IsOneStepAway() && std::min(word_.size(), best_[0].size()) >= kCertainLength;
}

Suggestion Replace(Span span, std::string_view old, std::string text) {
  Suggestion suggestion;
  suggestion.title = fmt::format("Replace \"{}\" by \"{}\"", old, text);
  suggestion.edits.push_back({span, std::move(text)});
  return suggestion;
}

Suggestion Remove(Span span, std::string_view what) {
  Suggestion suggestion;
  suggestion.title = fmt::format("Remove {}", what);
  suggestion.edits.push_back({span, ""});
  return suggestion;
}

Suggestion Safe(Suggestion suggestion) {
  suggestion.safe = true;
  return suggestion;
}

}  // namespace tarnmf::check
