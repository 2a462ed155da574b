// SPDX-License-Identifier: Apache-2.0
// How a function of the platform is stood in front of: the program's own one comes before that of the
// shared library.
#ifndef TESTS_FAULTS_POSIX_INTERPOSING_H
#define TESTS_FAULTS_POSIX_INTERPOSING_H

#include <dlfcn.h>

// What the compiler makes of wide characters and of sizes in the names of functions.
#define WIDE "Ds"
#define SIZE "m"

template <class Function>
Function* NextOf(Function* /*own*/, const char* symbol) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, symbol));
}

// Declares a function that takes the place of one.
#define INTERPOSED(result, symbol, own, parameters) result own parameters asm(symbol);
// The one whose place it takes.
#define REAL_ONE(own, symbol)                      \
  ([] {                                            \
    static const auto real = NextOf(&own, symbol); \
    return real;                                   \
  }())

// Functions that are called through the table of a class must be seen from outside.
#define INTERPOSED_IN_TABLES(...) \
  _Pragma("GCC visibility push(default)") __VA_ARGS__ _Pragma("GCC visibility pop")

#endif  // TESTS_FAULTS_POSIX_INTERPOSING_H
