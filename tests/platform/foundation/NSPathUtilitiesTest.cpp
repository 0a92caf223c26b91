#include "platform/foundation/NSPathUtilities.h"

#include <gtest/gtest.h>

#include "platform/foundation/NSFileManager.h"

namespace {

TEST(NSPathUtilitiesTest, EachDirectoryKindLivesUnderTheHomeInTheUsersDomainOnlyAndNoHomeMeansNone) {
  EXPECT_EQ(NSHomeDirectory(), "");
  EXPECT_TRUE(NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, true).empty());
  EXPECT_TRUE(NSFileManager::defaultManager()
                  .URLsForDirectoryInDomains(NSDocumentDirectory, NSUserDomainMask)
                  .empty());

  setApplicationHomeDirectory("/data/app home/");
  EXPECT_EQ(NSHomeDirectory(), "/data/app home");
  struct Row {
    NSSearchPathDirectory directory;
    const char* expanded;
    const char* tilde;
  };
  for (const Row& row : {Row{NSDocumentDirectory, "/data/app home/Documents", "~/Documents"},
                         Row{NSLibraryDirectory, "/data/app home/Library", "~/Library"},
                         Row{NSCachesDirectory, "/data/app home/Library/Caches", "~/Library/Caches"},
                         Row{NSApplicationSupportDirectory, "/data/app home/Library/Application Support",
                             "~/Library/Application Support"}}) {
    EXPECT_EQ(NSSearchPathForDirectoriesInDomains(row.directory, NSUserDomainMask, true),
              (std::vector<std::string>{row.expanded}));
    EXPECT_EQ(NSSearchPathForDirectoriesInDomains(row.directory, NSUserDomainMask, false),
              (std::vector<std::string>{row.tilde}));
  }
  EXPECT_TRUE(NSSearchPathForDirectoriesInDomains(NSDocumentDirectory,
                                                  static_cast<NSSearchPathDomainMask>(8), true)
                  .empty());
  auto urls = NSFileManager::defaultManager().URLsForDirectoryInDomains(NSDocumentDirectory,
                                                                          NSUserDomainMask);
  ASSERT_EQ(urls.size(), 1u);
  EXPECT_EQ(urls[0].absoluteString(), "file:///data/app%20home/Documents/");
  EXPECT_EQ(urls[0].path(), "/data/app home/Documents");
}

}  // namespace
