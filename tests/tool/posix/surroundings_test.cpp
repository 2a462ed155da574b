// SPDX-License-Identifier: Apache-2.0
// What the tool makes of outputs that take nothing, files that are none, and documents that want a
// connection: it ends, with a status and a sentence, whatever it meets.
#include <arpa/inet.h>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/temp_directory.h"
#include "tests/tool/run_tool.h"

namespace tarnmf::test {
namespace {

constexpr char kEmpty[] = "<tarnmanifest version=\"1\"/>";
constexpr char kUnclosed[] = "<tarnmanifest version=\"1\">";

// What is left of a command that would go on for ever.
constexpr char kAtMost[] = "timeout 60 " TARNMF_TOOL " ";

TEST(Surroundings, NoOutputEndsInASignal) {
  const TempDirectory directory;
  directory.Write("pack/a.tmfx", kUnclosed);
  const std::string check = fmt::format("check {}/pack", directory.At());
  struct Row {
    std::string arguments;
    const char* streams;
  };
  for (const Row& row : {Row{"check no-such-directory", "2>&-"},
                         {"check no-such-directory", "2>/dev/full"},
                         {"no-such-command", ">&- 2>&-"},
                         {fmt::format("scan --add {}/pack", directory.At()), "2>&-"},
                         {"--help", ">/dev/full"},
                         {"--version", ">/dev/full"},
                         {"list loadpoints", ">/dev/full"},
                         {"explain 42", ">/dev/full"},
                         {"explain 42", ">&-"},
                         {check, ">/dev/full 2>/dev/full"},
                         {check, "<&- >&- 2>&-"}})
    EXPECT_EQ(RunTool(row.arguments + " " + row.streams).status, 1)
        << row.arguments << " " << row.streams;
}

TEST(Surroundings, AReaderThatHasHadEnoughIsNoSignal) {
  // More than a pipe holds.
  const Outcome outcome = RunCommand("{ for i in 1 2 3 4; do " TARNMF_TOOL
                                     " explain --page; echo $? >&2; done; } | head -c 1");
  EXPECT_EQ(outcome.errors.substr(outcome.errors.size() - 4), "1\n1\n") << outcome.errors;
}

TEST(Surroundings, WhatIsNoFileIsToldAndNotWaitedFor) {
  struct Row {
    const char* name;
    void (*make)(const std::filesystem::path& path);
    const char* told;  // empty: nothing, since everything is read
  };
  const Row rows[] = {
      {"b.tmfx",
       [](const std::filesystem::path& path) { ASSERT_EQ(mkfifo(path.c_str(), 0600), 0); },
       "b.tmfx:1:1: error: this is taken for not being there: this is no regular file"},
      {"b.tmfx",
       [](const std::filesystem::path& path) {
         std::filesystem::create_symlink("no-such-file", path);
       },
       "b.tmfx:1:1: error: this is taken for not being there: the link leads nowhere"},
      {"b.tmfx",
       [](const std::filesystem::path& path) { std::filesystem::create_symlink("b.tmfx", path); },
       "b.tmfx:1:1: error: this is taken for not being there: Too many levels of symbolic links"},
      {".installed",
       [](const std::filesystem::path& path) { ASSERT_EQ(mkfifo(path.c_str(), 0600), 0); },
       ".installed:1:1: error: the base and the scope that it gives are not read: this is no "
       "regular file"},
      {".installed", [](const std::filesystem::path& path) { create_directory(path); },
       ".installed:1:1: error: the base and the scope that it gives are not read: this is a "
       "directory"},
      {"folder.tmfx", [](const std::filesystem::path& path) { create_directory(path); }, ""},
  };
  for (const Row& row : rows) {
    const TempDirectory directory;
    directory.Write("pack/a.tmfx", kEmpty);
    row.make(directory.Path() / "pack" / row.name);
    const std::string pack = directory.At("pack");
    for (const std::string& command :
         {"check " + pack, "scan --add " + pack, "list classes --add " + pack}) {
      const Outcome outcome = RunCommand(kAtMost + command);
      EXPECT_EQ(outcome.status, *row.told == '\0' ? 0 : 1) << command << " with " << row.told;
      EXPECT_NE((outcome.out + outcome.errors).find(row.told), std::string::npos)
          << command << ": " << outcome.out << outcome.errors;
    }
  }
}

TEST(Surroundings, APipeThatIsNamedIsRead) {
  const TempDirectory directory;
  const std::string pipe = directory.At("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const Outcome read = RunCommand(
      fmt::format("{{ sleep 0.2; echo '{}' >{}; }} & {} read {}", kEmpty, pipe, kAtMost, pipe));
  EXPECT_EQ(read.status, 0) << read.errors;
  EXPECT_NE(read.out.find("\"code\": 0"), std::string::npos) << read.out;
  const Outcome scan = RunCommand(fmt::format("{} scan {}", kAtMost, pipe));
  EXPECT_EQ(scan.status, 2);
  EXPECT_EQ(scan.errors,
            fmt::format("tarnmf: {} is a pipe or a device, which cannot be read twice\n", pipe));
}

// A port of this machine at which somebody listens.
class Listener {
 public:
  Listener() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
    address_.sin_family = AF_INET;
    address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address_;
    auto* const address = reinterpret_cast<sockaddr*>(&address_);
    EXPECT_EQ(bind(socket_, address, size), 0);
    EXPECT_EQ(listen(socket_, 8), 0);
    EXPECT_EQ(getsockname(socket_, address, &size), 0);
  }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  ~Listener() { close(socket_); }

  std::uint16_t Port() const { return ntohs(address_.sin_port); }
  bool HasBeenCalled() const {
    const int call = accept(socket_, nullptr, nullptr);
    if (call != -1) close(call);
    return call != -1;
  }

 private:
  const int socket_;
  sockaddr_in address_{};
};

TEST(Surroundings, NoDocumentOpensAConnection) {
  const Listener listener;
  const TempDirectory directory;
  for (const char* protocol : {"http", "ftp"}) {
    const std::string address = fmt::format("{}://127.0.0.1:{}/x", protocol, listener.Port());
    directory.Write("pack/a.tmfx",
                    fmt::format("<!DOCTYPE tarnmanifest SYSTEM \"{}\">{}", address, kEmpty));
    directory.Write("pack/b.tmfx", fmt::format("<!DOCTYPE tarnmanifest [<!ENTITY e SYSTEM \"{}\">]>"
                                               "<tarnmanifest version=\"1\">&e;</tarnmanifest>",
                                               address));
    const std::string pack = directory.At("pack");
    for (const std::string& command : {"read " + pack + "/a.tmfx", "read " + pack + "/b.tmfx",
                                       "scan --add " + pack, "check " + pack}) {
      const Outcome outcome = RunCommand(kAtMost + command);
      EXPECT_EQ(outcome.status, 1) << command;
      EXPECT_NE((outcome.out + outcome.errors).find(address), std::string::npos) << command;
      EXPECT_FALSE(listener.HasBeenCalled()) << command;
    }
  }
}

}  // namespace
}  // namespace tarnmf::test
