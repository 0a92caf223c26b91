#include "backends/desktop/Trash.h"

#include <gtest/gtest.h>

#include <regex>

#include "DesktopTestSupport.h"
#include "backends/desktop/index/FileUri.h"

namespace nimbrel::desktop {
namespace {

using namespace testing;

TEST(TrashTest, MovesTheFileItselfAndWritesItsTrashInfo) {
  TempFolder home;
  fs::create_directories(home / "Pictures/My Trip");
  std::string original = home / "Pictures/My Trip/été #1.jpg";
  std::ofstream(original) << "the user's bytes";
  ino_t inode = inodeOf(original);
  ASSERT_NE(inode, 0u);

  Trash trash(home / "data/Trash");
  auto moved = trash.moveToTrash(original);
  ASSERT_TRUE(moved);
  EXPECT_FALSE(fs::exists(original));
  EXPECT_EQ(moved->trashed, home / "data/Trash/files/été #1.jpg");
  EXPECT_EQ(inodeOf(moved->trashed), inode) << "renamed, not copied and unlinked";
  EXPECT_EQ(readText(moved->trashed), "the user's bytes");

  std::string info = readText(home / "data/Trash/info/été #1.jpg.trashinfo");
  std::smatch m;
  ASSERT_TRUE(std::regex_match(info, m, std::regex("\\[Trash Info\\]\nPath=(.*)\nDeletionDate=(\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d)\n")))
      << info;
  EXPECT_EQ(m[1].str().find(' '), std::string::npos) << "the path is escaped";
  EXPECT_NE(m[1].str().find("%C3%A9t%C3%A9%20%231.jpg"), std::string::npos) << m[1];
  EXPECT_EQ(unescapeUri(m[1].str()), original);
}

TEST(TrashTest, ASecondFileOfTheSameNameGetsANameOfItsOwn) {
  TempFolder home;
  fs::create_directories(home / "a");
  fs::create_directories(home / "b");
  std::ofstream(home / "a/x.jpg") << "first";
  std::ofstream(home / "b/x.jpg") << "second";
  Trash trash(home / "Trash");
  auto one = trash.moveToTrash(home / "a/x.jpg");
  auto two = trash.moveToTrash(home / "b/x.jpg");
  ASSERT_TRUE(one && two);
  EXPECT_NE(one->trashed, two->trashed);
  EXPECT_EQ(readText(one->trashed), "first");
  EXPECT_EQ(readText(two->trashed), "second");
  EXPECT_TRUE(fs::exists(two->info));
  EXPECT_NE(readText(two->info).find("Path=" + escapeTrashPath(home / "b/x.jpg")), std::string::npos);
}

TEST(TrashTest, RestorePutsTheFileBackAndNeverOverwritesAndAMissingFileIsNotTrashed) {
  TempFolder home;
  std::ofstream(home / "x.jpg") << "mine";
  Trash trash(home / "Trash");
  auto moved = trash.moveToTrash(home / "x.jpg");
  ASSERT_TRUE(moved);
  std::ofstream(home / "x.jpg") << "new file meanwhile";
  EXPECT_FALSE(trash.restore(*moved, home / "x.jpg"));
  EXPECT_EQ(readText(home / "x.jpg"), "new file meanwhile");
  EXPECT_TRUE(trash.restore(*moved, home / "y.jpg"));
  EXPECT_EQ(readText(home / "y.jpg"), "mine");
  EXPECT_FALSE(fs::exists(moved->info));
  EXPECT_FALSE(trash.moveToTrash(home / "nothing.jpg"));
}

TEST(FileUriTest, EscapesAsOtherDesktopProgramsDo) {
  EXPECT_EQ(fileUriForPath("/home/a/My Photo.jpg"), "file:///home/a/My%20Photo.jpg");
  EXPECT_EQ(fileUriForPath("/h/a&b=c,d+e@f:g!$'()*~_-.jpg"), "file:///h/a&b=c,d+e@f:g!$'()*~_-.jpg");
  EXPECT_EQ(fileUriForPath("/h/50%;#?[].jpg"), "file:///h/50%25%3B%23%3F%5B%5D.jpg");
  EXPECT_EQ(fileUriForPath("/h/\xC3\xA9"), "file:///h/%C3%A9");
  EXPECT_EQ(escapeTrashPath("/h/a&b c"), "/h/a%26b%20c");
  EXPECT_EQ(unescapeUri("/h/a%26b%20c%"), "/h/a&b c%");
}

}  // namespace
}  // namespace nimbrel::desktop
