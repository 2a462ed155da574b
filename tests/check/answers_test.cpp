// SPDX-License-Identifier: Apache-2.0
// Who is found by name, with the repository as the measure.
#include "check/answers.h"

#include <array>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>

#include "check/check.h"
#include "repository/scan.h"
#include "tests/support/documents.h"
#include "tests/support/installed_managers.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::check {
namespace {

// Small installations whose classes and services meet by name, id, version and scope.
class RandomInstallations {
 public:
  std::string Layout() {
    const std::size_t scope = Below(3);
    return "base = \".\"\n" +
           (scope > 0 ? test::WithIds(fmt::format("scope = ${}\n", scope)) : std::string());
  }

  std::string Manifest() {
    std::string text = "<module id='m' name='n'/>";
    first_ = 3;
    for (std::size_t i = Below(4); i < 4; ++i)
      text += Class();
    for (std::size_t i = Below(4); i < 4; ++i)
      text += Service();
    return test::DocumentOf(text);
  }

 private:
  std::size_t Below(std::size_t count) { return random_() % count; }
  std::size_t Version() {
    return std::array<std::size_t, 8>{0, 1, 2, 3, 16383, 16384, 32768, 70000}[Below(8)];
  }

  std::string Host() {
    switch (Below(4)) {
      case 0:
        return fmt::format("xsid='${}'", 6 + Below(4));
      case 1:
        return fmt::format("xsname='{}'", Name());
      case 2:
        return fmt::format("xsname='{}' xsversion='{}'", Name(), Version());
      default:
        return "";
    }
  }
  const char* Name() { return std::array{"S", "T", "GenLWSC"}[Below(3)]; }

  // One record, or two halves of a class.
  std::string Class() {
    const std::size_t id = first_++;
    const auto open = [&] {
      const std::string name = Below(6) != 0 ? fmt::format(" commonname='{}'", "AB"[Below(2)]) : "";
      return fmt::format("<class id='${}' affinity='service'{}{}>", id, name,
                         Below(5) == 0 ? " managedtype='worker'" : "");
    };
    const std::string client = "<clientside multiplicity='perLdp'><module name='n'/></clientside>";
    const std::string service = fmt::format(
        "<serviceside svcid='$9' {} exposed='yes'><module name='n'/></serviceside>", Host());
    switch (Below(5)) {
      case 0:
        return open() + client + "</class>";
      case 1:
        return open() + client + "</class>" + open() + service + "</class>";
      case 2:
        return open() + service + "</class>" + open() + client + "</class>";
      case 3:
        return open() + client + "<serviceside xsid='$7'/></class>";
      default:
        return open() + service + "</class>";
    }
  }

  std::string Service() {
    const std::string name =
        Below(6) != 0 ? fmt::format(" commonname='{}' version='{}'", Name(), Version()) : "";
    return fmt::format("<runnable moduleref='m'><service id='${}'{}{}/></runnable>", 6 + Below(4),
                       name, Below(2) == 0 ? " multiplicity='perProcess'" : "");
  }

  std::mt19937 random_{5};
  std::size_t first_ = 0;
};

// What the repository finds for every named class, by a query of its own scope for its version, as
// "LOAD POINT/RECORD".
class RepositoryAnswers {
 public:
  std::string Scan(const std::vector<std::string>& directories) {
    btkHostDlmManager dlm;
    btkHostServiceManager services;
    const test::InstalledManagers installed(&dlm, &services);
    const RepositoryPtr repo(new liMfRepoBaseImpl);
    std::map<const void*, std::string> names;
    std::vector<std::pair<const MfIntfClassT*, UniIdT>> classes;
    for (const std::string& directory : directories) {
      const btkFSPath path(directory.c_str());
      EXPECT_EQ(ScanLoadpoint(*repo, path.WideText(), btkFSList(0)), kBtkOk);
      UniIdT id{};
      EXPECT_EQ(dlm.QueryLoadpointId(&id, dlm.Installations().back().base), kBtkOk);
      const MfLdpDataT* const data = repo->FindLoadpoint(&id);
      for (const MfIntfClassT* record : data->classes) {
        names[record] = fmt::format("{}/{}", names.size(), record->commonname != nullptr);
        if (record->commonname != nullptr)
          classes.emplace_back(record, dlm.Installations().back().scope);
      }
    }
    std::string answers;
    for (const auto& [record, scope] : classes) {
      const MfSvcResolveT* const found =
          repo->FindClassImpl(&scope, record->commonname, record->svcVersion, INT16_MAX);
      answers += found != nullptr ? names[found->record] : "none";
      answers += fmt::format(" {};", record->svcVersion);
    }
    return answers;
  }
};

std::string CheckAnswers(const std::vector<std::string>& directories) {
  DiskFiles files;
  const Report report = Check({"", directories}, files);
  std::vector<std::vector<ClassRecord>> records;
  for (const auto& loadpoint : report.loadpoints)
    records.push_back(ClassRecordsOf(*loadpoint));
  std::vector<IndexedLoadPoint> indexed;
  std::map<const ClassRecord*, std::string> names;
  for (std::size_t i = 0; i < records.size(); ++i) {
    indexed.push_back({report.loadpoints[i].get(), &records[i]});
    for (const ClassRecord& record : records[i]) {
      names[&record] =
          fmt::format("{}/{}", names.size(), record.declaration->commonname.has_value());
    }
  }
  const Answers answers(indexed);
  std::string text;
  for (const NamedClass& named : answers.Classes()) {
    text += named.found != nullptr ? names[named.found->record] : "none";
    text += fmt::format(" {};", named.version);
  }
  return text;
}

TEST(Answers, AreThoseOfTheRepository) {
  RandomInstallations installations;
  const test::TempDirectory directory;
  int found = 0;
  for (int round = 0; round < 1000; ++round) {
    std::vector<std::string> directories;
    for (int i = 0; i <= round % 3; ++i) {
      const std::string name = fmt::format("{}-{}", round, i);
      directory.Write(name + "/.installed", installations.Layout());
      directory.Write(name + "/a.tmfx", installations.Manifest());
      directories.push_back(directory.At(name));
    }
    const std::string expected = RepositoryAnswers().Scan(directories);
    ASSERT_EQ(CheckAnswers(directories), expected) << round;
    found += expected.find('/') != std::string::npos ? 1 : 0;
  }
  EXPECT_GT(found, 300);
}

}  // namespace
}  // namespace tarnmf::check
