// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/file_uri.h"

#include <gtest/gtest.h>
#include <vector>

namespace tool {

struct Named {
  std::string_view path;
  std::string_view uri;
};

TEST(FileUriTest, NamesFilesAsSystemsWithAndWithoutDrivesDo) {
  const std::vector<Named> named[] = {
      {{"/c:/x", "file:///c%3A/x"}, {"/a\\(%4", "file:///a%5C%28%254"}, {"//a", "file:////a"}},
      {{"c:/a b/x", "file:///c:/a%20b/x"},
       {"Z:/:x", "file:///Z:/%3Ax"},
       {"//server/\xc3\xa4/x", "file://server/%C3%A4/x"},
       {"//wsl$/x", "file://wsl%24/x"}}};
  for (const bool hasDrives : {false, true}) {
    for (const auto& [path, uri] : named[hasDrives ? 1 : 0]) {
      EXPECT_EQ(UriOfPath(path, hasDrives), uri);
      EXPECT_EQ(PathOfUri(uri, hasDrives), path);
    }
    for (const char* const uri :
         {"file://a", "http:///a", "file:///%", "file:///%zz", "file:///%00"})
      EXPECT_EQ(PathOfUri(uri, hasDrives), std::nullopt) << uri;
  }
  EXPECT_EQ(PathOfUri("file://server/x", false), std::nullopt);
  for (const char* const uri : {"file:///c%3A/x", "file:///c%3a/x", "file://localhost/c:/x"})
    EXPECT_EQ(PathOfUri(uri, true), "c:/x") << uri;
  EXPECT_EQ(UriOfPath("c:\\a\\x", true), "file:///c:/a/x");
  EXPECT_EQ(UriOfPath("\\\\server\\a\\x", true), "file://server/a/x");
  EXPECT_EQ(UriOfPath("a\\x", true), "a/x");
  EXPECT_EQ(UriOfPath("a\\x", false), "a%5Cx");
}

}  // namespace tool
