// SPDX-License-Identifier: Apache-2.0
// Names that may have been meant: what a word that nothing is known under is close to.
#ifndef CHECK_SUGGESTIONS_H
#define CHECK_SUGGESTIONS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "check/finding.h"

namespace tarnmf::check {

// Looks for the names closest to a word among those that are offered to it, in time linear in their
// number. Putting in, taking out or exchanging a letter and swapping two neighbours count as one
// step each; a name may be one step away from a word of up to 4 letters, two from one of up to 8,
// three from longer ones. Letter case makes no difference, except that the word in another case is
// closer than everything else. Words and names of more than 64 bytes have no close names.
class CloseNames {
 public:
  explicit CloseNames(std::string_view word);

  // The name has to outlive the search. One that has been offered before is offered in vain.
  void Offer(std::string_view name);

  // Offers what the word may be short for, as "ref" is for "moduleref". It counts only where no name
  // is close otherwise.
  // REQUIRES: all other names have been offered.
  void OfferAsLongForm(std::string_view name);

  // The closest of those offered, in their order; several when they are equally far away.
  const std::vector<std::string_view>& Best() const { return best_; }
  // The same, but none when they are so many that no single one can have been meant.
  std::vector<std::string_view> FewBest() const;
  // Whether there is a single one, a step away or only written in another case.
  bool IsOneStepAway() const { return best_.size() == 1 && distance_ <= 1; }
  // The same for texts that are long enough to differ in more than that: it must have been meant.
  bool IsCertain() const;

 private:
  std::string word_;  // in lower case
  std::vector<std::string_view> best_;
  std::size_t distance_;  // the steps to the best ones; before there are any, more than admitted
};

// The steps from one text to the other, or `limit` + 1 when there are more than `limit`.
std::size_t Distance(std::string_view one, std::string_view other, std::size_t limit);

Suggestion Replace(Span span, std::string_view old, std::string text);
Suggestion Remove(Span span, std::string_view what);
Suggestion Safe(Suggestion suggestion);

}  // namespace tarnmf::check

#endif  // CHECK_SUGGESTIONS_H
