// What a scan asks of the platform, and what it leaves filed.
#include "repository/scan.h"

#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tarnmf/options.h"

#include "platform/unique_id.h"
#include "support/ignore_refusal.h"
#include "tests/support/allocation_fault.h"
#include "tests/support/recording_managers.h"
#include "tests/support/temp_directory.h"

namespace tarnmf {
namespace {

using test::Id;
using test::IdText;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using CallList = std::vector<std::string>;

constexpr auto kRefusal = static_cast<BtkErrorT>(77);

// The id "#number" as an attribute writes it, in its quotes.
std::string Quoted(unsigned number) {
  char text[39];
  std::snprintf(text, sizeof text, "\"00000000-0000-0000-0000-%012x\"", number);
  return text;
}
std::string Unquoted(unsigned number) {
  return Quoted(number).substr(1, 36);
}

std::string Manifest(const std::string& content) {
  return "<tarnmanifest version=\"1\">" + content + "</tarnmanifest>";
}

const std::string kEverything = Manifest(
    "<module id='m' name='lib'><preload by='anyone'/></module>"
    "<class id=" +
    Quoted(1) +
    " affinity='service' commonname='C'>"
    "<serviceside moduleref='m' svcid=" +
    Quoted(2) +
    " xsname='S' exposed='true'/></class>"
    "<runnable moduleref='m'><app nameid='a'/><service id=" +
    Quoted(3) + " commonname='S' exposed='true'/></runnable>");

class SessionFake : public btkSvcSession {
 public:
  explicit SessionFake(unsigned service) : service_(service) { btkHostSetServiceSession(this); }
  ~SessionFake() override { btkHostSetServiceSession(nullptr); }
  UniIdT GetServiceId() override { return Id(service_); }

 private:
  unsigned service_;
};

class ScanTest : public testing::Test {
 protected:
  ScanTest() {
    btkHostSetProcessLoadpoint(BTK_W("/lp"));
    btkHostSetExecutablePath(BTK_W("/bin/viewer"));
    platform_.externalService = [](UniIdT* id, const char*) { *id = Id(3); };
    platform_.versions = [](std::int16_t* version, std::int16_t*, const UniIdT&) { *version = 4; };
  }
  ~ScanTest() override {
    btkHostSetProcessLoadpoint(nullptr);
    btkHostSetExecutablePath(nullptr);
  }

  void NewRepository() {
    repo_.reset(new liMfRepoBaseImpl);
    platform_.calls = {};
  }

  BtkErrorT ScanProcess(const std::string& manifest) {
    btkFSList files(0);
    files.Append(btkFSEntry(root_.Write("process.tmfx", manifest).c_str()));
    return ScanLoadpoint(*repo_, nullptr, files);
  }
  BtkErrorT ScanDirectory(const std::string& name) {
    const btkFSPath path((root_.Path() / name).c_str());
    return ScanLoadpoint(*repo_, path.WideText(), btkFSList(0));
  }

  std::int32_t Filed() { return repo_->GetLoadpointIds(nullptr, 0); }

  // The calls that start with one of the names, the temporary directory written as R.
  CallList Calls(const std::set<std::string>& names = {}) {
    CallList calls;
    const std::string root = root_.Path().native();
    for (std::string call : platform_.calls) {
      if (!names.empty() && !names.contains(call.substr(0, call.find('(')))) continue;
      for (std::size_t at; (at = call.find(root)) != std::string::npos;)
        call.replace(at, root.size(), "R");
      calls.push_back(call);
    }
    return calls;
  }

  test::TempDirectory root_;
  test::RecordingManagers platform_;
  test::MachineTypes machines_{"x64", "x86"};
  RepositoryPtr repo_{new liMfRepoBaseImpl};
};

const std::set<std::string> kAnnouncements = {"RegisterInstallation", "RegisterProcessLoadpoint",
                                              "RegisterLayout", "QueryLoadpointId",
                                              "PreloadModule"};
const std::set<std::string> kQuestions = {"ResolveExternalService", "QueryServiceVersions"};

TEST_F(ScanTest, AnnouncesAnInstallation) {
  const std::string statements =
      "base = \"b\"\nscope = " + Unquoted(9) +
      "\nlayout += 0 {\"0\"}\nlayout += 32 {\"32\"}\nlayout += 64 "
      "{\"64\"|\"t\"|\"a\",\"b\"||\"c\"}\n"
      "layout += 3264 {\"3264\"}\nlayout += 6432 {\"6432\"}\nlayout += 16 {\"16\"}\n";
  const auto layout = [](const std::string& base, const char* machine, const char* text) {
    return "RegisterLayout(\"" + base + "\", \"" + machine + "\", \"" + text +
           (std::string_view(text) == "64" ? "\", \"t\", [\"a\", \"b\"], [], [\"c\"], false)"
                                           : "\", null, [], [], [], false)");
  };
  struct Row {
    const char* bits;
    const char* zero;  // the machine type of the layout with bits 0
    bool both;         // whether the layout with bits 6432 is for this platform
  };
  for (const Row& row : {Row{"", "x64", false}, Row{"bits = 64\n", "x64", false},
                         Row{"bits = 32\n", "x86", true}, Row{"bits = 16\n", "", false}}) {
    NewRepository();
    root_.Write("i/.installed", row.bits + statements);
    EXPECT_EQ(ScanDirectory("i"), kBtkOk);
    CallList expected;
    const std::string base = "R/i/b/";
    if (*row.zero != 0) expected.push_back(layout(base, row.zero, "0"));
    expected.push_back(layout(base, "x86", "32"));
    expected.push_back(layout(base, "x64", "64"));
    expected.push_back(layout(base, "x86", "3264"));
    if (row.both) expected.push_back(layout(base, "x64", "6432"));
    expected.push_back("RegisterInstallation(\"R/i/b/\", #9)");
    expected.push_back("QueryLoadpointId(\"R/i/b/\")");
    EXPECT_THAT(Calls(kAnnouncements), ElementsAreArray(expected)) << row.bits;
  }
}

TEST_F(ScanTest, ReadsTheManifestsOfTheDirectoryItself) {
  root_.Write("p/d/b.tmfx", Manifest("<module id='b' name='b'/>"));
  root_.Write("p/d/a.tmfx", Manifest("<module id='a' name='a'/>"));
  root_.Write("p/d/c.xml", "no manifest");
  root_.Write("p/d/sub/d.tmfx", "no manifest");
  root_.Write("p/e.tmfx", "no manifest");
  root_.Write("p/sibling/x", "");
  EXPECT_EQ(ScanDirectory("p/d"), kBtkOk);
  const btkFSPath parent((root_.Path() / "p").c_str());
  const UniIdT id = platform_.loadpointId(parent.WideText());
  const MfLdpDataT* const data = repo_->FindLoadpoint(&id);
  ASSERT_NE(data, nullptr);
  ASSERT_EQ(data->modules.count, 2);
  EXPECT_STREQ(data->modules[0]->id, "a");
  EXPECT_EQ(data->modules[0]->loadpoint, data->loadpoint);
  EXPECT_EQ(std::u16string(data->loadpoint), parent.WideText());

  platform_.calls = {};
  EXPECT_EQ(ScanDirectory("p/d"), kBtkDuplicate);
  EXPECT_EQ(ScanDirectory("p/sibling"), kBtkDuplicate);  // its base is the same parent
  EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(ScanTest, AnnouncesTheProcess) {
  platform_.processScope = [](UniIdT* scope) { *scope = Id(8); };
  EXPECT_EQ(ScanProcess(kEverything), kBtkOk);
  EXPECT_THAT(Calls(kAnnouncements),
              ElementsAre("RegisterProcessLoadpoint(\"/lp\")", "QueryLoadpointId(\"/lp\")",
                          "PreloadModule(\"/lp/native/lib\", 0, 0, null, null)"));
  const MfSvcResolveT* const entry = repo_->FindClassImpl(nullptr, "C", 0, 0);
  EXPECT_EQ(entry, nullptr);  // it has a scope
  const UniIdT scope = Id(8);
  EXPECT_NE(repo_->FindClassImpl(&scope, "C", 4, 0), nullptr);
}

TEST_F(ScanTest, FilesAProcessWithoutLoadpointUnderTheEmptyPath) {
  for (const std::u16string& path : {std::u16string(), std::u16string(261, u'x')}) {
    NewRepository();
    btkHostSetProcessLoadpoint(path.c_str());
    EXPECT_EQ(ScanProcess(kEverything), kBtkOk);
    EXPECT_THAT(Calls({"RegisterProcessLoadpoint", "QueryLoadpointId"}),
                ElementsAre("RegisterProcessLoadpoint(null)", "QueryLoadpointId(null)"));
    const UniIdT service = Id(3);
    EXPECT_NE(repo_->FindService(&service, BTK_W("")), nullptr);
  }
}

// Each call of a whole scan fails in turn.
TEST_F(ScanTest, EndsWhereThePlatformRefuses) {
  root_.Write("i/.installed", "base = \"b\"\nlayout += 64 {}\n");
  root_.Write("i/a.tmfx", kEverything);
  const std::map<std::string, bool> filedAfter = {
      {"RegisterInstallation", false}, {"RegisterProcessLoadpoint", false},
      {"PublishRefList", true},        {"RegisterRunnable", true},
      {"DefineService", true},         {"SetServiceInfo", true},
      {"AddServiceInstance", true}};
  const std::set<std::string> unheard = {"RegisterLayout", "QueryLoadpointId", "PreloadModule"};
  for (const bool directory : {true, false}) {
    const auto scan = [&] { return directory ? ScanDirectory("i") : ScanProcess(kEverything); };
    NewRepository();
    ASSERT_EQ(scan(), kBtkOk);
    const CallList whole = platform_.calls;
    std::set<std::string> seen;
    for (std::size_t i = 0; i < whole.size(); ++i) {
      const std::string operation = whole[i].substr(0, whole[i].find('('));
      if (!seen.insert(operation).second) continue;
      NewRepository();
      platform_.Refuse(whole[i], kRefusal);
      const BtkErrorT code = scan();
      platform_.RefuseNothing();
      const bool ends = filedAfter.contains(operation);
      EXPECT_EQ(code, ends ? kRefusal : kBtkOk) << operation;
      EXPECT_EQ(Filed(), !ends || filedAfter.at(operation) ? 1 : 0) << operation;
      if (ends) {
        EXPECT_THAT(
            platform_.calls,
            ElementsAreArray(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(i) + 1));
        EXPECT_EQ(repo_->FindClassImpl(nullptr, "C", 0, 0), nullptr);
      } else if (unheard.contains(operation)) {
        EXPECT_EQ(platform_.calls, whole);
      }
      if (!directory) continue;
      EXPECT_EQ(scan(), Filed() == 1 ? kBtkDuplicate : kBtkOk) << operation;
    }
    EXPECT_EQ(seen.size(), 11U);

    repo_.reset();
    platform_.calls = {};
    const std::int64_t live = test::LiveAllocations();
    for (std::size_t i = 0; i < whole.size(); ++i) {
      NewRepository();
      platform_.ThrowAt(static_cast<int>(i));
      EXPECT_THROW(IgnoreRefusal(scan()), test::PlatformException) << whole[i];
      repo_.reset();
      platform_.calls = {};
      EXPECT_EQ(test::LiveAllocations(), live) << whole[i];
    }
  }
}

TEST_F(ScanTest, EndsAtFaultsOfItsInput) {
  const std::string module = "<module id='m' name='m'/>";
  const std::string loose =
      Manifest("<class id=" + Quoted(1) + "><clientside moduleref='n'/></class>");
  root_.Write("broken/.installed", "bits = 1");
  root_.Write("refused/a.tmfx", loose);
  EXPECT_EQ(ScanDirectory("broken"), kBtkMalformed);
  EXPECT_THAT(Calls(), IsEmpty());
  EXPECT_EQ(ScanDirectory("refused"), kBtkUnexpected);
  EXPECT_THAT(Calls(), ElementsAre("RegisterInstallation(\"R\", #0)", "QueryLoadpointId(\"R\")"));
  for (const auto& [manifest, code] : std::vector<std::pair<std::string, BtkErrorT>>{
           {loose, kBtkUnexpected},
           {Manifest("<other/>"), kBtkUnexpected},
           {Manifest(module + module.substr(0, 8) + "name=''/>"), kBtkMalformed}}) {
    platform_.calls = {};
    EXPECT_EQ(ScanProcess(manifest), code) << manifest;
    EXPECT_THAT(Calls(),
                ElementsAre("RegisterProcessLoadpoint(\"/lp\")", "QueryLoadpointId(\"/lp\")"));
  }
  btkFSList missing(0);
  missing.Append(btkFSEntry("/nowhere.tmfx"));
  EXPECT_EQ(ScanLoadpoint(*repo_, BTK_W(""), missing), kBtkMissing);
  EXPECT_EQ(Filed(), 0);

  // The preload pass ends for want of the executable's path once the load point is filed.
  btkHostSetExecutablePath(std::u16string(261, u'x').c_str());
  EXPECT_EQ(ScanProcess(kEverything), kBtkTooLong);
  EXPECT_EQ(Filed(), 1);
  EXPECT_EQ(repo_->GetServiceEntries(nullptr, 0), 0);

  NewRepository();
  btkHostSetDlmManager(nullptr);
  EXPECT_EQ(ScanProcess(kEverything), kBtkNotReady);
  EXPECT_EQ(ScanDirectory("broken"), kBtkNotReady);
  EXPECT_EQ(Filed(), 0);
}

// ---- Preloading --------------------------------------------------------------------------------

TEST_F(ScanTest, PreloadsWhatItsConditionsSay) {
  const UniIdT on = Id(21);
  const UniIdT off = Id(22);
  btkConfEnableOption(&on, 3);
  btkConfEnableOption(&off, 0);
  const std::string onId = " optionid=" + Quoted(21);
  const std::string offId = " optionid=" + Quoted(22);
  struct Row {
    std::string conditions;
    bool alone;      // loaded in a process without session
    bool inService;  // loaded in one of service #5
  };
  const std::vector<Row> rows = {
      {"", false, false},
      {"<preload by='anyone'/>", true, true},
      {"<preload by='anyone'" + onId + "/>", true, true},
      {"<preload by='anyone'" + offId + "/>", false, false},
      {"<preload by='anyone' optionid=" + Quoted(23) + "/>", false, false},  // never set
      {"<preload" + onId + "/>", false, false},                              // by nobody
      {"<preload by='executable' name='viewer'/>", true, true},
      {"<preload by='executable' name='viewers'/>", false, false},
      {"<preload by='service'/>", false, true},
      {"<preload by='service' svcid=" + Quoted(5) + "/>", false, true},
      {"<preload by='service' svcid=" + Quoted(6) + "/>", false, false},
      {"<preload by='service' name='viewer'/>", false, true},
      {"<preload by='service' name='other'/>", false, false},
      {"<preload by='service' name='other' svcid=" + Quoted(5) + "/>", false, false},
      {"<preload by='client'/>", true, false},
      {"<preload by='client' name='viewer'/>", true, false},
      {"<preload by='client' name='other'/>", false, false},
      {"<preload by='client'/><preload by='service'/>", true, true},
      {"<preload by='anyone'" + offId + "/><preload by='anyone'" + onId +
           "/><preload by='anyone'/>",
       true, true},
  };
  std::string modules = "<modules>";
  CallList alone;
  CallList inService;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::string name = "m" + std::to_string(100 + i);
    modules += "<module id='" + name + "' name='" + name + "'>" + rows[i].conditions + "</module>";
    const std::string call = "PreloadModule(\"/lp/native/" + name + "\", 0, 0, null, null)";
    if (rows[i].alone) alone.push_back(call);
    if (rows[i].inService) inService.push_back(call);
  }
  // Only shared libraries that have been found are loaded, from the file for this machine.
  modules +=
      "<module id='e' name='e' type='executable'><preload by='anyone'/></module>"
      "<module id='lost' name='lost'><preload by='anyone'/></module>"
      "<module id='s' name='s' type='SHAREDLIB'><preload by='anyone'/>"
      "<platformmodule machinetype='x64' name='own'><preload by='client'/></platformmodule>"
      "<platformmodule machinetype='x86' name='s86'><preload by='anyone'/></platformmodule>"
      "</module></modules>";
  alone.push_back("PreloadModule(\"/lp/native/own\", 0, 0, null, null)");
  platform_.Refuse("ResolveModule(\"lost\"", kBtkNotFound);
  EXPECT_EQ(ScanProcess(Manifest(modules)), kBtkOk);
  EXPECT_THAT(Calls({"PreloadModule"}), ElementsAreArray(alone));

  NewRepository();
  const SessionFake session(5);
  EXPECT_EQ(ScanProcess(Manifest(modules)), kBtkOk);
  EXPECT_THAT(Calls({"PreloadModule"}), ElementsAreArray(inService));
}

// ---- Classes and services ----------------------------------------------------------------------

// One class, what the service manager is asked about it, and what is filed.
struct ClassRow {
  std::string attributes;
  std::string sides;
  CallList questions;
  std::string filed;  // "MULTIPLICITY VERSION [service]", empty: nothing
};

TEST_F(ScanTest, FilesClassesThatTheirOwnServicesHost) {
  const std::string side = "<serviceside moduleref='m' ";
  const std::string client = "<clientside moduleref='m'/>";
  const auto resolve = [](const char* name, int version) {
    return "ResolveExternalService(\"" + std::string(name) + "\", " + std::to_string(version) +
           ", 0, \"/lp\")";
  };
  const auto versions = [](int id) {
    return "QueryServiceVersions(#" + std::to_string(id) + ", \"/lp\")";
  };
  const std::string offer = "svcid=" + Quoted(40) + " ";
  const std::string by3 = "xsid=" + Quoted(3);
  const std::vector<ClassRow> rows = {
      {"", side + offer + "xsname='to3'/>", {}, ""},  // no name to file it under
      {"commonname='C'", side + offer + by3 + "/>", {versions(3)}, "1 4"},
      {"commonname='C'", side + offer + by3 + " multiplicity='perLdp'/>", {versions(3)}, "3 4"},
      {"commonname='C'", side + offer + by3 + " exposed='yes'/>", {versions(3)}, "1 4 service"},
      {"commonname='C'", client + "<serviceside " + by3 + "/>", {}, "2 0"},  // that of the role
      {"commonname='C'", client + "<serviceside " + by3 + " exposed='yes'/>", {}, "2 0"},
      {"commonname='C'", client + "<serviceside xsid=" + Quoted(4) + "/>", {}, "0 0"},
      {"commonname='C'",
       side + offer + "xsid=" + Quoted(9) + " exposed='yes'/>",
       {versions(9)},
       ""},
      {"commonname='C'",
       side + offer + "xsid=" + Quoted(5) + " exposed='yes'/>",
       {versions(5)},
       ""},
      {"commonname='C'", side + offer + "xsname='to3'/>", {resolve("to3", 1), versions(3)}, "1 4"},
      {"commonname='C'",
       side + offer + "xsname='to3' xsversion='3'/>",
       {resolve("to3", -3), versions(3)},
       "1 4"},
      {"commonname='C'",
       side + offer + "xsname='to3' xsversion='0'/>",
       {resolve("to3", 0), versions(3)},
       "1 4"},
      {"commonname='C'", side + offer + "xsname='to9'/>", {resolve("to9", 1), versions(9)}, ""},
      {"commonname='C'", side + offer + "xsname='bad'/>", {resolve("bad", 1)}, ""},
      {"commonname='C'", side + offer + "/>", {resolve("GenLWSC", 0), versions(4)}, "1 4"},
      {"commonname='C' managedtype='worker'",
       side + "exposed='yes'/>",
       {resolve("GenLWSC", 0), versions(4)},
       "1 4 service"},
      {"commonname='C'", client, {}, ""},
  };
  platform_.externalService = [](UniIdT* id, const char* name) {
    *id = Id(std::string_view(name) == "GenLWSC" ? 4 : static_cast<unsigned>(name[2] - '0'));
  };
  platform_.Refuse("ResolveExternalService(\"bad\"", kRefusal);
  platform_.Refuse("QueryServiceVersions(#5", kRefusal);
  for (const ClassRow& row : rows) {
    NewRepository();
    const std::string roles = "<service id=" + Quoted(3) +
                              " multiplicity='perProcess'/>"
                              "<service id=" +
                              Quoted(3) +
                              " multiplicity='perLdp'/>"
                              "<service id=" +
                              Quoted(5) +
                              "/>"
                              "<service id=" +
                              Quoted(4) + " multiplicity='alwaysNew'/>";
    const std::string manifest =
        Manifest("<module id='m' name='m'/><class id=" + Quoted(50) + " affinity='service' " +
                 row.attributes + ">" + row.sides + "</class><runnable moduleref='m'>" + roles +
                 "</runnable>");
    ASSERT_EQ(ScanProcess(manifest), kBtkOk) << manifest;
    EXPECT_THAT(Calls(kQuestions), ElementsAreArray(row.questions)) << manifest;
    const MfSvcResolveT* const entry = repo_->FindClassImpl(nullptr, "C", 0, 0);
    std::string filed;
    if (entry != nullptr) {
      filed = std::to_string(entry->multiplicity) + " " + std::to_string(entry->versionKey / 2);
      MfSvcResolveT service;
      if (repo_->GetServiceEntries(&service, 1) == 1) {
        filed += " service";
        const UniIdT& id = entry->record->ids[kMfServiceSide];
        EXPECT_TRUE(service.record == entry->record && service.key == entry->key &&
                    service.multiplicity == entry->multiplicity &&
                    service.versionKey == entry->versionKey &&
                    btkUniIdIsEqual(&service.ids[kMfServiceId], &id));
      }
    }
    EXPECT_EQ(filed, row.filed) << manifest;
  }
}

TEST_F(ScanTest, FilesExposedServices) {
  const std::string manifest = Manifest(
      "<module id='m' name='m'/><runnables><runnable moduleref='m'>"
      "<service id=" +
      Quoted(1) +
      " commonname='hidden'/>"
      "<service id=" +
      Quoted(2) +
      " commonname='one' exposed='yes'/>"
      "<service id=" +
      Quoted(3) +
      " commonname='refused' exposed='yes'/>"
      "<service id=" +
      Quoted(4) +
      " exposed='yes'/></runnable><runnable moduleref='m'>"
      "<service id=" +
      Quoted(2) +
      " commonname='again' exposed='yes' multiplicity='perLdp'/>"
      "</runnable></runnables>");
  platform_.Refuse("QueryServiceVersions(#3", kRefusal);
  ASSERT_EQ(ScanProcess(manifest), kBtkOk);
  EXPECT_THAT(
      Calls(kQuestions),
      ElementsAre("QueryServiceVersions(#2, \"/lp\")", "QueryServiceVersions(#3, \"/lp\")",
                  "QueryServiceVersions(#4, \"/lp\")", "QueryServiceVersions(#2, \"/lp\")"));
  std::vector<MfSvcResolveT> entries(2);
  ASSERT_EQ(repo_->GetServiceEntries(entries.data(), 2), 2);
  CallList filed;
  for (const MfSvcResolveT& entry : entries) {
    EXPECT_TRUE(entry.record == nullptr && entry.versionKey == 8);
    filed.push_back(IdText(entry.ids[kMfServiceId]) + entry.key +
                    std::to_string(entry.multiplicity));
  }
  EXPECT_THAT(filed, testing::UnorderedElementsAre("#2again3", "#41"));

  // Without a service manager the publisher cannot register services; classes that need not ask
  // are filed all the same.
  NewRepository();
  btkHostSetServiceManager(nullptr);
  EXPECT_EQ(ScanProcess(manifest), kBtkMissing);
  EXPECT_EQ(Filed(), 1);
  EXPECT_EQ(repo_->GetServiceEntries(nullptr, 0), 0);
}

}  // namespace
}  // namespace tarnmf
