// SPDX-License-Identifier: Apache-2.0
// The elements that declare interface classes.
#ifndef GRAMMAR_INTF_CLASS_H
#define GRAMMAR_INTF_CLASS_H

#include "grammar/module.h"

namespace tarnmf::grammar {

inline constexpr AttributeT kModuleRef = {
    "moduleref", ValueKind::kNonEmptyText, false, nullptr,
    "Id of the module that implements the side. Without it the side holds one module."};
inline constexpr AttributeT kClientMultiplicity = {
    "multiplicity", ValueKind::kKeyword, false, &kMultiplicityWords,
    "How many instances there are; alwaysNew by default."};
inline constexpr AttributeT kServiceMultiplicity = {
    "multiplicity", ValueKind::kKeyword, false, &kMultiplicityWords,
    "How many instances there are; singleInstance by default."};

inline constexpr const ElementT* kSideChildren[] = {&kModule};
inline constexpr AttributeT kSideAttributes[] = {kModuleRef, kClientMultiplicity};
inline constexpr ElementT kClientSide = {
    "clientside",
    AttributeForm::kRequired,
    kSideAttributes,
    Content::kSide,
    kSideChildren,
    {},
    "What callers of the class load. Not in agent classes; generic and app classes need it, a "
    "service class needs it or a service side."};
inline constexpr ElementT kAgentSide = {
    "agentside",
    AttributeForm::kRequired,
    kSideAttributes,
    Content::kSide,
    kSideChildren,
    {},
    "What agents load in place of the client side. Not in app classes; agent classes need it."};

inline constexpr AttributeT kServiceSideAttributes[] = {
    kModuleRef,
    kServiceMultiplicity,
    {"svcid", ValueKind::kUniqueId, false, nullptr,
     "The id under which the side is offered as a service. A side with a module needs it, unless "
     "the class is a worker: that is offered under its class id by default."},
    {"xsid", ValueKind::kUniqueId, false, nullptr,
     "The service that hosts the class, by id. A side without a module needs it."},
    {"xsname", ValueKind::kText, false, nullptr,
     "The service that hosts the class, by name; not together with \"xsid\"."},
    {"xsversion", ValueKind::kDecimal, false, nullptr,
     "Least version of the hosting service; without it, or with 0, any."},
    {"isolation", ValueKind::kKeyword, false, &kIsolationWords,
     "Whether the hosting service holds nothing else; relaxed by default."},
    {"exposed", ValueKind::kBoolean, false, nullptr,
     "Filed as a service of its own, under the common name."},
};
inline constexpr ConditionT kServiceSideConditions[] = {
    {ConditionT::kNeeds, "isolation", "xsid", kBtkForbidden},
    {ConditionT::kNeeds, "xsversion", "xsname", kBtkForbidden},
    {ConditionT::kExcludes, "xsname", "xsid", kBtkForbidden},
};
inline constexpr ElementT kServiceSide = {
    "serviceside",
    AttributeForm::kRequired,
    kServiceSideAttributes,
    Content::kSide,
    kSideChildren,
    kServiceSideConditions,
    "What the hosting service loads. Only in service classes."};

inline constexpr const ElementT* kClassChildren[] = {&kAgentSide, &kClientSide, &kServiceSide};
inline constexpr AttributeT kClassAttributes[] = {
    {"id", ValueKind::kUniqueId, true, nullptr,
     "Id of the class. Two records of one id complete each other when one has only the client side "
     "and the other only the service side."},
    {"affinity", ValueKind::kKeyword, false, &kAffinityWords,
     "What the class belongs to, which says which sides it has; generic by default."},
    {"commonname", ValueKind::kText, false, nullptr, "The name under which the class is found."},
    {"displayname", ValueKind::kText, false, nullptr, "The name that is shown to people."},
    {"version", ValueKind::kDecimal16, false, nullptr, "Version of the interface."},
    {"createon", ValueKind::kIgnored, false, nullptr, "Admitted, but not used."},
    {"managedtype", ValueKind::kKeyword, false, &kManagedTypeWords,
     "Who manages the life of its objects; generic by default. Only services are containers."},
};
inline constexpr ConditionT kClassConditions[] = {
    {ConditionT::kNeeds, "displayname", "commonname", kBtkMissing},
};
inline constexpr ElementT kClass = {
    "class",
    AttributeForm::kRequired,
    kClassAttributes,
    Content::kElements,
    kClassChildren,
    kClassConditions,
    "An interface class: which modules implement its sides and which service hosts it."};

inline constexpr const ElementT* kClassesChildren[] = {&kClass};
inline constexpr ElementT kClasses = {
    "classes", AttributeForm::kNone,    {}, Content::kElements, kClassesChildren,
    {},        "Any number of classes."};

}  // namespace tarnmf::grammar

#endif  // GRAMMAR_INTF_CLASS_H
