// SPDX-License-Identifier: Apache-2.0
// Manifest documents of tests: written short, and those of the case files.
#ifndef TESTS_SUPPORT_DOCUMENTS_H
#define TESTS_SUPPORT_DOCUMENTS_H

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/case_file.h"

namespace tarnmf::test {

// "$1" to "$9" stand for the ids #1 to #9.
std::string WithIds(std::string text);

// The content below the root of a mixed document.
std::string InRoot(const std::string& content);

// The text itself where it is a document already, else with ids and below the root of a mixed one.
std::string DocumentOf(const std::string& text);

// The cases of a file, their inputs as complete documents. The inputs of documents.cases are whole;
// those of every other file are the content of a mixed document.
std::vector<FileCase> ReadDocumentCaseFile(const std::filesystem::path& file);

// The cases of all "*.cases" files of a folder.
std::vector<FileCase> ReadDocumentCases(const std::filesystem::path& folder);

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_DOCUMENTS_H
