// SPDX-License-Identifier: Apache-2.0
#include "xml/readers.h"

#include <new>

namespace tarnmf {

liMfReader::ModuleMfReader* liMfReader::CreateModuleMfReader(std::int32_t /*version*/,
                                                             ModuleList* moduleList) {
  return new (std::nothrow) ModuleMfReader(moduleList);
}

liMfReader::ClassMfReader* liMfReader::CreateClassMfReader(std::int32_t /*version*/,
                                                           ClassList* classList,
                                                           ModuleList* moduleList) {
  return new (std::nothrow) ClassMfReader(classList, moduleList);
}

liMfReader::RunnableMfReader* liMfReader::CreateRunnableMfReader(std::int32_t /*version*/,
                                                                 RunnableList* runnableList,
                                                                 ModuleList* moduleList) {
  return new (std::nothrow) RunnableMfReader(runnableList, moduleList);
}

liMfReader::MfReader* liMfReader::CreateMfReader(std::int32_t documentVersion, ClassList* classList,
                                                 RunnableList* runnableList,
                                                 ModuleList* moduleList) {
  return new (std::nothrow) MfReader(documentVersion, classList, runnableList, moduleList);
}

liMfReader::ModuleMfReader* liMfReader::MfReader::CreateModuleMfReader(std::int32_t /*version*/,
                                                                       ModuleList* moduleList) {
  return new (std::nothrow) ModuleMfReader(moduleList);
}

liMfReader::ClassMfReader* liMfReader::MfReader::CreateClassMfReader(std::int32_t /*version*/,
                                                                     ClassList* classList,
                                                                     ModuleList* moduleList) {
  return new (std::nothrow) ClassMfReader(classList, moduleList);
}

liMfReader::RunnableMfReader* liMfReader::MfReader::CreateRunnableMfReader(
    std::int32_t /*version*/, RunnableList* runnableList, ModuleList* moduleList) {
  return new (std::nothrow) RunnableMfReader(runnableList, moduleList);
}

liMfReader::ModuleReader* liMfReader::ModuleMfReader::CreateModuleReader(ModuleList* moduleList) {
  return new (std::nothrow) ModuleReader(moduleList);
}

liMfReader::ModuleReader* liMfReader::ClassReader::CreateModuleReader(ModuleList* moduleList) {
  return new (std::nothrow) ModuleReader(moduleList);
}

liMfReader::ClassReader* liMfReader::ClassMfReader::CreateClassReader(ClassList* classList,
                                                                      ModuleList* moduleList) {
  return new (std::nothrow) ClassReader(classList, moduleList);
}

liMfReader::RunnableReader* liMfReader::RunnableMfReader::CreateRunnableReader(
    RunnableList* runnableList, ModuleList* moduleList) {
  return new (std::nothrow) RunnableReader(runnableList, moduleList);
}

}  // namespace tarnmf
