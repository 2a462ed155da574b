// SPDX-License-Identifier: Apache-2.0
// The root elements of manifest documents, and so the whole grammar.
#ifndef GRAMMAR_MANIFEST_H
#define GRAMMAR_MANIFEST_H

#include "grammar/intf_class.h"
#include "grammar/module.h"
#include "grammar/runnable.h"

namespace tarnmf::grammar {

inline constexpr AttributeT kRootAttributes[] = {
    {"version", ValueKind::kVersion, true, nullptr,
     "Version of the format. A root carries it and nothing else."},
};

inline constexpr const ElementT* kMixedChildren[] = {&kClass,     &kClasses, &kRunnable,
                                                     &kRunnables, &kModule,  &kModules};
inline constexpr ElementT kMixedManifest = {"tarnmanifest",
                                            AttributeForm::kRequired,
                                            kRootAttributes,
                                            Content::kElements,
                                            kMixedChildren,
                                            {},
                                            "A manifest of modules, classes and runnables."};

inline constexpr const ElementT* kModuleManifestChildren[] = {&kModule, &kModules};
inline constexpr ElementT kModuleManifest = {
    "tarnmodulemanifest",
    AttributeForm::kRequired,
    kRootAttributes,
    Content::kElements,
    kModuleManifestChildren,
    {},
    "A manifest of modules: one, or any number once a list has stood before them."};

inline constexpr const ElementT* kClassManifestChildren[] = {&kClass, &kClasses};
inline constexpr ElementT kClassManifest = {
    "tarnclassmanifest",
    AttributeForm::kRequired,
    kRootAttributes,
    Content::kElements,
    kClassManifestChildren,
    {},
    "A manifest of classes: one, or any number once a list has stood before them."};

inline constexpr const ElementT* kRunnableManifestChildren[] = {&kRunnable, &kRunnables};
inline constexpr ElementT kRunnableManifest = {
    "tarnrunnablemanifest",
    AttributeForm::kRequired,
    kRootAttributes,
    Content::kElements,
    kRunnableManifestChildren,
    {},
    "A manifest of runnables: one, or any number once a list has stood before them."};

inline constexpr const ElementT* kDocumentChildren[] = {&kMixedManifest, &kModuleManifest,
                                                        &kClassManifest, &kRunnableManifest};
// Stands for the document itself, whose one child is the root.
inline constexpr ElementT kDocument = {
    "", AttributeForm::kNone,  {}, Content::kElements, kDocumentChildren,
    {}, "A manifest document."};

}  // namespace tarnmf::grammar

#endif  // GRAMMAR_MANIFEST_H
