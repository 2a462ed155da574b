// SPDX-License-Identifier: Apache-2.0
/// @file
/// The platform's 16-byte unique ids. The platform also has a class btkUniId, a C++ wrapper of them
/// with constructors and operators; this library uses the record and the functions only, so the
/// class is not declared. Everything here may be called on any thread.
#ifndef PLATFORM_UNIQUE_ID_H
#define PLATFORM_UNIQUE_ID_H

#include "platform/errors.h"
#include "platform/types.h"

/// The bytes stand in the order in which the text forms write them. A value-initialised id is the
/// null id.
struct UniIdT {
  std::uint8_t bytes[16];  ///< the first one is written first
};

/// The null id stands for "none".
inline constexpr UniIdT kBtkNullUniId{};

/// The text forms: 36 characters (8-4-4-4-12 digits) and 32 hexadecimal digits. Either letter case
/// is read; lower case is written.
enum btkUniIdFormT : int { kBtkUniIdDashed = 0, kBtkUniIdPlain = 2 };
/// Characters of the dashed form, without a NUL.
inline constexpr std::size_t kBtkUniIdDashedLength = 36;
/// Characters of the plain form, without a NUL.
inline constexpr std::size_t kBtkUniIdPlainLength = 32;

/// The kind of id that btkUniIdGen14 makes from random bits.
inline constexpr int kBtkUniIdRandom = 4;

/// Compares ids of sorted arrays: negative, 0 exactly for equal ones, positive. The order is the
/// platform's own; the host layer's is that of the bytes.
BTK_API int btkUniIdCompare(const UniIdT* left, const UniIdT* right);
/// True when both have the same bytes.
BTK_API bool btkUniIdIsEqual(const UniIdT* left, const UniIdT* right);
/// True for the null id.
inline bool btkUniIdIsNull(const UniIdT& id) {
  return btkUniIdIsEqual(&id, &kBtkNullUniId);
}

/// Parses an id at the start of `text`. With `end` not null the id may be followed by more text and
/// `*end` receives the place after it; otherwise the id must be the whole text. `form` is a
/// btkUniIdFormT. Codes: kBtkOk; kBtkMalformed, `*out` stays as it was.
BTK_API BtkErrorT btkUniIdParse(UniIdT* out, const char* text, std::size_t length, const char** end,
                                int form);

/// Writes the text form of an id. Codes: kBtkOk; kBtkTooLong when form and NUL do not fit into
/// `size`.
BTK_API BtkErrorT btkUniIdFormat(char* buffer, std::size_t size, std::size_t* length,
                                 const UniIdT* id, int form, int reserved);

/// Makes a fresh id of `kind`; nobody should take it for a secret. Codes: kBtkOk;
/// kBtkNotReady when the system gives no random bits.
BTK_API BtkErrorT btkUniIdGen14(UniIdT* out, int kind, int reserved);

/// The id that belongs to the ordered pair of `left` and `right`; never the null id. Codes: kBtkOk;
/// kBtkNotReady when the system cannot compute it.
BTK_API BtkErrorT btkUniIdCombine(UniIdT* out, const UniIdT* left, const UniIdT* right);

#endif  // PLATFORM_UNIQUE_ID_H
