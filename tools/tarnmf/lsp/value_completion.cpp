// SPDX-License-Identifier: Apache-2.0
// Values of attributes.
#include "tools/tarnmf/lsp/completion_place.h"
#include "tools/tarnmf/lsp/given_beside.h"
#include "tools/tarnmf/lsp/known_values.h"
#include "tools/tarnmf/lsp/snippet.h"

namespace tool::lsp {
namespace {

// The quotes of the value at hand, and which of them have to be written.
class Quotes {
 public:
  explicit Quotes(const CompletionPlace& place) {
    const std::size_t begin = place.cursor.word.begin;
    const char before = begin > 0 ? place.manifest.source.Text()[begin - 1] : '\0';
    lacksFirst_ = before != '"' && before != '\'';
    if (!lacksFirst_) quote_ = before;
    lacksLast_ = lacksFirst_ || place.NextCharacter() != quote_;
  }

  std::string Escaped(std::string_view value) const { return InQuotes(value, quote_); }
  std::string Completed(const std::string& value) const {
    return (lacksFirst_ ? quote_ + value : value) + (lacksLast_ ? std::string(1, quote_) : "");
  }

 private:
  char quote_ = '"';
  bool lacksFirst_;
  bool lacksLast_;
};

}  // namespace

std::vector<CompletionItem> CompleteValue(const CompletionPlace& place) {
  const Quotes quotes(place);
  std::vector<CompletionItem> items;
  const auto add = [&](CompletionItem::Kind kind, const KnownValue& value) {
    CompletionItem& item = items.emplace_back();
    item.kind = kind;
    item.label = value.text;
    item.detail = value.detail;
    item.replaced = place.cursor.word;
    item.filter = quotes.Escaped(value.text);
    item.newText = Snippet(place.asSnippets).Write(quotes.Completed(item.filter)).Text();
  };
  const GivenBeside given(place.Document(), place.cursor);
  for (const std::string& word : given.FixedValuesOf(*place.cursor.described))
    add(CompletionItem::Kind::kWord, {word, ""});
  for (const KnownValue& value : KnownValues(place))
    add(CompletionItem::Kind::kName, value);
  return items;
}

}  // namespace tool::lsp
