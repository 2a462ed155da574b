// SPDX-License-Identifier: Apache-2.0
// The files of modules, as a process on this machine would find them.
#ifndef CHECK_MODULE_FILES_H
#define CHECK_MODULE_FILES_H

#include <string>
#include <vector>

#include "check/declarations.h"
#include "check/installation.h"
#include "platform/host/embedded_dlm.h"

namespace tarnmf::check {

// The path of the load point that a module's files are looked for in; empty: none.
std::string LoadPointPathOf(const ModuleDeclaration& module, const LoadPoint& loadpoint);

// The one for this machine's type, else the module's own.
const ImplementationDeclaration& SelectedImplementation(const ModuleDeclaration& module);

struct FileSearch {
  std::string file;                // empty: there is none
  std::vector<std::string> tried;  // in order
  btkHostRefusalT refusal = kBtkHostAdmitted;
  std::string reason;  // in words; empty unless refused
};

// Looks for the file of an implementation as if it had this name and path.
FileSearch SearchFile(const LoadPoint& loadpoint, const ModuleDeclaration& module,
                      const ImplementationDeclaration& implementation, const std::string& name,
                      const std::string& path);

struct ModuleFile {
  // The selected one, or the module's own in its place where that has no file.
  const ImplementationDeclaration* implementation = nullptr;
  FileSearch search;
};

ModuleFile FindModuleFile(const LoadPoint& loadpoint, const ModuleDeclaration& module);

}  // namespace tarnmf::check

#endif  // CHECK_MODULE_FILES_H
