// SPDX-License-Identifier: Apache-2.0
// Names and ids that are declared in the load points of a command line.
#ifndef TOOLS_TARNMF_DECLARED_NAMES_H
#define TOOLS_TARNMF_DECLARED_NAMES_H

#include <vector>

#include "tools/tarnmf/argument_completion.h"

namespace tool {

// They read the manifests of the directories that the line gives, and neither load nor register
// anything. What is no directory, or cannot be read, declares nothing.
std::vector<Candidate> DeclaredClasses(const CommandLine& line);   // common names
std::vector<Candidate> DeclaredModules(const CommandLine& line);   // ids
std::vector<Candidate> DeclaredServices(const CommandLine& line);  // ids
std::vector<Candidate> DeclaredOptions(const CommandLine& line);   // ids of option switches
std::vector<Candidate> DeclaredScopes(const CommandLine& line);    // ids

}  // namespace tool

#endif  // TOOLS_TARNMF_DECLARED_NAMES_H
