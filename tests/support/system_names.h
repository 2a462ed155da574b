// SPDX-License-Identifier: Apache-2.0
// Texts of tests name files and machines as Linux does.
#ifndef TESTS_SUPPORT_SYSTEM_NAMES_H
#define TESTS_SUPPORT_SYSTEM_NAMES_H

#include <string>

namespace tarnmf::test {

// The same text with the names that the machine types and the libraries have where the test runs. On
// Windows "linux-x64/liba.so" becomes "windows-x64/a.dll", and Windows' own machines become Linux's.
std::string InSystemNames(const std::string& text);

// From now on the process is that of a program that manifests call by this name.
void RunAs(const std::string& program);

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_SYSTEM_NAMES_H
