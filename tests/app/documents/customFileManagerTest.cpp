#include "app/documents/customFileManager.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "app/SimTest.h"
#include "platform/foundation/NSPathUtilities.h"

namespace nimbrel {
namespace {

namespace fs = std::filesystem;

class customFileManagerTest : public testing::SimTest {
 protected:
  void SetUp() override {
    start();
    documents = NSHomeDirectory() + "/Documents";
    imported = documents + "/Nimbrel/importedFiles";
  }
  void write(const std::string& path, const std::string& contents = "x") {
    std::ofstream(path) << contents;
  }
  std::string read(const std::string& path) {
    std::ifstream in(path);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }
  std::string documents, imported;
};

TEST_F(customFileManagerTest, MakingTheSharedInstanceMakesTheRootFolderOnlyAndAgainIsHarmless) {
  auto files = customFileManager::shared();
  EXPECT_TRUE(fs::is_directory(documents + "/Nimbrel"));
  EXPECT_FALSE(fs::exists(imported));
  files->createRootFolder();
  files->createFolder("importedFiles");
  files->createFolder("importedFiles");
  EXPECT_TRUE(fs::is_directory(imported));
  EXPECT_TRUE(takeLog().empty()) << "nothing is logged when the folders exist";
  fs::remove_all(documents + "/Nimbrel");
  files->createFolder("importedFiles");
  EXPECT_TRUE(fs::is_directory(imported)) << "a folder alone brings the root into being";
}

TEST_F(customFileManagerTest, AFolderThatCannotBeMadeIsLoggedAndTheCallerGoesOn) {
  // A file where the documents folder should be: nothing can be made under it.
  fs::remove_all(documents);
  write(documents);
  customFileManager manager;
  auto log = takeLog();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0].rfind("URL:21==> ", 0), 0u) << log[0];
  manager.createFolder("importedFiles");
  log = takeLog();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0].rfind("URL:39==> ", 0), 0u) << log[0];
}

TEST_F(customFileManagerTest, AFileInThePlaceOfTheRootCountsAsTheRoot) {
  fs::remove_all(documents + "/Nimbrel");
  write(documents + "/Nimbrel");
  customFileManager manager;
  EXPECT_TRUE(takeLog().empty()) << "the root's existence test passes for any item of that name";
  manager.createFolder("importedFiles");
  EXPECT_EQ(takeLog().size(), 1u);
}

TEST_F(customFileManagerTest, TheDestinationKeepsBlanksAMoveReturnsItEncodedAndATakenNameFailsLeavingBothFiles) {
  auto files = customFileManager::shared();
  files->createFolder("importedFiles");
  std::string source = NSHomeDirectory() + "/My Report 2026.pdf";
  write(source, "new");
  auto destination = files->destinationPath(URL::fileURLWithPath(source, false), "importedFiles");
  EXPECT_EQ(destination, imported + "/My Report 2026.pdf") << "plain concatenation";
  auto moved = files->moveFile(source, destination);
  ASSERT_TRUE(moved);
  EXPECT_EQ(moved->path(), imported + "/My Report 2026.pdf");
  EXPECT_NE(moved->absoluteString().find("My%20Report%202026.pdf"), std::string::npos);
  EXPECT_FALSE(fs::exists(source));

  write(source, "newer");
  takeLog();
  EXPECT_FALSE(files->moveFile(source, destination));
  EXPECT_EQ(read(source), "newer");
  EXPECT_EQ(read(destination), "new");
  auto log = takeLog();
  ASSERT_EQ(log.size(), 3u);
  EXPECT_EQ(log[0], "From URL " + URL::fileURLWithPath(source).absoluteString());
  EXPECT_EQ(log[1], "To Path URL " + URL::fileURLWithPath(destination).absoluteString());
  EXPECT_EQ(log[2].rfind("Unable to move file:: Error Domain=NSCocoaErrorDomain Code=516 ", 0), 0u) << log[2];
}

TEST_F(customFileManagerTest, CopyFailuresLogTheMoveTextAndRemovalFailuresTheirOwn) {
  auto files = customFileManager::shared();
  auto missing = URL::fileURLWithPath(NSHomeDirectory() + "/missing.txt");
  EXPECT_FALSE(files->copyFile(missing, URL::fileURLWithPath(NSHomeDirectory() + "/copy.txt")));
  auto log = takeLog();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0].rfind("Unable to move file:: Error Domain=NSCocoaErrorDomain Code=260", 0), 0u) << log[0];
  write(NSHomeDirectory() + "/x.txt", "data");
  auto copied = files->copyFile(URL::fileURLWithPath(NSHomeDirectory() + "/x.txt"),
                                URL::fileURLWithPath(NSHomeDirectory() + "/y.txt"));
  ASSERT_TRUE(copied);
  EXPECT_EQ(read(NSHomeDirectory() + "/y.txt"), "data");
  EXPECT_EQ(read(NSHomeDirectory() + "/x.txt"), "data");

  // Removing nothing or a missing file fails and only the missing file logs.
  EXPECT_FALSE(files->removeFile(std::nullopt));
  EXPECT_TRUE(takeLog().empty());
  EXPECT_FALSE(files->removeFile(URL::fileURLWithPath(NSHomeDirectory() + "/gone.txt")));
  log = takeLog();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_NE(log[0].find("\u201Cgone.txt\u201D couldn\u2019t be removed."), std::string::npos) << log[0];
}

// What a listing holds is NSFileManagerTest's; here an empty folder lists as empty, not as nothing,
// a folder's address has no extension, which takes the folder icon, and a removed folder gives
// nothing and a log line.
TEST_F(customFileManagerTest, ListingAnEmptyAFilledAndARemovedFolder) {
  auto files = customFileManager::shared();
  files->createFolder("importedFiles");
  auto empty = files->listFiles("importedFiles");
  ASSERT_TRUE(empty);
  EXPECT_TRUE(empty->empty());
  fs::create_directories(imported + "/folder");
  auto listed = files->listFiles("importedFiles");
  ASSERT_TRUE(listed && listed->size() == 1u);
  EXPECT_EQ(files->iconName(listed->at(0).pathExtension()), "icon_folder");
  fs::remove_all(imported);
  takeLog();
  EXPECT_FALSE(files->listFiles("importedFiles"));
  auto log = takeLog();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0], "The folder \u201CimportedFiles\u201D doesn\u2019t exist.");
}

using customFileManagerDeathTest = customFileManagerTest;

TEST_F(customFileManagerDeathTest, WithoutADocumentsDirectoryTheSharedInstanceEndsTheProcess) {
  setApplicationHomeDirectory("");
  EXPECT_DEATH(customFileManager::shared(), "Fatal error: ");
}

}  // namespace
}  // namespace nimbrel
