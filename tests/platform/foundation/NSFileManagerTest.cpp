#include "platform/foundation/NSFileManager.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

class NSFileManagerTest : public ::testing::Test {
 public:
  NSFileManager& fm = NSFileManager::defaultManager();
  std::string root;

  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "nsfm-test-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    root = pattern;
  }
  void TearDown() override {
    std::error_code ec;
    fs::remove_all(root, ec);
  }

  std::string path(const std::string& relative) const { return root + "/" + relative; }
  URL url(const std::string& relative) const { return URL::fileURLWithPath(path(relative)); }
  void write(const std::string& relative, const std::string& contents) const {
    fs::create_directories(fs::path(path(relative)).parent_path());
    std::ofstream(path(relative), std::ios::binary) << contents;
  }
  std::string read(const std::string& relative) const {
    std::ifstream in(path(relative), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  bool exists(const std::string& relative) const {
    std::error_code ec;
    return fs::symlink_status(path(relative), ec).type() != fs::file_type::not_found;
  }
  static std::vector<std::string> sorted(std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    return names;
  }
};

// --- Creating folders ---------------------------------------------------------------------------

TEST_F(NSFileManagerTest, CreatingFoldersWithAndWithoutIntermediates) {
  struct Row {
    const char* name;
    std::string target;
    bool intermediates;
    bool succeeds;
    long code;
  };
  write("file.txt", "x");
  fs::create_directory(path("existing"));
  const Row rows[] = {
      {"new folder in an existing one", "existing/new", false, true, 0},
      {"nested folders with intermediates", "a/b/c", true, true, 0},
      {"nested folders without intermediates", "p/q/r", false, false, 4},
      {"existing folder with intermediates", "existing", true, true, 0},
      {"existing folder without intermediates", "existing", false, false, 516},
      {"existing file with intermediates", "file.txt", true, false, 516},
      {"existing file without intermediates", "file.txt", false, false, 516},
      {"trailing slash", "slashed/deeper/", true, true, 0},
      {"under a file", "file.txt/sub", true, false, -1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    NSError error;
    bool ok = fm.createDirectoryAtPath(path(row.target), row.intermediates, &error);
    EXPECT_EQ(ok, row.succeeds);
    if (row.succeeds) {
      bool isDir = false;
      EXPECT_TRUE(fm.fileExistsAtPath(path(row.target), &isDir));
      EXPECT_TRUE(isDir);
    } else {
      EXPECT_EQ(error.domain, NSError::NSCocoaErrorDomain);
      if (row.code >= 0) {
        EXPECT_EQ(error.code, row.code);
      }
    }
  }
  EXPECT_EQ(read("file.txt"), "x");
  EXPECT_FALSE(exists("p"));
}

TEST_F(NSFileManagerTest, AFileInTheWayGivesThePlatformsSentence) {
  write("Documents/Nimbrel", "not a folder");
  NSError error;

  ASSERT_FALSE(fm.createDirectoryAtPath(path("Documents/Nimbrel"), true, &error));

  EXPECT_EQ(error.code, 516);
  EXPECT_EQ(error.localizedDescription,
            "The file \u201CNimbrel\u201D couldn\u2019t be saved in the folder \u201CDocuments\u201D "
            "because a file with the same name already exists.");
  EXPECT_EQ(error.debugDescription().rfind(
                "Error Domain=NSCocoaErrorDomain Code=516 \"The file \u201CNimbrel\u201D couldn\u2019t "
                "be saved in the folder \u201CDocuments\u201D because a file with the same name already "
                "exists.\" UserInfo={",
                0),
            0u)
      << error.debugDescription();
  EXPECT_NE(error.debugDescription().find("NSFilePath=" + path("Documents/Nimbrel")), std::string::npos);
  EXPECT_EQ(error.debugDescription().back(), '}');
  ASSERT_NE(error.underlyingError, nullptr);
  EXPECT_EQ(error.underlyingError->domain, NSError::NSPOSIXErrorDomain);
}

// --- Moving ---------------------------------------------------------------------------------------

TEST_F(NSFileManagerTest, MovingOrCopyingAFileOrAFolderWithItsHiddenContents) {
  for (bool copy : {false, true}) {
    SCOPED_TRACE(copy ? "copy" : "move");
    fs::remove_all(root);
    write("from/a.txt", "A");
    write("folder/inner/.hidden", "H");
    fs::create_directory(path("to"));
    auto transfer = [&](const char* from, const char* to, NSError* error) {
      return copy ? fm.copyItemAtURL(url(from), url(to), error) : fm.moveItemAtURL(url(from), url(to), error);
    };

    NSError error;
    ASSERT_TRUE(transfer("from/a.txt", "to/b.txt", &error)) << error.debugDescription();
    ASSERT_TRUE(transfer("folder", "to/folder", &error)) << error.debugDescription();

    EXPECT_EQ(read("to/b.txt"), "A");
    EXPECT_EQ(read("to/folder/inner/.hidden"), "H");
    EXPECT_EQ(exists("from/a.txt"), copy);
    EXPECT_EQ(exists("folder/inner/.hidden"), copy);
  }
}

TEST_F(NSFileManagerTest, AMoveNeverOverwritesNeedsItsSourceAndFolderAndLeavesEverythingInPlace) {
  const std::string taken = "\u201Ca.txt\u201D couldn\u2019t be moved to \u201Cdst\u201D because an item with "
                            "the same name already exists.";
  const std::string missing = " because either the former doesn\u2019t exist, or the folder containing "
                              "the latter doesn\u2019t exist.";
  struct Row {
    const char* name;
    const char* source;
    const char* destination;
    void (*prepare)(NSFileManagerTest&);
    long code;
    std::string sentence;
  };
  const Row rows[] = {
      {"onto a file", "src/a.txt", "dst/a.txt", [](NSFileManagerTest& t) { t.write("dst/a.txt", "kept"); },
       516, taken},
      {"onto an empty folder", "src/a.txt", "dst/a.txt",
       [](NSFileManagerTest& t) { fs::create_directories(t.path("dst/a.txt")); }, 516, taken},
      {"onto a dangling link", "src/a.txt", "dst/a.txt",
       [](NSFileManagerTest& t) {
         fs::create_directories(t.path("dst"));
         fs::create_symlink(t.path("nowhere"), t.path("dst/a.txt"));
       },
       516, taken},
      {"without a source", "absent.txt", "moved.txt", [](NSFileManagerTest&) {}, 4,
       "\u201Cabsent.txt\u201D couldn\u2019t be moved to \u201C" + fs::path(root).filename().string() +
           "\u201D" + missing},
      {"without a destination folder", "src/a.txt", "nowhere/moved.txt", [](NSFileManagerTest&) {}, 4,
       "\u201Ca.txt\u201D couldn\u2019t be moved to \u201Cnowhere\u201D" + missing},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    fs::remove_all(root);
    write("src/a.txt", "moving");
    row.prepare(*this);
    auto before = fs::symlink_status(path(row.destination)).type();

    NSError error;
    EXPECT_FALSE(fm.moveItemAtURL(url(row.source), url(row.destination), &error));

    EXPECT_EQ(error.code, row.code);
    EXPECT_EQ(error.localizedDescription, row.sentence);
    EXPECT_EQ(read("src/a.txt"), "moving") << "the source stays in place";
    EXPECT_EQ(fs::symlink_status(path(row.destination)).type(), before);
    if (before == fs::file_type::regular) {
      EXPECT_EQ(read(row.destination), "kept");
    }
  }
}

// A move onto another volume is a copy and a removal; a copy that fails loses nothing.
TEST_F(NSFileManagerTest, MovingAcrossVolumes) {
  std::string other = "/dev/shm/nsfm-test-XXXXXX";
  if (!fs::is_directory("/dev/shm") || !::mkdtemp(other.data())) GTEST_SKIP() << "no second volume";
  struct stat a, b;
  ::stat(root.c_str(), &a);
  ::stat(other.c_str(), &b);
  if (a.st_dev == b.st_dev) {
    fs::remove_all(other);
    GTEST_SKIP() << "/dev/shm is on the same volume";
  }
  std::ofstream(other + "/doc.txt") << "D";
  fs::create_directories(other + "/bundle");
  std::ofstream(other + "/bundle/a.txt") << "A";
  ::mkfifo((other + "/bundle/pipe").c_str(), 0600);  // a kind of file a copy cannot take

  NSError error;
  EXPECT_TRUE(fm.moveItemAtURL(URL::fileURLWithPath(other + "/doc.txt"), url("doc.txt"), &error));
  EXPECT_EQ(read("doc.txt"), "D");
  EXPECT_FALSE(fs::exists(other + "/doc.txt"));

  EXPECT_FALSE(fm.moveItemAtURL(URL::fileURLWithPath(other + "/bundle"), url("bundle"), &error));
  EXPECT_EQ(error.code, 512);
  EXPECT_FALSE(exists("bundle")) << "no partial copy stays";
  EXPECT_TRUE(fs::exists(other + "/bundle/a.txt")) << "the original stays whole";
  EXPECT_TRUE(fs::exists(other + "/bundle/pipe"));
  fs::remove_all(other);
}

// --- Copying --------------------------------------------------------------------------------------

TEST_F(NSFileManagerTest, CopyingAFolderIntoItselfFailsAndLeavesNoPartialCopy) {
  write("tree/leaf.txt", "x");
  NSError error;
  EXPECT_FALSE(fm.copyItemAtURL(url("tree"), url("tree/inner"), &error));
  EXPECT_FALSE(exists("tree/inner"));
  EXPECT_EQ(read("tree/leaf.txt"), "x");
}

TEST_F(NSFileManagerTest, RemovingFilesFoldersAndLinks) {
  write("file.txt", "f");
  write("full/a/b/c.txt", "c");
  write("full/.hidden", "h");
  write("target/keep.txt", "keep");
  fs::create_directory_symlink(path("target"), path("link"));
  fs::create_symlink(path("nowhere"), path("dangling"));

  for (const char* item : {"file.txt", "full", "link", "dangling"}) {
    NSError error;
    EXPECT_TRUE(fm.removeItemAtURL(url(item), &error)) << item << ": " << error.debugDescription();
    EXPECT_FALSE(exists(item)) << item;
  }
  EXPECT_EQ(read("target/keep.txt"), "keep") << "removing a link leaves what it points at";
}

// --- Listing --------------------------------------------------------------------------------------

TEST_F(NSFileManagerTest, ListingShowsHiddenFilesAndFoldersButNotTheirContents) {
  write("dir/.DS_Store", "");
  write("dir/a.txt", "");
  write("dir/sub/deep.txt", "");
  fs::create_directory(path("empty"));

  NSError error;
  auto names = fm.contentsOfDirectoryAtPath(path("dir"), &error);
  ASSERT_TRUE(names.has_value());
  EXPECT_EQ(sorted(*names), (std::vector<std::string>{".DS_Store", "a.txt", "sub"}));

  auto none = fm.contentsOfDirectoryAtPath(path("empty"), &error);
  ASSERT_TRUE(none.has_value());
  EXPECT_TRUE(none->empty());
}

// --- Names and existence --------------------------------------------------------------------------

TEST_F(NSFileManagerTest, NamesWithBlanksAndNonAsciiCharacters) {
  const std::string folder = "Mes documents \u00E9t\u00E9";
  const std::string name = "R\u00E9sum\u00E9 2024 \u65E5\u672C.pdf";
  NSError error;
  ASSERT_TRUE(fm.createDirectoryAtPath(path(folder), false, &error)) << error.debugDescription();
  write(name, "cv");

  ASSERT_TRUE(fm.moveItemAtURL(url(name), url(folder + "/" + name), &error)) << error.debugDescription();

  auto names = fm.contentsOfDirectoryAtPath(path(folder), &error);
  ASSERT_TRUE(names.has_value());
  EXPECT_EQ(*names, (std::vector<std::string>{name}));
  EXPECT_EQ(read(folder + "/" + name), "cv");

  write("x", "");
  EXPECT_FALSE(fm.moveItemAtURL(url("x"), url(folder + "/" + name), &error));
  EXPECT_NE(error.localizedDescription.find("\u201C" + folder + "\u201D"), std::string::npos)
      << error.localizedDescription;
}

TEST_F(NSFileManagerTest, ExistenceFollowsLinks) {
  write("file.txt", "");
  fs::create_directory(path("dir"));
  fs::create_directory_symlink(path("dir"), path("dirlink"));
  fs::create_symlink(path("file.txt"), path("filelink"));
  fs::create_symlink(path("gone"), path("dangling"));
  struct Row {
    std::string item;
    bool exists, isDirectory;
  };
  for (const Row& row : {Row{"file.txt", true, false}, Row{"dir", true, true}, Row{"dirlink", true, true},
                         Row{"filelink", true, false}, Row{"dangling", false, false},
                         Row{"absent", false, false}}) {
    bool isDir = false;
    EXPECT_EQ(fm.fileExistsAtPath(path(row.item), &isDir), row.exists) << row.item;
    EXPECT_EQ(isDir, row.isDirectory) << row.item;
  }
  EXPECT_FALSE(fm.fileExistsAtPath(""));
}

TEST_F(NSFileManagerTest, AttributesAndWholeFileWrites) {
  std::vector<std::uint8_t> bytes(1000, 7);
  ASSERT_TRUE(fm.createFileAtPath(path("data.bin"), bytes));
  ASSERT_TRUE(fm.createFileAtPath(path("data.bin"), {1, 2, 3}));

  NSError error;
  auto attributes = fm.attributesOfItemAtPath(path("data.bin"), &error);
  ASSERT_TRUE(attributes.has_value());
  EXPECT_EQ(attributes->size, 3);
  EXPECT_FALSE(attributes->isDirectory);
  EXPECT_EQ(read("data.bin"), std::string("\x01\x02\x03"));
  EXPECT_EQ(fm.contentsOfDirectoryAtPath(root, &error)->size(), 1u) << "no temporary file is left";
  EXPECT_FALSE(fm.createFileAtPath(path("no/such/folder/file"), bytes));
}

// --- Failures -------------------------------------------------------------------------------------

TEST_F(NSFileManagerTest, FailuresGiveTheirCodeAndSentenceLeaveThingsAloneAndAllowANullError) {
  write("a.txt", "new");
  write("b.txt", "old");
  struct Row {
    const char* name;
    std::function<bool(NSError*)> act;
    long code;             // -1: any but 260
    const char* sentence;  // empty: not checked
  };
  const Row rows[] = {
      {"copy onto a file", [&](NSError* e) { return fm.copyItemAtURL(url("a.txt"), url("b.txt"), e); },
       516, ""},
      {"copy without a source",
       [&](NSError* e) { return fm.copyItemAtURL(url("absent.txt"), url("c.txt"), e); }, 260, ""},
      {"remove a missing item", [&](NSError* e) { return fm.removeItemAtURL(url("Old Report.pdf"), e); },
       4, "\u201COld Report.pdf\u201D couldn\u2019t be removed."},
      {"list a missing folder",
       [&](NSError* e) { return fm.contentsOfDirectoryAtPath(path("importedFiles"), e).has_value(); },
       260, "The folder \u201CimportedFiles\u201D doesn\u2019t exist."},
      {"list a file", [&](NSError* e) { return fm.contentsOfDirectoryAtPath(path("a.txt"), e).has_value(); },
       -1, ""},
      {"attributes of a missing item",
       [&](NSError* e) { return fm.attributesOfItemAtPath(path("absent"), e).has_value(); }, 260, ""},
      {"a folder over a file", [&](NSError* e) { return fm.createDirectoryAtPath(path("a.txt"), true, e); },
       516, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    NSError error;
    EXPECT_FALSE(row.act(&error));
    if (row.code >= 0) {
      EXPECT_EQ(error.code, row.code);
    } else {
      EXPECT_NE(error.code, 260);
    }
    if (*row.sentence) {
      EXPECT_EQ(error.localizedDescription, row.sentence);
    }
    EXPECT_FALSE(row.act(nullptr));
  }
  EXPECT_EQ(read("b.txt"), "old");
  EXPECT_FALSE(exists("c.txt"));
}

}  // namespace
