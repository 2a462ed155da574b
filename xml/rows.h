// SPDX-License-Identifier: Apache-2.0
// Makes tag tables from the grammar. A table names its reader and its element once; a row names an
// attribute, the field that it fills and the bit of the reader that stands for it. How the value is
// read follows from the kind of value that the grammar says and from the type of the field:
//
//   constexpr auto kPreloadAttributes = kAttributesOf<
//       ModuleReader, grammar::kPreload,
//       Row<"by", &MfPreloadInfoT::by, ModuleReader::kSeenBy>,
//       ...>;
//
// The rows stand in the order of the grammar, one for each attribute or child element: a name that
// is wrong, missing or too many does not compile.
//
// A field is named by a pointer to a data member of its record, or by a function from the record to
// the field where the member alone does not say it.
#ifndef XML_ROWS_H
#define XML_ROWS_H

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "grammar/grammar.h"
#include "xml/dispatch.h"
#include "xml/families.h"

namespace tarnmf {

// A name as a template argument.
template <std::size_t Size>
struct RowName {
  consteval RowName(const char (&name)[Size]) { std::copy_n(name, Size, text); }
  constexpr std::string_view Text() const { return {text, Size - 1}; }
  char text[Size] = {};
};

// The handler of an attribute: refuses it when it has been read before (kBtkDuplicate), reads it
// with Family, and marks it as read when that went well.
template <class Reader, class Family, std::uint32_t SeenBit>
BtkErrorT ReadOnce(void* context, const btkWChar* text) {
  Reader& reader = *static_cast<Reader*>(context);
  if (Given(reader, SeenBit)) return kBtkDuplicate;
  if (BtkErrorT e = Family::Read(reader, text)) return e;
  reader.flags |= SeenBit;
  return kBtkOk;
}

// The handler of an attribute whose value is not read.
template <grammar::ValueKind Kind>
BtkErrorT LeaveUnread(void*, const btkWChar*) {
  static_assert(Kind == grammar::ValueKind::kIgnored || Kind == grammar::ValueKind::kRefused);
  return Kind == grammar::ValueKind::kRefused ? kBtkRefused : kBtkOk;
}

// The handler of an attribute that may be given again.
template <class Reader, class Family>
BtkErrorT ReadAgain(void* context, const btkWChar* text) {
  return Family::Read(*static_cast<Reader*>(context), text);
}

// The handler of a child element.
template <class Reader, BtkErrorT (*Read)(Reader&, const Element&)>
BtkErrorT ReadChild(void* context, const Element& element) {
  return Read(*static_cast<Reader*>(context), element);
}

template <const grammar::ElementT& Described, std::size_t Index>
inline constexpr grammar::ValueKind kKindOf = Described.attributes[Index].kind;

// ---- The rows of an attribute table ------------------------------------------------------------
// Each has the name of its attribute and kHandler<Reader, Described, Index>, the handler for the
// Index-th attribute of the element.

// The family that follows from the kind of value and the type of the field.
template <RowName Name, auto Field, std::uint32_t SeenBit>
struct Row {
  static constexpr std::string_view kName = Name.Text();

  template <class Reader, const grammar::ElementT& Described, std::size_t Index>
  static constexpr auto kHandler =
      &ReadOnce<Reader,
                FamilyOf<kKindOf<Described, Index>, Described.attributes[Index].words, Field>,
                SeenBit>;
};

// A boolean that stands as one bit among others.
template <RowName Name, auto Flags, std::uint32_t Bit, std::uint32_t SeenBit>
struct FlagRow {
  static constexpr std::string_view kName = Name.Text();

  template <class Reader, const grammar::ElementT& Described, std::size_t Index>
  static constexpr auto kHandler =
      &ReadOnce<Reader, Flag<kKindOf<Described, Index>, Flags, Bit>, SeenBit>;
};

// A text that its record may also borrow: the bit says that it owns this one.
template <RowName Name, auto Field, auto Flags, std::uint32_t OwnedBit, std::uint32_t SeenBit>
struct OwnedRow {
  static constexpr std::string_view kName = Name.Text();

  template <class Reader, const grammar::ElementT& Described, std::size_t Index>
  static constexpr auto kHandler =
      &ReadOnce<Reader, Owned<FamilyOf<kKindOf<Described, Index>, nullptr, Field>, Flags, OwnedBit>,
                SeenBit>;
};

// A family of its own.
template <RowName Name, class Family, std::uint32_t SeenBit>
struct SpecialRow {
  static constexpr std::string_view kName = Name.Text();

  template <class Reader, const grammar::ElementT&, std::size_t>
  static constexpr auto kHandler = &ReadOnce<Reader, Family, SeenBit>;
};

// An attribute that may be given again.
template <RowName Name, class Family>
struct RepeatableRow {
  static constexpr std::string_view kName = Name.Text();

  template <class Reader, const grammar::ElementT&, std::size_t>
  static constexpr auto kHandler = &ReadAgain<Reader, Family>;
};

// An attribute whose value is not read: it is ignored or refused.
template <RowName Name>
struct UnreadRow {
  static constexpr std::string_view kName = Name.Text();

  template <class Reader, const grammar::ElementT& Described, std::size_t Index>
  static constexpr auto kHandler = &LeaveUnread<kKindOf<Described, Index>>;
};

// ---- The rows of a table of child elements -----------------------------------------------------

template <RowName Name, auto Read>
struct Child {
  static constexpr std::string_view kName = Name.Text();

  template <class Reader>
  static constexpr auto kHandler = &ReadChild<Reader, Read>;
};

// ---- Tables ------------------------------------------------------------------------------------

template <class Reader, const grammar::ElementT& Described, class... Rows>
class AttributeTableRows {
  static_assert(sizeof...(Rows) == Described.attributes.size(), "one row for each attribute");

  template <std::size_t... Index>
  static consteval auto Make(std::index_sequence<Index...>) {
    static_assert(((Rows::kName == Described.attributes[Index].name) && ...),
                  "rows are named and ordered as in the grammar");
    return std::array{AttributeEntry{Described.attributes[Index].name,
                                     Rows::template kHandler<Reader, Described, Index>}...};
  }

 public:
  static constexpr auto kRows = Make(std::index_sequence_for<Rows...>());
};
template <class Reader, const grammar::ElementT& Described, class... Rows>
inline constexpr AttributeTable<Reader> kAttributesOf{
    AttributeTableRows<Reader, Described, Rows...>::kRows};

template <class Reader, const grammar::ElementT& Described, class... Rows>
class ChildRows {
  static_assert(sizeof...(Rows) == Described.children.size(), "one row for each child element");

  template <std::size_t... Index>
  static consteval auto Make(std::index_sequence<Index...>) {
    static_assert(((Rows::kName == Described.children[Index]->name) && ...),
                  "rows are named and ordered as in the grammar");
    return std::array{
        MfTagEntryT{Described.children[Index]->name, Rows::template kHandler<Reader>}...};
  }

 public:
  static constexpr auto kRows = Make(std::index_sequence_for<Rows...>());
};
template <class Reader, const grammar::ElementT& Described, class... Rows>
inline constexpr ElementTable<Reader> kChildrenOf{ChildRows<Reader, Described, Rows...>::kRows};

}  // namespace tarnmf

#endif  // XML_ROWS_H
