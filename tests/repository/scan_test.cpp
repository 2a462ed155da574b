// SPDX-License-Identifier: Apache-2.0
// How the repository is made, what a scan asks of the platform, and what it leaves filed.
#include "repository/scan.h"

#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tarnmf/options.h"

#include "platform/unique_id.h"
#include "tests/support/case_file.h"
#include "tests/support/documents.h"
#include "tests/support/recording_managers.h"
#include "tests/support/system_names.h"
#include "tests/support/temp_directory.h"
#include "tests/support/wide_string.h"

namespace tarnmf::test {
namespace {

using CallList = std::vector<std::string>;

constexpr char kEverything[] =
    "<module id='m' name='lib'><preload by='anyone'/></module>"
    "<class id='$1' affinity='service' commonname='C'>"
    "<serviceside moduleref='m' svcid='$2' xsname='S' exposed='true'/></class>"
    "<runnable moduleref='m'><app nameid='a'/>"
    "<service id='$3' commonname='S' exposed='true'/></runnable>";

std::string OperationOf(const std::string& call) {
  return call.substr(0, call.find('('));
}

std::string PreloadCall(const std::string& name) {
  return "PreloadModule(\"/lp/native/" + name + "\", 0, 0, null, null)";
}

struct SessionFake : btkSvcSession {
  UniIdT GetServiceId() override { return Id(5); }
};

class ScanTest : public testing::Test {
 protected:
  ScanTest() {
    btkHostSetProcessLoadpoint(BTK_W("/lp"));
    RunAs("viewer");
    btkHostSetMachineTypes("x64", "x86");
    platform_.externalService = [](std::string_view) { return Id(3); };
    platform_.serviceVersion = 4;
    root_.Write("i/.installed", "base = \"b\"\nlayout += 64 {\"a\" | | \"b\", \"c\"}\n");
    root_.Write("i/a.tmfx", DocumentOf(kEverything));
  }
  ~ScanTest() override {
    Discard();
    btkHostSetProcessLoadpoint(nullptr);
    btkHostSetExecutablePath(nullptr);
    btkHostSetMachineTypes(nullptr, nullptr);
  }

  // Takes both repositories away, that of a test and that of the process.
  void Discard() {
    repo_.reset();
    const RepositoryPtr ofTheProcess(std::exchange(g_repository, nullptr));
    platform_.calls = {};
  }
  void NewRepository() {
    Discard();
    repo_.reset(new liMfRepoBaseImpl);
  }

  btkFSList ProcessFiles(const std::string& content) {
    btkFSList files(0);
    files.Append(btkFSEntry(root_.Write("process.tmfx", DocumentOf(content)).c_str()));
    return files;
  }
  BtkErrorT ScanProcess(const std::string& content) {
    return ScanLoadpoint(*repo_, nullptr, ProcessFiles(content));
  }
  btkFSPath Directory(const char* name) { return btkFSPath(root_.At(name).c_str()); }
  BtkErrorT ScanDirectory(const char* name) {
    return ScanLoadpoint(*repo_, Directory(name).WideText(), btkFSList(0));
  }

  std::int32_t Filed() { return repo_->GetLoadpointIds(nullptr, 0); }

  // The calls of these operations, each with what ends it; the temporary directory is written as R.
  std::string Calls(const std::set<std::string>& operations, const char* end) {
    std::string calls;
    for (const std::string& call : platform_.calls) {
      if (operations.contains(OperationOf(call))) calls += call + end;
    }
    for (std::size_t at; (at = calls.find(root_.At())) != std::string::npos;)
      calls.replace(at, root_.At().size(), "R");
    return calls;
  }

  TempDirectory root_;
  RecordingManagers platform_;
  RepositoryPtr repo_{new liMfRepoBaseImpl};
};

TEST_F(ScanTest, MakesOneRepository) {
  const auto initialize = [](const btkFSList& files) {
    return liMfRepository::Initialize(files, BTK_W("/not/looked/at"));
  };
  const btkFSList files = ProcessFiles(kEverything);
  btkFSList missing(0);
  missing.Append(btkFSEntry("/nowhere.tmfx"));
  EXPECT_EQ(initialize(missing), kBtkMissing);
  EXPECT_EQ(liMfRepository::Instance(), nullptr);
  platform_.calls = {};
  ASSERT_EQ(initialize(files), kBtkOk);
  const CallList whole = platform_.calls;
  Discard();

  // Whatever is called meanwhile may ask for a repository too.
  platform_.onCall = [&](const std::string&) {
    EXPECT_EQ(liMfRepository::Instance(), nullptr);
    EXPECT_EQ(initialize(files), kBtkMissing);
    return kBtkOk;
  };
  EXPECT_EQ(initialize(files), kBtkOk);
  EXPECT_EQ(platform_.calls, whole);
  liMfRepository* const repo = liMfRepository::Instance();
  ASSERT_NE(repo, nullptr);
  EXPECT_EQ(initialize(missing), kBtkMissing);
  EXPECT_EQ(liMfRepository::Instance(), repo);
  for (const btkWChar* dir : {static_cast<const btkWChar*>(nullptr), BTK_W("")})
    EXPECT_EQ(repo->AddLoadpoint(dir), kBtkNullArgument);
  EXPECT_EQ(repo->GetLoadpointIds(nullptr, 0), 1);
}

TEST_F(ScanTest, AnnouncesAnInstallation) {
  // Whatever becomes of the machine types meanwhile.
  platform_.onCall = [](const std::string&) {
    btkHostSetMachineTypes("later", "later");
    return kBtkOk;
  };
  for (const FileCase& row : ReadCaseFile(TARNMF_CASES "/installation.cases")) {
    btkHostSetMachineTypes("x64", "x86");
    NewRepository();
    root_.Write("i/.installed", row.input + "\n");
    EXPECT_EQ(ScanDirectory("i"), kBtkOk);
    const std::string calls = Calls(
        {"RegisterInstallation", "RegisterLayout", "QueryLoadpointId", "PreloadModule"}, "\n");
    EXPECT_EQ(calls, row.result) << row.name;
  }
}

TEST_F(ScanTest, ReadsTheManifestsOfTheDirectoryItself) {
  root_.Write("p/d/b.tmfx", DocumentOf("<module id='b' name='b'/>"));
  root_.Write("p/d/a.tmfx", DocumentOf("<module id='a' name='a'/>"));
  for (const char* file : {"p/d/c.xml", "p/d/sub/d.tmfx", "p/e.tmfx", "p/sibling/x"})
    root_.Write(file, "no manifest");
  EXPECT_EQ(ScanDirectory("p/d"), kBtkOk);
  ASSERT_EQ(Filed(), 1);
  const MfLdpDataT& data = repo_->loadpointsById[0]->data;
  ASSERT_EQ(data.modules.count, 2);
  EXPECT_STREQ(data.modules[0]->id, "a");
  EXPECT_EQ(data.modules[0]->loadpoint, data.loadpoint);
  EXPECT_EQ(WideString(data.loadpoint), Directory("p").WideText());

  platform_.calls = {};
  EXPECT_EQ(ScanDirectory("p/d"), kBtkDuplicate);
  EXPECT_EQ(ScanDirectory("p/sibling"), kBtkDuplicate);  // its base is the same parent
  EXPECT_EQ(platform_.calls, CallList());
}

TEST_F(ScanTest, AnnouncesTheProcess) {
  const UniIdT service = Id(3);
  platform_.processScope = Id(8);
  for (const WideString& path : {WideString(BTK_W("/lp")), {}, WideString(261, BTK_W('x'))}) {
    NewRepository();
    btkHostSetProcessLoadpoint(path.c_str());
    EXPECT_EQ(ScanProcess(kEverything), kBtkOk);
    const bool fits = path == BTK_W("/lp");
    EXPECT_EQ(Calls({"RegisterProcessLoadpoint", "QueryLoadpointId"}, ";"),
              fits ? "RegisterProcessLoadpoint(\"/lp\");QueryLoadpointId(\"/lp\");"
                   : "RegisterProcessLoadpoint(null);QueryLoadpointId(null);");
    EXPECT_NE(repo_->FindService(&service, fits ? BTK_W("/lp") : BTK_W("")), nullptr);
    EXPECT_EQ(repo_->FindClassImpl(nullptr, "C", 0, 0), nullptr);  // it has a scope
    EXPECT_NE(repo_->FindClassImpl(&platform_.processScope, "C", 4, 0), nullptr);
  }
}

TEST_F(ScanTest, StopsAtFaultsOfItsInput) {
  const std::string loose = "<class id='$1'><clientside moduleref='n'/></class>";
  root_.Write("broken/.installed", "bits = 1");
  root_.Write("refused/a.tmfx", DocumentOf(loose));
  EXPECT_EQ(ScanDirectory("broken"), kBtkMalformed);
  EXPECT_EQ(platform_.calls.size(), 0U);
  EXPECT_EQ(ScanDirectory("refused"), kBtkUnexpected);
  EXPECT_EQ(ScanProcess(loose), kBtkUnexpected);
  EXPECT_EQ(ScanProcess("<module id='m' name='m'/><module name=''/>"), kBtkMalformed);
  EXPECT_EQ(platform_.calls.size(), 6U);  // the announcements
  EXPECT_EQ(Filed(), 0);
}

// ---- Passes ------------------------------------------------------------------------------------

TEST_F(ScanTest, PreloadsWhatItsConditionsSay) {
  const UniIdT options[] = {Id(1), Id(2)};
  btkConfEnableOption(&options[0], 3);
  btkConfEnableOption(&options[1], 0);
  // Only shared libraries that have been found are loaded, from the file for this machine.
  std::string modules =
      "<modules><module id='e' name='e' type='executable'><preload by='anyone'/></module>"
      "<module id='lost' name='lost'><preload by='anyone'/></module>"
      "<module id='s' name='s' type='SHAREDLIB'><preload by='anyone'/>"
      "<platformmodule machinetype='x64' name='own'><preload by='client'/></platformmodule>"
      "<platformmodule machinetype='x86' name='s86'><preload by='anyone'/></platformmodule>"
      "</module>";
  platform_.Refuse("ResolveModule(\"lost\"", kBtkNotFound);
  std::map<std::string, std::string> expected;
  expected["alone"] = expected["nameless"] = PreloadCall("own");
  for (const FileCase& row : ReadCaseFile(TARNMF_CASES "/preload.cases")) {
    const std::string name = row.name.substr(row.name.find(':') + 1);
    modules.append("<module id='").append(name).append("' name='").append(name).append("'>");
    modules.append(row.input).append("</module>");
    for (const char* process : {"alone", "service", "nameless"}) {
      if (row.result.find(process) != std::string::npos) expected[process] += PreloadCall(name);
    }
  }
  const auto loaded = [&] {
    NewRepository();
    EXPECT_EQ(ScanProcess(modules + "</modules>"), kBtkOk);
    return Calls({"PreloadModule"}, "");
  };
  EXPECT_EQ(loaded(), expected["alone"]);
  SessionFake session;
  btkHostSetServiceSession(&session);
  EXPECT_EQ(loaded(), expected["service"]);
  btkHostSetServiceSession(nullptr);
  btkHostSetExecutablePath(BTK_W("/"));
  EXPECT_EQ(loaded(), expected["nameless"]);
}

TEST_F(ScanTest, FilesHostedClassesAndExposedServices) {
  platform_.externalService = [](std::string_view name) {
    return Id(name == "GenLWSC" ? 4U : static_cast<std::uint32_t>(name[2] - '0'));
  };
  platform_.Refuse("ResolveExternalService(\"bad\"", kRefusal);
  platform_.Refuse("QueryServiceVersions(#5", kRefusal);
  const auto dump = [&](const MfSvcResolveT& entry) {
    EXPECT_EQ(entry.kind == kMfClassEntry, btkUniIdIsNull(entry.ids[kMfCombinedId]));
    EXPECT_TRUE(btkUniIdIsEqual(&entry.ids[kMfLoadpointId], &repo_->loadpointsById[0]->id));
    return IdText(entry.ids[kMfServiceId]) + " " + std::to_string(entry.multiplicity) + " " +
           std::to_string(entry.versionKey / 2) + "; ";
  };
  for (const FileCase& row : ReadCaseFile(TARNMF_CASES "/indexing.cases")) {
    NewRepository();
    EXPECT_EQ(ScanProcess("<module id='m' name='m'/>" + row.input +
                          "<runnable moduleref='m'><service id='$3' multiplicity='perProcess'/>"
                          "<service id='$3' multiplicity='perLdp'/><service id='$5'/>"
                          "<service id='$4' multiplicity='alwaysNew'/></runnable>"),
              kBtkOk);
    std::string result = Calls({"ResolveExternalService", "QueryServiceVersions"}, "; ");
    const MfSvcResolveT* const entry = repo_->FindClassImpl(nullptr, "C", 0, 0);
    if (entry != nullptr) result += "class " + dump(*entry);
    for (const MfSvcResolveT* service : repo_->serviceEntries) {
      EXPECT_EQ(service->record, entry != nullptr ? entry->record : nullptr);
      result += "service " + std::string(service->key) + " " + dump(*service);
    }
    if (result.empty()) result = "nothing filed; ";
    EXPECT_EQ(result, row.result + "; ") << row.name;
  }
}

}  // namespace
}  // namespace tarnmf::test
