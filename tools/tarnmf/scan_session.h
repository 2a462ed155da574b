// SPDX-License-Identifier: Apache-2.0
// One process with its load points: what a scan was asked for and what came of it.
#ifndef TOOLS_TARNMF_SCAN_SESSION_H
#define TOOLS_TARNMF_SCAN_SESSION_H

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tarnmf/repository.h"

#include "tools/tarnmf/manifest_files.h"
#include "tools/tarnmf/nested_names.h"
#include "tools/tarnmf/scan_findings.h"
#include "tools/tarnmf/text.h"

namespace tool {

struct ScanOptions {
  std::string loadpoint;  // of the process; empty: none
  std::vector<std::string> files;
  std::vector<std::string> add;      // installation directories
  std::vector<std::string> options;  // "ID=VALUE"
  std::string service;               // id of the service to pose in; empty: none
  bool preload = false;              // whether libraries are loaded, not only told
  bool json = false;
};

// The part of a manager's list that one step has added.
struct Range {
  std::size_t begin = 0;
  std::size_t end = 0;
};

// What one step has registered with the embedded managers.
struct Registered {
  Range installations;
  Range layouts;
  Range resolutions;
  Range interfaces;
  Range runnables;
  Range preloads;
  Range services;
};

// The process's own load point, or one installation.
struct ScanStep {
  bool isProcess = false;
  std::string directory;  // as given; may be empty for the process
  std::vector<std::string> manifests;
  LoadResult result;
  tarnmf::check::Verdict errors;  // what check finds in its files
  std::string problem;            // of the directory itself; the library takes such a one for empty
  Registered registered;
  UniIdT id = {};
  UniIdT scope = {};
  std::string path;            // of the load point
  MfLdpDataT* data = nullptr;  // null: not filed

  bool Failed() const { return result.Failed() || !problem.empty() || !errors.findings.empty(); }
};

class ScanSession {
 public:
  // Sets up the process and scans. Throws std::invalid_argument for an option that cannot be read.
  explicit ScanSession(const ScanOptions& options);

  // Null when the process's own load point could not be scanned.
  liMfRepository* Repository() const { return liMfRepository::Instance(); }
  const std::vector<ScanStep>& Steps() const { return steps_; }
  // Installations that could not be scanned because the process's own load point failed.
  const std::vector<std::string>& Skipped() const { return skipped_; }
  bool Failed() const;
  const NestedNames& Names() const { return names_; }
  const ScanFindings& Findings() const { return *findings_; }

 private:
  void ScanProcess(const ScanOptions& options);
  void ScanInstallation(const std::string& directory);
  void FindData(ScanStep& step);
  void FindErrors(const ScanOptions& options);

  std::vector<ScanStep> steps_;
  std::vector<std::string> skipped_;
  NestedNames names_;
  std::unique_ptr<const ScanFindings> findings_;
};

}  // namespace tool

#endif  // TOOLS_TARNMF_SCAN_SESSION_H
