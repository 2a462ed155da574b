// SPDX-License-Identifier: Apache-2.0
// How a function of the platform is stood in front of: the linker is told to give every reference to
// it another name.
#ifndef TESTS_FAULTS_WINDOWS_INTERPOSING_H
#define TESTS_FAULTS_WINDOWS_INTERPOSING_H

// What the compiler makes of wide characters and of sizes in the names of functions.
#define WIDE "w"
#define SIZE "y"

// Declares a function that takes the place of one.
#define INTERPOSED(result, symbol, own, parameters) \
  result own parameters asm("__wrap_" symbol);      \
  result own##Real parameters asm("__real_" symbol);
// The one whose place it takes.
#define REAL_ONE(own, symbol) own##Real

// Tables of classes are made where their functions are, which is no reference to them.
#define INTERPOSED_IN_TABLES(...)

#endif  // TESTS_FAULTS_WINDOWS_INTERPOSING_H
