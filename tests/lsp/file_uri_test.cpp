#include "tools/tarnmf/file_uri.h"

#include <gtest/gtest.h>

namespace tool {
namespace {

constexpr bool kWithDrives = true;

struct Named {
  std::string_view path;
  std::string_view uri;
};

TEST(FileUriTest, PathsComeBackFromTheirUris) {
  const Named everywhere[] = {{"/a b/%41#?.tmfx", "file:///a%20b/%2541%23%3F.tmfx"},
                              {"/\xc3\xa4/(1)~x", "file:///%C3%A4/%281%29~x"}};
  const Named withDrives[] = {{"c:/a b/x.tmfx", "file:///c:/a%20b/x.tmfx"},
                              {"Z:/:x", "file:///Z:/%3Ax"},
                              {"//server/share/x", "file://server/share/x"},
                              {"//wsl$/home/x", "file://wsl%24/home/x"}};
  const Named withoutDrives[] = {{"/c:/x", "file:///c%3A/x"}, {"/a\\b", "file:///a%5Cb"}};
  const auto expect = [](const Named& named, bool hasDrives) {
    EXPECT_EQ(UriOfPath(named.path, hasDrives), named.uri);
    EXPECT_EQ(PathOfUri(named.uri, hasDrives), named.path);
  };
  for (const Named& named : everywhere) {
    expect(named, kWithDrives);
    expect(named, !kWithDrives);
  }
  for (const Named& named : withDrives)
    expect(named, kWithDrives);
  for (const Named& named : withoutDrives)
    expect(named, !kWithDrives);
}

TEST(FileUriTest, PathsAreWrittenInMoreThanOneWay) {
  for (const char* const uri :
       {"file:///c:/x", "file:///c%3A/x", "file:///c%3a/x", "file://localhost/c:/x"})
    EXPECT_EQ(PathOfUri(uri, kWithDrives), "c:/x") << uri;
  EXPECT_EQ(UriOfPath("c:\\a\\x", kWithDrives), "file:///c:/a/x");
  EXPECT_EQ(UriOfPath("\\\\server\\share\\x", kWithDrives), "file://server/share/x");
  // Relative ones stay so.
  EXPECT_EQ(UriOfPath("a\\x", kWithDrives), "a/x");
  EXPECT_EQ(UriOfPath("a\\x", !kWithDrives), "a%5Cx");
  EXPECT_EQ(UriOfPath("c:x/y", !kWithDrives), "c%3Ax/y");
}

TEST(FileUriTest, SomeUrisNameNoFile) {
  for (const char* const uri : {"", "file:", "file://", "file://host", "untitled:x", "http:///x",
                                "file:///%", "file:///%0", "file:///%zz", "file:///%00"}) {
    EXPECT_EQ(PathOfUri(uri, kWithDrives), std::nullopt) << uri;
    EXPECT_EQ(PathOfUri(uri, !kWithDrives), std::nullopt) << uri;
  }
  EXPECT_EQ(PathOfUri("file://server/x", !kWithDrives), std::nullopt);
  EXPECT_EQ(PathOfUri({"file:///\0", 9}, !kWithDrives), std::nullopt);
}

}  // namespace
}  // namespace tool
