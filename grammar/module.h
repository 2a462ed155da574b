// SPDX-License-Identifier: Apache-2.0
// The elements that declare modules.
#ifndef GRAMMAR_MODULE_H
#define GRAMMAR_MODULE_H

#include "grammar/grammar.h"

namespace tarnmf::grammar {

inline constexpr AttributeT kPreloadAttributes[] = {
    {"by", ValueKind::kKeyword, false, &kPreloadByWords,
     "Which processes load the library ahead. When it is left out, \"svcid\" means service, else "
     "\"name\" means executable; without any of them the condition never holds."},
    {"name", ValueKind::kNonEmptyText, false, nullptr,
     "Name of the program. Needed for executable, refused for anyone."},
    {"svcid", ValueKind::kUniqueId, false, nullptr,
     "The service that the process must be part of. Refused for anyone and client."},
    {"optionid", ValueKind::kUniqueId, false, nullptr, "An option switch that must be on as well."},
};
inline constexpr ConditionT kPreloadConditions[] = {
    {ConditionT::kExcludes, "by=anyone", "name", kBtkMissing},
    {ConditionT::kExcludes, "by=anyone", "svcid", kBtkMissing},
    {ConditionT::kExcludes, "by=client", "svcid", kBtkMissing},
    {ConditionT::kNeeds, "by=executable", "name", kBtkMissing},
};
inline constexpr ElementT kPreload = {
    "preload",
    AttributeForm::kRequired,
    kPreloadAttributes,
    Content::kPreload,
    {},
    kPreloadConditions,
    "A condition under which the process loads the library as soon as its own load point has been "
    "read. One that holds is enough."};

inline constexpr const ElementT* kPlatformModuleChildren[] = {&kPreload};
inline constexpr AttributeT kPlatformModuleAttributes[] = {
    {"machinetype", ValueKind::kNonEmptyText, true, nullptr,
     "The machine type that the file is built for, for example linux-x64."},
    {"name", ValueKind::kNonEmptyText, false, nullptr,
     "Name of the file; by default the module's, which then also says whether it is explicit."},
    {"explicitname", ValueKind::kBoolean, false, nullptr,
     "The name is the file name as it stands."},
    {"path", ValueKind::kText, false, nullptr,
     "Folder of the file; by default the module's, which then also says whether it is forced."},
    {"forcepath", ValueKind::kBoolean, false, nullptr,
     "The path is a folder as it stands, not below the load point."},
    {"resolvepath", ValueKind::kRefused, false, nullptr, "Never admitted."},
    {"apilevel", ValueKind::kDecimal, false, nullptr,
     "API level of the file; by default the module's."},
    {"version", ValueKind::kIgnored, false, nullptr,
     "Admitted, but not read: the version is always 0.0.0.0."},
};
inline constexpr ConditionT kPlatformModuleConditions[] = {
    {ConditionT::kNeeds, "forcepath", "path", kBtkMissing},
    {ConditionT::kNeeds, "explicitname", "name", kBtkMissing},
    {ConditionT::kOneOf, "name explicitname path forcepath apilevel version", nullptr, kBtkMissing},
};
inline constexpr ElementT kPlatformModule = {
    "platformmodule",
    AttributeForm::kRequired,
    kPlatformModuleAttributes,
    Content::kElements,
    kPlatformModuleChildren,
    kPlatformModuleConditions,
    "Another file of the same module, for one machine type. It is used in processes of that type "
    "instead of the module's own; when it cannot be found, the module's own is tried."};

inline constexpr const ElementT* kModuleChildren[] = {&kPreload, &kPlatformModule};
inline constexpr AttributeT kModuleAttributes[] = {
    {"type", ValueKind::kNonEmptyText, false, nullptr,
     "sharedLib, which is the default, executable, or another word. Inside a side of a class only "
     "sharedLib."},
    {"id", ValueKind::kNonEmptyText, true, nullptr,
     "Name of the module among all of its load point. Inside a side of a class it may be left out; "
     "a fresh one is made then."},
    {"name", ValueKind::kNonEmptyText, true, nullptr,
     "Name of the file, without what the platform puts around it."},
    {"explicitname", ValueKind::kBoolean, false, nullptr,
     "The name is the file name as it stands."},
    {"loadpoint", ValueKind::kText, false, nullptr,
     "Path of the load point that holds the file, if it is not the manifest's own. Empty: none, so "
     "the module has no file to look for."},
    {"path", ValueKind::kText, false, nullptr, "Folder of the file below the load point."},
    {"forcepath", ValueKind::kBoolean, false, nullptr,
     "The path is a folder as it stands, not below the load point."},
    {"resolvepath", ValueKind::kRefused, false, nullptr, "Never admitted."},
    {"description", ValueKind::kIgnored, false, nullptr, "For readers."},
    {"apilevel", ValueKind::kDecimal, false, nullptr, "API level of the file."},
    {"version", ValueKind::kIgnored, false, nullptr,
     "Admitted, but not read: the file is always version 1.0.0.0, that of a module inside a side "
     "0.0.0.0."},
    {"private", ValueKind::kBoolean, false, nullptr, "For use inside the installation only."},
    {"abits", ValueKind::kAddressBits, false, nullptr, "Address bits of the file."},
};
inline constexpr ElementT kModule = {
    "module",
    AttributeForm::kRequired,
    kModuleAttributes,
    Content::kElements,
    kModuleChildren,
    {},
    "A file that can be loaded or started: a shared library, unless its type says otherwise."};

inline constexpr const ElementT* kModulesChildren[] = {&kModule};
inline constexpr ElementT kModules = {
    "modules", AttributeForm::kNone,    {}, Content::kElements, kModulesChildren,
    {},        "Any number of modules."};

}  // namespace tarnmf::grammar

#endif  // GRAMMAR_MODULE_H
