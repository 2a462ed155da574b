// SPDX-License-Identifier: Apache-2.0
// The elements that declare runnables.
#ifndef GRAMMAR_RUNNABLE_H
#define GRAMMAR_RUNNABLE_H

#include "grammar/grammar.h"

namespace tarnmf::grammar {

// ---- Arguments and environment -----------------------------------------------------------------

inline constexpr AttributeT kArgAttributes[] = {
    {"precomposed", ValueKind::kBoolean, false, nullptr,
     "The whole text is one argument, quotes and blanks included."},
};
inline constexpr ElementT kArg = {"arg",
                                  AttributeForm::kOptional,
                                  kArgAttributes,
                                  Content::kArgument,
                                  {},
                                  {},
                                  "Arguments, separated by white space. A single or double quote "
                                  "at the start of an argument lets "
                                  "it run up to the same quote."};

inline constexpr const ElementT* kArgsChildren[] = {&kArg};
inline constexpr ElementT kArgs = {
    "args",
    AttributeForm::kIgnored,
    {},
    Content::kElements,
    kArgsChildren,
    {},
    "The arguments that the program is started with. The last one of a role counts."};

inline constexpr AttributeT kVariable = {"name", ValueKind::kText, true, nullptr,
                                         "Name of the variable."};
inline constexpr AttributeT kValueCommandAttributes[] = {
    kVariable,
    {"restrictto", ValueKind::kKeyword, false, &kRestrictToWords,
     "create: only if the variable is not there; override: only if it is."},
};
inline constexpr AttributeT kUnsetAttributes[] = {kVariable};
inline constexpr ElementT kSet = {
    "set", AttributeForm::kRequired,     kValueCommandAttributes, Content::kValue, {},
    {},    "Gives the variable a value."};
inline constexpr ElementT kUnset = {
    "unset", AttributeForm::kRequired,  kUnsetAttributes, Content::kNothing, {},
    {},      "Takes the variable away."};
inline constexpr ElementT kAppend = {"append",
                                     AttributeForm::kRequired,
                                     kValueCommandAttributes,
                                     Content::kValue,
                                     {},
                                     {},
                                     "Puts the text after the variable's value."};
inline constexpr ElementT kPrepend = {"prepend",
                                      AttributeForm::kRequired,
                                      kValueCommandAttributes,
                                      Content::kValue,
                                      {},
                                      {},
                                      "Puts the text before the variable's value."};

inline constexpr const ElementT* kEnvChildren[] = {&kSet, &kUnset, &kAppend, &kPrepend};
inline constexpr AttributeT kEnvAttributes[] = {
    {"initstate", ValueKind::kKeyword, false, &kInitStateWords,
     "The environment that the role starts from."},
};
inline constexpr ElementT kEnv = {
    "env",
    AttributeForm::kOptional,
    kEnvAttributes,
    Content::kElements,
    kEnvChildren,
    {},
    "What the program's environment is changed by, in this order. The last one of a role counts."};

// ---- Roles -------------------------------------------------------------------------------------

inline constexpr const ElementT* kRoleChildren[] = {&kArgs, &kEnv};
inline constexpr AttributeT kLauncherOfRole = {"launcher", ValueKind::kText, false, nullptr,
                                               "Name id of the launcher that starts it."};

inline constexpr AttributeT kServiceAttributes[] = {
    {"model", ValueKind::kKeyword, false, &kModelWords,
     "Whether the service is only started or also managed, which is the default."},
    {"id", ValueKind::kUniqueId, true, nullptr, "Id of the service."},
    {"commonname", ValueKind::kText, false, nullptr, "Name of the service."},
    {"version", ValueKind::kDecimal, false, nullptr,
     "Version of the service: 16 bits of it are used, and from 16384 on it wraps."},
    kLauncherOfRole,
    {"csim", ValueKind::kKeyword, false, &kCsimWords,
     "Whether the service hosts classes; opaque by default."},
    {"managedtype", ValueKind::kKeyword, false, &kManagedTypeWords,
     "Who manages its life; generic by default. A container is always alwaysNew and classBased."},
    {"multiplicity", ValueKind::kKeyword, false, &kMultiplicityWords,
     "How many instances there are; singleInstance by default."},
    {"recover", ValueKind::kBoolean, false, nullptr, "Started again after a failure."},
    {"exposed", ValueKind::kBoolean, false, nullptr, "Found by its combined id."},
    {"port", ValueKind::kDecimal16, false, nullptr, "Port that it listens on."},
    {"url", ValueKind::kText, false, nullptr, "Address that it answers at."},
};
inline constexpr ConditionT kServiceConditions[] = {
    {ConditionT::kNeeds, "version", "commonname", kBtkForbidden},
};
inline constexpr ElementT kService = {
    "service",     AttributeForm::kRequired, kServiceAttributes,          Content::kElements,
    kRoleChildren, kServiceConditions,       "The runnable is a service."};

inline constexpr AttributeT kAppAttributes[] = {
    {"nameid", ValueKind::kText, true, nullptr, "Name id of the app."},
    kLauncherOfRole,
};
inline constexpr ElementT kApp = {
    "app", AttributeForm::kRequired, kAppAttributes, Content::kElements, kRoleChildren,
    {},    "The runnable is an app."};

inline constexpr AttributeT kLauncherAttributes[] = {
    {"nameid", ValueKind::kText, true, nullptr, "Name id of the launcher."},
    {"types", ValueKind::kWordList, true, nullptr, "What it starts."},
};
inline constexpr ElementT kLauncher = {"launcher",
                                       AttributeForm::kRequired,
                                       kLauncherAttributes,
                                       Content::kElements,
                                       kRoleChildren,
                                       {},
                                       "The runnable starts others."};

inline constexpr const ElementT* kRunnableChildren[] = {&kService, &kApp, &kLauncher};
inline constexpr AttributeT kRunnableAttributes[] = {
    {"moduleref", ValueKind::kNonEmptyText, true, nullptr, "Id of the module that is started."},
};
inline constexpr ElementT kRunnable = {"runnable",
                                       AttributeForm::kRequired,
                                       kRunnableAttributes,
                                       Content::kElements,
                                       kRunnableChildren,
                                       {},
                                       "Something that can be started, in one role or more."};

inline constexpr const ElementT* kRunnablesChildren[] = {&kRunnable};
inline constexpr ElementT kRunnables = {
    "runnables", AttributeForm::kNone,      {}, Content::kElements, kRunnablesChildren,
    {},          "Any number of runnables."};

}  // namespace tarnmf::grammar

#endif  // GRAMMAR_RUNNABLE_H
