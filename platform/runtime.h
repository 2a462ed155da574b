// SPDX-License-Identifier: Apache-2.0
/// @file
/// Runtime core: character and comparison helpers, atomic counters, clean-up registration and the
/// queries about the running process. Everything here may be called on any thread.
#ifndef PLATFORM_RUNTIME_H
#define PLATFORM_RUNTIME_H

#include "platform/errors.h"
#include "platform/types.h"

/// Compares ignoring the case of ASCII letters: negative, 0 when equal, positive.
BTK_API int btk_strcasecmp(const char* left, const char* right);

/// True for every white-space character of Unicode's basic plane.
BTK_API bool btk_iswspace(btkWChar character);

/// The value of an environment variable, or null. Valid until the environment changes.
BTK_API const char* btk_getenv(const char* name);

/// Adds 1 atomically; returns the new value.
BTK_API std::int32_t btkAoInc32(std::int32_t* counter);
/// Takes 1 away atomically; returns the new value.
BTK_API std::int32_t btkAoDec32(std::int32_t* counter);

/// Compares strings of sorted arrays. Takes the addresses of the two and returns negative, 0 exactly
/// for equal ones, or positive; a null string sorts first. The order is the platform's own; the host
/// layer's is that of the bytes.
BTK_API int CmpCase_cStrings_Safe(const char* const* left, const char* const* right);
/// Whether strings that are not null stand to each other as strcmp has them.
inline constexpr bool kBtkCmpCaseIsOfBytes = true;
/// The same for wide paths; one trailing separator is ignored.
BTK_API int Cmp_cWPaths_Safe(const btkWChar* const* left, const btkWChar* const* right);

/// A function whose address identifies the library that it belongs to.
using btkCleanupT = void (*)();

/// Registers `callback` to run when the platform cleans up the library that `anchor` identifies.
/// Returns 1 when the library must put btkDlmExitNotify(anchor) on its own exit list, else 0.
BTK_API int btkPushCleanupCbLow(btkCleanupT anchor, btkCleanupT callback, int reserved);

/// Tells the dynamic-library manager that the library identified by `anchor` is exiting: its
/// clean-up callbacks run, the last registered first.
BTK_API void btkDlmExitNotify(btkCleanupT anchor);

/// Writes the path of the process's load point into a buffer of `units` elements. Returns its
/// length without the NUL; 0 or (size_t)-1 when the process has none or it does not fit.
BTK_API std::size_t btkGetLoadpointW(btkWChar* buffer, std::size_t units);

/// Writes the full path of the running executable into a buffer of `units` elements. Codes: kBtkOk;
/// kBtkTooLong when it does not fit with its NUL.
BTK_API BtkErrorT btkDlmGetCurProcessImagePathW(btkWChar* buffer, std::size_t units);

/// Writes the file name that an executable called `name` has on this platform. Codes: kBtkOk;
/// kBtkTooLong when it does not fit with its NUL.
BTK_API BtkErrorT btkGetExecutableNameW(btkWChar* buffer, std::size_t units, const void* reserved,
                                        const btkWChar* name);

/// The machine-type text of the running process. It lives as long as the process.
BTK_API const char* btkGetVexMachine();
/// For the empty text, the machine-type text of the platform's other build, the 32-bit one. It
/// lives as long as the process.
BTK_API const char* btkGetVexMachine3264(const char* machine);

#endif  // PLATFORM_RUNTIME_H
