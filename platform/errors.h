// SPDX-License-Identifier: Apache-2.0
/// @file
/// The platform's error enumeration. 0 is success; every other number is permanent.
#ifndef PLATFORM_ERRORS_H
#define PLATFORM_ERRORS_H

#include <cstdint>

/// A BtkErrorT may hold numbers that have no name here: codes of platform calls travel unchanged.
/// Whoever calls an operation that returns one looks at it.
enum [[nodiscard]] BtkErrorT : std::int32_t{
    kBtkOk = 0,
    kBtkMissing = 1,        ///< something required is missing, cannot be opened or is not available
    kBtkNotFound = 2,       ///< what was asked for does not exist
    kBtkNotReady = 33,      ///< a platform service has not been initialised
    kBtkRefused = 34,       ///< never admitted, whatever its value
    kBtkNullArgument = 35,  ///< a required pointer is null
    kBtkForbidden = 39,     ///< a combination that is not allowed
    kBtkUnexpected = 42,    ///< an unknown or misplaced item, or a batch that fails validation
    kBtkOutOfRange = 66,    ///< a 16-bit number outside 0 to 32767
    kBtkTooLong = 68,       ///< the result does not fit into the buffer
    kBtkBadText = 71,       ///< text that is not valid in its encoding
    kBtkNoMemory = 112,     ///< out of memory
    kBtkNotSharedLib = 154,  ///< a module of a class side that is not a shared library
    kBtkStarting = 162,      ///< initialisation is under way
    kBtkDuplicate = 261,     ///< given twice, or present already
    kBtkWrongVersion = 416,  ///< a document version other than the one supported
    kBtkMalformed = 432,     ///< a malformed or empty value, no document, a syntax error
};

#endif  // PLATFORM_ERRORS_H
