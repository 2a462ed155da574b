// SPDX-License-Identifier: Apache-2.0
// The scan, the one operation that adds a load point to the repository, and its two passes over the
// records of a published load point.
#ifndef REPOSITORY_SCAN_H
#define REPOSITORY_SCAN_H

#include "platform/dlm.h"
#include "platform/errors.h"
#include "platform/filesystem.h"
#include "platform/types.h"
#include "platform/unique_id.h"
#include "repository/repo_base_impl.h"

namespace tarnmf {

// Reads the manifests of a load point, files the load point, publishes its records, preloads its
// libraries and indexes its classes and services.
//
// Without a directory (null or empty) the load point is the process's own and its manifests are
// `files`. Otherwise it is the installation in the directory `dir`: its layout file names the load
// point's path, its "*.tmfx" files are the manifests, `files` is not looked at and nothing is
// preloaded.
//
// What is announced to the dynamic-library manager stays announced when a later step fails; once
// the load point is filed it stays filed. Codes: as liMfRepository::Initialize and AddLoadpoint.
BtkErrorT ScanLoadpoint(liMfRepoBaseImpl& repo, const btkWChar* dir, const btkFSList& files);

// Loads ahead of use every published shared library of the load point that has a preload condition
// which holds for this process and whose option, if it names one, is on; each library once. A
// library that cannot be loaded is no failure. Codes: those of btkDlmGetCurProcessImagePathW.
BtkErrorT PreloadModules(btkDlmManager& dlm, const MfLdpDataT& data);

// Files one entry for each class that is hosted by a service of the load point itself, and one for
// each exposed service. Writes what the service manager answers into the classes: the hosting
// service and the versions. A class or service that the manager does not know is left out; without
// a manager that is every one that it would have to be asked about. False when out of memory; what
// was filed before stays.
bool IndexLoadpoint(liMfRepoBaseImpl& repo, MfLdpEntryT& ldp, const UniIdT& scope);

}  // namespace tarnmf

#endif  // REPOSITORY_SCAN_H
