// The files of modules, as a process on this machine would find them.
#ifndef CHECK_MODULE_FILES_H
#define CHECK_MODULE_FILES_H

#include <string>
#include <vector>

#include "check/declarations.h"
#include "check/installation.h"

namespace tarnmf::check {

struct ModuleFile {
  // Of this machine where there is one and its file is there, else the module's own.
  const ImplementationDeclaration* implementation = nullptr;
  std::string path;                // empty: no file
  std::vector<std::string> tried;  // for all implementations that were looked for, in order
};

ModuleFile FindModuleFile(const LoadPoint& loadpoint, const ModuleDeclaration& module);

}  // namespace tarnmf::check

#endif  // CHECK_MODULE_FILES_H
