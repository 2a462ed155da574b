// The scan: the one operation that adds a load point to the repository.
#ifndef REPOSITORY_SCAN_H
#define REPOSITORY_SCAN_H

#include "platform/errors.h"
#include "platform/filesystem.h"
#include "platform/types.h"
#include "repository/repo_base_impl.h"

namespace tarnmf {

// Reads the manifests of a load point, files the load point, publishes its records, preloads its
// libraries and indexes its classes and services.
//
// Without a directory (null or empty) the load point is the process's own and its manifests are
// `files`. Otherwise it is the installation in the directory `dir`: its layout file names the load
// point's path, its "*.tmfx" files are the manifests, and nothing is preloaded.
//
// What is announced to the dynamic-library manager stays announced when a later step fails; once
// the load point is filed it stays filed. Codes: as liMfRepository::Initialize and AddLoadpoint.
BtkErrorT ScanLoadpoint(liMfRepoBaseImpl& repo, const btkWChar* dir, const btkFSList& files);

}  // namespace tarnmf

#endif  // REPOSITORY_SCAN_H
