// SPDX-License-Identifier: Apache-2.0
// The families of attribute values: each reads a text into a field of the record at hand.
#ifndef XML_FAMILIES_H
#define XML_FAMILIES_H

#include <functional>
#include <type_traits>

#include "grammar/grammar.h"
#include "xml/readers.h"
#include "xml/values.h"

namespace tarnmf {

template <class Field>
struct FieldTraits;
template <class RecordType, class ValueType>
struct FieldTraits<ValueType RecordType::*> {
  using Record = RecordType;
  using Value = ValueType;
};
template <class RecordType, class ValueType>
struct FieldTraits<ValueType& (*)(RecordType&)> {
  using Record = RecordType;
  using Value = ValueType;
};

// The field of the record that `reader` is filling.
template <auto Field, class Reader>
auto& FieldOf(Reader& reader) {
  using Record = typename FieldTraits<decltype(Field)>::Record;
  return std::invoke(Field, reader.Target(RecordTag<Record>()));
}

template <const grammar::Words& Words, auto Field>
struct Keyword {
  template <class Reader>
  static BtkErrorT Read(Reader& reader, const btkWChar* text) {
    std::int32_t number = 0;
    if (BtkErrorT e = ReadKeyword(text, Words, number)) return e;
    auto& field = FieldOf<Field>(reader);
    field = static_cast<std::remove_reference_t<decltype(field)>>(number);
    return kBtkOk;
  }
};

// A value that is read straight into its field.
template <auto ReadValue, auto Field>
struct Direct {
  template <class Reader>
  static BtkErrorT Read(Reader& reader, const btkWChar* text) {
    return ReadValue(text, FieldOf<Field>(reader));
  }
};

template <grammar::ValueKind Kind, auto Flags, std::uint32_t Bit>
struct Flag {
  static_assert(Kind == grammar::ValueKind::kBoolean);

  template <class Reader>
  static BtkErrorT Read(Reader& reader, const btkWChar* text) {
    bool value = false;
    if (BtkErrorT e = ReadBoolean(text, value)) return e;
    if (value) FieldOf<Flags>(reader) |= Bit;
    return kBtkOk;
  }
};

template <auto Field>
struct Decimal16 {
  template <class Reader>
  static BtkErrorT Read(Reader& reader, const btkWChar* text) {
    std::int16_t number = 0;
    if (BtkErrorT e = ReadDecimal16(text, number)) return e;
    auto& field = FieldOf<Field>(reader);
    field = static_cast<std::remove_reference_t<decltype(field)>>(number);
    return kBtkOk;
  }
};

enum class EmptyText { kAccepted, kRefused };

// A copy of the text, which the field owns.
template <auto Field, EmptyText Empty>
struct OwnText {
  static constexpr bool kIsWide =
      std::is_same_v<typename FieldTraits<decltype(Field)>::Value, btkWChar*>;

  template <class Reader>
  static BtkErrorT Read(Reader& reader, const btkWChar* text) {
    std::conditional_t<kIsWide, WideText, Utf8Text> value;
    if (BtkErrorT e = ReadText(text, value)) return e;
    if (Empty == EmptyText::kRefused && *value == 0) return kBtkMalformed;
    FieldOf<Field>(reader) = value.release();
    return kBtkOk;
  }
};

// A text that its record may also borrow: the bit says that it owns this one.
template <class Text, auto Flags, std::uint32_t OwnedBit>
struct Owned {
  template <class Reader>
  static BtkErrorT Read(Reader& reader, const btkWChar* text) {
    if (BtkErrorT e = Text::Read(reader, text)) return e;
    FieldOf<Flags>(reader) |= OwnedBit;
    return kBtkOk;
  }
};

// ---- The family that goes with a kind of value -------------------------------------------------

template <grammar::ValueKind Kind, const grammar::Words* Words, auto Field>
struct FamilyOfKind;
template <const grammar::Words* Words, auto Field>
struct FamilyOfKind<grammar::ValueKind::kKeyword, Words, Field> {
  using Type = Keyword<*Words, Field>;
};
template <auto Field>
struct FamilyOfKind<grammar::ValueKind::kBoolean, nullptr, Field> {
  using Type = Direct<&ReadBoolean, Field>;
};
template <auto Field>
struct FamilyOfKind<grammar::ValueKind::kDecimal, nullptr, Field> {
  using Type = Direct<&ReadDecimal, Field>;
};
template <auto Field>
struct FamilyOfKind<grammar::ValueKind::kDecimal16, nullptr, Field> {
  using Type = Decimal16<Field>;
};
template <auto Field>
struct FamilyOfKind<grammar::ValueKind::kUniqueId, nullptr, Field> {
  using Type = Direct<&ReadUniqueId, Field>;
};
template <auto Field>
struct FamilyOfKind<grammar::ValueKind::kText, nullptr, Field> {
  using Type = OwnText<Field, EmptyText::kAccepted>;
};
template <auto Field>
struct FamilyOfKind<grammar::ValueKind::kNonEmptyText, nullptr, Field> {
  using Type = OwnText<Field, EmptyText::kRefused>;
};

// Of the kinds that are read in more than one way, those that are left have families of their own.
template <grammar::ValueKind Kind, const grammar::Words* Words, auto Field>
using FamilyOf = typename FamilyOfKind<Kind, Words, Field>::Type;

}  // namespace tarnmf

#endif  // XML_FAMILIES_H
