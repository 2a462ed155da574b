// What a scan asks of the platform, and what it leaves filed.
#include "repository/scan.h"

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
#include "tests/support/case_file.h"
#include "tests/support/documents.h"
#include "tests/support/recording_managers.h"
#include "tests/support/temp_directory.h"

namespace tarnmf {
namespace {

using test::DocumentOf;
using test::FileCase;
using test::WithIds;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using CallList = std::vector<std::string>;

constexpr auto kRefusal = static_cast<BtkErrorT>(77);

constexpr char kEverything[] =
    "<module id='m' name='lib'><preload by='anyone'/></module>"
    "<class id='$1' affinity='service' commonname='C'>"
    "<serviceside moduleref='m' svcid='$2' xsname='S' exposed='true'/></class>"
    "<runnable moduleref='m'><app nameid='a'/>"
    "<service id='$3' commonname='S' exposed='true'/></runnable>";
constexpr char kLoose[] = "<class id='$1'><clientside moduleref='n'/></class>";

// The id that documents write as $1 to $9.
UniIdT Id(char digit) {
  UniIdT id{};
  EXPECT_EQ(btkUniIdParse(&id, WithIds({'$', digit}).c_str(), kBtkUniIdDashedLength, nullptr,
                          kBtkUniIdDashed),
            kBtkOk);
  return id;
}

std::string OperationOf(const std::string& call) {
  return call.substr(0, call.find('('));
}

std::string Joined(const CallList& calls) {
  std::string text;
  for (const std::string& call : calls)
    text += (text.empty() ? "" : "; ") + call;
  return text;
}

std::string PreloadCall(const std::string& path) {
  return "PreloadModule(\"" + path + "\", 0, 0, null, null)";
}

class SessionFake : public btkSvcSession {
 public:
  SessionFake() { btkHostSetServiceSession(this); }
  ~SessionFake() override { btkHostSetServiceSession(nullptr); }
  UniIdT GetServiceId() override { return Id('5'); }
};

class ScanTest : public testing::Test {
 protected:
  ScanTest() {
    btkHostSetProcessLoadpoint(BTK_W("/lp"));
    btkHostSetExecutablePath(BTK_W("/bin/viewer"));
    platform_.externalService = [](std::string_view) { return Id('3'); };
    platform_.serviceVersion = 4;
  }
  ~ScanTest() override {
    DiscardProcessRepository();
    btkHostSetProcessLoadpoint(nullptr);
    btkHostSetExecutablePath(nullptr);
  }

  void NewRepository() {
    repo_.reset(new liMfRepoBaseImpl);
    platform_.calls = {};
  }
  static void DiscardProcessRepository() { RepositoryPtr(std::exchange(g_repository, nullptr)); }

  btkFSList ProcessFiles(const std::string& content) {
    btkFSList files(0);
    files.Append(btkFSEntry(root_.Write("process.tmfx", DocumentOf(content)).c_str()));
    return files;
  }
  BtkErrorT ScanProcess(const std::string& content) {
    return ScanLoadpoint(*repo_, nullptr, ProcessFiles(content));
  }
  BtkErrorT ScanDirectory(const std::string& name) {
    const btkFSPath path((root_.Path() / name).c_str());
    return ScanLoadpoint(*repo_, path.WideText(), btkFSList(0));
  }

  std::int32_t Filed() { return repo_->GetLoadpointIds(nullptr, 0); }

  // The temporary directory is written as R, and ids as in documents.
  std::string Short(std::string text) {
    const auto replace = [&text](const std::string& from, const std::string& to) {
      for (std::size_t at; (at = text.find(from)) != std::string::npos;)
        text.replace(at, from.size(), to);
    };
    replace(root_.Path().native(), "R");
    for (const char digit : std::string_view("123456789"))
      replace(WithIds({'$', digit}), {'$', digit});
    return text;
  }
  // The calls of these operations.
  CallList Calls(const std::set<std::string>& operations) {
    CallList calls;
    for (const std::string& call : platform_.calls) {
      if (operations.contains(OperationOf(call))) calls.push_back(Short(call));
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

TEST_F(ScanTest, AnnouncesAnInstallation) {
  // The machine types are those of the start, whatever becomes of them meanwhile.
  platform_.onCall = [] { btkHostSetMachineTypes("later", "later"); };
  struct Row {
    const char* bits;
    CallList layouts;  // machine type and text
  };
  for (const Row& row :
       std::vector<Row>{{"", {"x64 0", "x86 32", "x64 64", "x86 3264"}},
                        {"bits = 64\n", {"x64 0", "x86 32", "x64 64", "x86 3264"}},
                        {"bits = 32\n", {"x86 0", "x86 32", "x64 64", "x86 3264", "x64 6432"}},
                        {"bits = 16\n", {"x86 32", "x64 64", "x86 3264"}}}) {
    btkHostSetMachineTypes("x64", "x86");
    NewRepository();
    root_.Write("i/.installed",
                row.bits + WithIds("base = \"b\"\nscope = $9\nlayout += 0 {\"0\"}\n"
                                   "layout += 32 {\"32\"}\n"
                                   "layout += 64 {\"64\"|\"t\"|\"a\",\"b\"||\"c\"}\n"
                                   "layout += 3264 {\"3264\"}\nlayout += 6432 {\"6432\"}\n"
                                   "layout += 16 {\"16\"}\n"));
    EXPECT_EQ(ScanDirectory("i"), kBtkOk);
    CallList expected;
    for (const std::string& layout : row.layouts) {
      const std::string text = layout.substr(4);
      expected.push_back("RegisterLayout(\"R/i/b/\", \"" + layout.substr(0, 3) + "\", \"" + text +
                         (text == "64" ? "\", \"t\", [\"a\", \"b\"], [], [\"c\"], false)"
                                       : "\", null, [], [], [], false)"));
    }
    expected.push_back("RegisterInstallation(\"R/i/b/\", $9)");
    expected.push_back("QueryLoadpointId(\"R/i/b/\")");
    EXPECT_THAT(Calls(kAnnouncements), ElementsAreArray(expected)) << row.bits;
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
  EXPECT_EQ(std::u16string(data.loadpoint), btkFSPath((root_.Path() / "p").c_str()).WideText());

  platform_.calls = {};
  EXPECT_EQ(ScanDirectory("p/d"), kBtkDuplicate);
  EXPECT_EQ(ScanDirectory("p/sibling"), kBtkDuplicate);  // its base is the same parent
  EXPECT_THAT(platform_.calls, IsEmpty());
}

TEST_F(ScanTest, AnnouncesTheProcess) {
  platform_.processScope = Id('8');
  const UniIdT service = Id('3');
  struct Row {
    std::u16string path;
    const char* announced;
    const char* filed;
    const char* library;
  };
  for (const Row& row :
       {Row{u"/lp", "\"/lp\"", "/lp", "/lp/native/lib"}, Row{u"", "null", "", "/native/lib"},
        Row{std::u16string(261, u'x'), "null", "", "/native/lib"}}) {
    NewRepository();
    btkHostSetProcessLoadpoint(row.path.c_str());
    EXPECT_EQ(ScanProcess(kEverything), kBtkOk);
    EXPECT_THAT(Calls(kAnnouncements),
                ElementsAre("RegisterProcessLoadpoint(" + std::string(row.announced) + ")",
                            "QueryLoadpointId(" + std::string(row.announced) + ")",
                            PreloadCall(row.library)));
    EXPECT_NE(repo_->FindService(&service, btkFSPath(row.filed).WideText()), nullptr);
    EXPECT_EQ(repo_->FindClassImpl(nullptr, "C", 0, 0), nullptr);  // it has a scope
    EXPECT_NE(repo_->FindClassImpl(&platform_.processScope, "C", 4, 0), nullptr);
  }
}

// Each call of a whole scan fails in turn.
TEST_F(ScanTest, StopsWhereThePlatformRefuses) {
  root_.Write("i/.installed", "base = \"b\"\nlayout += 64 {}\n");
  root_.Write("i/a.tmfx", DocumentOf(kEverything));
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
      const std::string operation = OperationOf(whole[i]);
      if (!seen.insert(operation).second) continue;
      NewRepository();
      platform_.Refuse(whole[i], kRefusal);
      const BtkErrorT code = scan();
      platform_.RefuseNothing();
      const bool stops = filedAfter.contains(operation);
      EXPECT_EQ(code, stops ? kRefusal : kBtkOk) << operation;
      EXPECT_EQ(Filed(), !stops || filedAfter.at(operation) ? 1 : 0) << operation;
      if (stops) {
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

    // An exception of any call passes through, and nothing is lost.
    const auto discard = [&] {
      repo_.reset();
      platform_.calls = {};
      return test::LiveAllocations();
    };
    const std::int64_t live = discard();
    for (std::size_t i = 0; i < whole.size(); ++i) {
      NewRepository();
      platform_.ThrowAt(static_cast<int>(i));
      EXPECT_THROW(IgnoreRefusal(scan()), test::PlatformException) << whole[i];
      EXPECT_EQ(discard(), live) << whole[i];
    }
  }
}

TEST_F(ScanTest, AdmitsOneInitializeAtATime) {
  const btkFSList files = ProcessFiles(kEverything);
  platform_.ThrowAt(4);  // the load point is filed by now
  EXPECT_THROW(IgnoreRefusal(liMfRepository::Initialize(files, nullptr)), test::PlatformException);
  EXPECT_EQ(liMfRepository::Instance(), nullptr);
  platform_.calls = {};
  ASSERT_EQ(liMfRepository::Initialize(files, nullptr), kBtkOk);
  const CallList whole = std::exchange(platform_.calls, {});
  DiscardProcessRepository();
  platform_.onCall = [&] {
    EXPECT_EQ(liMfRepository::Instance(), nullptr);
    EXPECT_EQ(liMfRepository::Initialize(files, nullptr), kBtkMissing);
  };
  EXPECT_EQ(liMfRepository::Initialize(files, nullptr), kBtkOk);
  EXPECT_EQ(platform_.calls, whole);
}

TEST_F(ScanTest, StopsAtFaultsOfItsInput) {
  root_.Write("broken/.installed", "bits = 1");
  root_.Write("refused/a.tmfx", DocumentOf(kLoose));
  EXPECT_EQ(ScanDirectory("broken"), kBtkMalformed);
  EXPECT_THAT(platform_.calls, IsEmpty());
  EXPECT_EQ(ScanDirectory("refused"), kBtkUnexpected);
  EXPECT_EQ(platform_.calls.size(), 2U);
  EXPECT_EQ(ScanProcess(kLoose), kBtkUnexpected);
  EXPECT_EQ(ScanProcess("<module id='m' name='m'/><module name=''/>"), kBtkMalformed);
  btkFSList missing(0);
  missing.Append(btkFSEntry("/nowhere.tmfx"));
  EXPECT_EQ(ScanLoadpoint(*repo_, BTK_W(""), missing), kBtkMissing);
  EXPECT_EQ(platform_.calls.size(), 8U);
  EXPECT_EQ(Filed(), 0);

  // Once the load point is filed, the preload pass fails for want of the executable's path, and the
  // publisher for want of the service manager.
  btkHostSetExecutablePath(std::u16string(261, u'x').c_str());
  EXPECT_EQ(ScanProcess(kEverything), kBtkTooLong);
  EXPECT_EQ(Filed(), 1);
  NewRepository();
  btkHostSetServiceManager(nullptr);
  EXPECT_EQ(ScanProcess(kEverything), kBtkMissing);
  EXPECT_EQ(Filed(), 1);
  EXPECT_EQ(repo_->GetServiceEntries(nullptr, 0), 0);
  NewRepository();
  btkHostSetDlmManager(nullptr);
  EXPECT_EQ(ScanProcess(kEverything), kBtkNotReady);
  EXPECT_EQ(ScanDirectory("broken"), kBtkNotReady);
  EXPECT_EQ(Filed(), 0);
}

TEST_F(ScanTest, PreloadsWhatItsConditionsSay) {
  const UniIdT on = Id('1');
  const UniIdT off = Id('2');
  btkConfEnableOption(&on, 3);
  btkConfEnableOption(&off, 0);
  // Only shared libraries that have been found are loaded, from the file for this machine.
  std::string modules =
      "<modules><module id='e' name='e' type='executable'><preload by='anyone'/></module>"
      "<module id='lost' name='lost'><preload by='anyone'/></module>"
      "<module id='s' name='s' type='SHAREDLIB'><preload by='anyone'/>"
      "<platformmodule machinetype='x64' name='own'><preload by='client'/></platformmodule>"
      "<platformmodule machinetype='x86' name='s86'><preload by='anyone'/></platformmodule>"
      "</module>";
  platform_.Refuse("ResolveModule(\"lost\"", kBtkNotFound);
  std::map<std::string, CallList> expected;
  expected["alone"] = expected["nameless"] = {PreloadCall("/lp/native/own")};
  for (const FileCase& row : test::ReadCaseFile(TARNMF_REPOSITORY_CASES "preload.cases")) {
    const std::string name = row.name.substr(row.name.find(':') + 1);
    modules += "<module id='" + name + "' name='" + name + "'>" + row.input + "</module>";
    for (const char* process : {"alone", "service", "nameless"}) {
      if (row.result.find(process) != std::string::npos)
        expected[process].push_back(PreloadCall("/lp/native/" + name));
    }
  }
  modules += "</modules>";
  const auto loaded = [&] {
    NewRepository();
    EXPECT_EQ(ScanProcess(modules), kBtkOk);
    return Calls({"PreloadModule"});
  };
  EXPECT_EQ(loaded(), expected["alone"]);
  {
    const SessionFake session;
    EXPECT_EQ(loaded(), expected["service"]);
  }
  btkHostSetExecutablePath(BTK_W("/"));
  EXPECT_EQ(loaded(), expected["nameless"]);
}

TEST_F(ScanTest, FilesHostedClassesAndExposedServices) {
  platform_.externalService = [](std::string_view name) {
    return Id(name == "GenLWSC" ? '4' : name[2]);
  };
  platform_.Refuse("ResolveExternalService(\"bad\"", kRefusal);
  platform_.Refuse(WithIds("QueryServiceVersions($5"), kRefusal);
  const auto dump = [](const MfSvcResolveT& entry) {
    return " " + std::to_string(entry.multiplicity) + " " + std::to_string(entry.versionKey / 2);
  };
  for (const FileCase& row : test::ReadCaseFile(TARNMF_REPOSITORY_CASES "indexing.cases")) {
    NewRepository();
    EXPECT_EQ(ScanProcess("<module id='m' name='m'/>" + row.input +
                          "<runnable moduleref='m'><service id='$3' multiplicity='perProcess'/>"
                          "<service id='$3' multiplicity='perLdp'/><service id='$5'/>"
                          "<service id='$4' multiplicity='alwaysNew'/></runnable>"),
              kBtkOk);
    CallList result = Calls({"ResolveExternalService", "QueryServiceVersions"});
    const std::size_t questions = result.size();
    const MfSvcResolveT* const entry = repo_->FindClassImpl(nullptr, "C", 0, 0);
    if (entry != nullptr) result.push_back("class" + dump(*entry));
    std::vector<MfSvcResolveT> services(
        static_cast<std::size_t>(repo_->GetServiceEntries(nullptr, 0)));
    repo_->GetServiceEntries(services.data(), static_cast<std::int32_t>(services.size()));
    for (const MfSvcResolveT& service : services) {
      result.push_back("service " + std::string(service.key) + " " +
                       Short(test::IdText(service.ids[kMfServiceId])) + dump(service));
      if (service.record != nullptr && service.record == entry->record) result.back() += " C";
    }
    if (result.size() == questions) result.push_back("nothing filed");
    EXPECT_EQ(Joined(result), row.result) << row.name;
  }
}

}  // namespace
}  // namespace tarnmf
