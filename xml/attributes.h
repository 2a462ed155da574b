// What the rows of attribute tables are made of: a value family, the field that it fills, and the
// bit of the reader that stands for the attribute.
//
// A field is named by a pointer to a data member of its record, or by a function from the record to
// the field where the member alone does not say it.
#ifndef XML_ATTRIBUTES_H
#define XML_ATTRIBUTES_H

#include <functional>
#include <type_traits>

#include "xml/dispatch.h"
#include "xml/readers.h"
#include "xml/value_readers.h"

namespace tarnmf {

// The handler of an attribute: refuses it when it has been read before (261), reads it with Family,
// and marks it as read when that went well.
template <class Reader, class Family, std::uint32_t SeenBit>
BtkErrorT Attribute(void* context, DOMNode* node) {
  Reader& reader = *static_cast<Reader*>(context);
  if ((reader.flags & SeenBit) != 0) return kBtkDuplicate;
  if (BtkErrorT e = Family::Read(reader, AttributeText(*node))) return e;
  reader.flags |= SeenBit;
  return kBtkOk;
}

// Handlers of attributes that are not read.
inline BtkErrorT IgnoredAttribute(void*, DOMNode*) {
  return kBtkOk;
}
inline BtkErrorT RefusedAttribute(void*, DOMNode*) {
  return kBtkRefused;
}

template <class Field>
struct FieldRecord;
template <class Record, class Value>
struct FieldRecord<Value Record::*> {
  using Type = Record;
};
template <class Record, class Value>
struct FieldRecord<Value& (*)(Record&)> {
  using Type = Record;
};

// The field of the record that `reader` is filling.
template <auto Field, class Reader>
auto& FieldOf(Reader& reader) {
  using Record = typename FieldRecord<decltype(Field)>::Type;
  return std::invoke(Field, reader.Target(RecordTag<Record>()));
}

// ---- Families
// ------------------------------------------------------------------------------------

template <const KeywordTableT& Table, auto Field>
struct Keyword {
  template <class Reader>
  static BtkErrorT Read(Reader& reader, const XMLCh* text) {
    std::int32_t number = 0;
    if (BtkErrorT e = ReadKeyword(text, Table, number)) return e;
    auto& field = FieldOf<Field>(reader);
    field = static_cast<std::remove_reference_t<decltype(field)>>(number);
    return kBtkOk;
  }
};

// A value that is read straight into its field.
template <auto ReadValue, auto Field>
struct Direct {
  template <class Reader>
  static BtkErrorT Read(Reader& reader, const XMLCh* text) {
    return ReadValue(text, FieldOf<Field>(reader));
  }
};
template <auto Field>
using Boolean = Direct<&ReadBoolean, Field>;
template <auto Field>
using Decimal = Direct<&ReadDecimal, Field>;
template <auto Field>
using UniqueId = Direct<&ReadUniqueId, Field>;

// A boolean that stands as one bit among others.
template <auto Flags, std::uint32_t Bit>
struct Flag {
  template <class Reader>
  static BtkErrorT Read(Reader& reader, const XMLCh* text) {
    bool value = false;
    if (BtkErrorT e = ReadBoolean(text, value)) return e;
    if (value) FieldOf<Flags>(reader) |= Bit;
    return kBtkOk;
  }
};

template <auto Field>
struct Decimal16 {
  template <class Reader>
  static BtkErrorT Read(Reader& reader, const XMLCh* text) {
    std::int16_t number = 0;
    if (BtkErrorT e = ReadDecimal16(text, number)) return e;
    auto& field = FieldOf<Field>(reader);
    field = static_cast<std::remove_reference_t<decltype(field)>>(number);
    return kBtkOk;
  }
};

enum class EmptyText { kAccepted, kRefused };

// A copy of the text, which the field owns.
template <class Text, BtkErrorT (*ReadText)(const XMLCh*, Text&), auto Field, EmptyText Empty>
struct OwnText {
  template <class Reader>
  static BtkErrorT Read(Reader& reader, const XMLCh* text) {
    Text value;
    if (BtkErrorT e = ReadText(text, value)) return e;
    if (Empty == EmptyText::kRefused && *value == 0) return kBtkMalformed;
    FieldOf<Field>(reader) = value.release();
    return kBtkOk;
  }
};
template <auto Field, EmptyText Empty = EmptyText::kAccepted>
using Utf8 = OwnText<Utf8Text, ReadUtf8, Field, Empty>;
template <auto Field, EmptyText Empty = EmptyText::kAccepted>
using Wide = OwnText<WideText, ReadWide, Field, Empty>;

// A wide text that its record may also borrow: the bit says that it owns this one.
template <class Text, auto Flags, std::uint32_t OwnedBit>
struct Owned {
  template <class Reader>
  static BtkErrorT Read(Reader& reader, const XMLCh* text) {
    if (BtkErrorT e = Text::Read(reader, text)) return e;
    FieldOf<Flags>(reader) |= OwnedBit;
    return kBtkOk;
  }
};

}  // namespace tarnmf

#endif  // XML_ATTRIBUTES_H
