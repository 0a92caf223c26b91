#include "platform/foundation/URL.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <unordered_set>

namespace {

namespace fs = std::filesystem;

TEST(URLTest, AcceptsWellFormedReferencesKeepingTheirTextExactlyAndRejectsTheRest) {
  for (const char* text : {
           "assets-library://asset/asset.JPG?id=5D1C0A3E-0000-4000-8000-000000000001&extJPG",
           "ipod-library://item/item.mp3?id=1311234567890123",
           "file:///home/a/Documents/Nimbrel/importedFiles/a%20b.pdf",
           "https://example.org/view_custom.php?v=12&n=Terms-Of-Use",
           "HTTP://Example.ORG:8080/A%2fB?Q#F",
           "http://[::1]:80/x",
           "mailto:someone@example.org",
           "relative/path.txt",
           "/absolute/path",
           "?only-a-query",
           "#only-a-fragment",
       }) {
    std::optional<URL> url = URL::withString(text);
    ASSERT_TRUE(url.has_value()) << text;
    EXPECT_EQ(url->absoluteString(), text);
  }
  for (const char* text : {
           "",
           " ",
           "a b",
           "http://example.org/a b.pdf",
           "http://example.org/a.pdf ",
           " http://example.org/",
           "file:///tmp/a\tb",
           "%zz",
           "http://example.org/%4",
           "http://example.org/%",
           "http://example.org/caf\xC3\xA9",
           "http://exa mple.org/",
           "http://example.org:port/",
           "http://[::1/",
           "http://example.org/a#b#c",
           ":no-scheme",
           "a|b",
           "a\\b",
           "a{b}",
       }) {
    EXPECT_FALSE(URL::withString(text).has_value()) << '"' << text << '"';
  }
  EXPECT_FALSE(URL::withString(std::string_view("a\0b", 3)).has_value()) << "embedded NUL";
}

struct Parts {
  const char* text;
  const char* scheme;
  const char* host;
  const char* path;
  std::optional<std::string> query;
  const char* last;
  const char* extension;
};

TEST(URLTest, PartsOfParsedURLs) {
  const Parts rows[] = {
      {"assets-library://asset/asset.JPG?id=X&extJPG", "assets-library", "asset", "/asset.JPG",
       "id=X&extJPG", "asset.JPG", "JPG"},
      {"ipod-library://item/item.mp3?id=1311234567890123", "ipod-library", "item", "/item.mp3",
       "id=1311234567890123", "item.mp3", "mp3"},
      {"https://example.org/view_custom.php?v=12&n=Terms-Of-Use", "https", "example.org",
       "/view_custom.php", "v=12&n=Terms-Of-Use", "view_custom.php", "php"},
      {"file:///home/a/Docs/a%20b.pdf", "file", "", "/home/a/Docs/a b.pdf", std::nullopt, "a b.pdf",
       "pdf"},
      {"file:///a/b/", "file", "", "/a/b", std::nullopt, "b", ""},
      {"file:///", "file", "", "/", std::nullopt, "/", ""},
      {"http://example.org", "http", "example.org", "", std::nullopt, "", ""},
      {"http://example.org?", "http", "example.org", "", "", "", ""},
      {"http://example.org/a.tar.gz#frag.ment", "http", "example.org", "/a.tar.gz", std::nullopt,
       "a.tar.gz", "gz"},
      {"http://u:p@[::1]:8080/x.y?q=1?2#f", "http", "::1", "/x.y", "q=1?2", "x.y", "y"},
      {"http://u@:80/p?", "http", "", "/p", "", "p", ""},
      {"http://h%41st/", "http", "hAst", "/", std::nullopt, "/", ""},
      {"http://h/a%2Fb.c", "http", "h", "/a/b.c", std::nullopt, "a/b.c", "c"},
      {"file:///x/.hidden", "file", "", "/x/.hidden", std::nullopt, ".hidden", ""},
      {"file:///x/name.", "file", "", "/x/name.", std::nullopt, "name.", ""},
      {"file:///x/..", "file", "", "/x/..", std::nullopt, "..", ""},
      {"mailto:someone@example.org", "mailto", "", "someone@example.org", std::nullopt,
       "someone@example.org", "org"},
      {"dir/file.txt", "", "", "dir/file.txt", std::nullopt, "file.txt", "txt"},
      {"?q", "", "", "", "q", "", ""},
  };
  for (const Parts& row : rows) {
    SCOPED_TRACE(row.text);
    std::optional<URL> url = URL::withString(row.text);
    ASSERT_TRUE(url.has_value());
    EXPECT_EQ(url->scheme(), row.scheme);
    EXPECT_EQ(url->host(), row.host);
    EXPECT_EQ(url->path(), row.path);
    EXPECT_EQ(url->query(), row.query);
    EXPECT_EQ(url->lastPathComponent(), row.last);
    EXPECT_EQ(url->pathExtension(), row.extension);
  }
}

TEST(URLTest, FileSchemeIsRecognisedWhateverItsCase) {
  EXPECT_TRUE(URL::withString("file:///a")->isFileURL());
  EXPECT_TRUE(URL::withString("FiLe:///a")->isFileURL());
  EXPECT_TRUE(URL::fileURLWithPath("/a", false).isFileURL());
  EXPECT_FALSE(URL::withString("files:///a")->isFileURL());
  EXPECT_FALSE(URL::withString("https://example.org/file")->isFileURL());
  EXPECT_FALSE(URL::withString("file/a")->isFileURL());
}

TEST(URLTest, FilePathsAreEscapedWithThePathSetComeBackFromTheirTextAndEndAsTold) {
  struct Row {
    const char* path;
    const char* expected;
  };
  const Row rows[] = {
      {"/tmp/a b.pdf", "file:///tmp/a%20b.pdf"},
      {"/tmp/100%.txt", "file:///tmp/100%25.txt"},
      {"/tmp/100% sure.txt", "file:///tmp/100%25%20sure.txt"},
      {"/tmp/a%20b", "file:///tmp/a%2520b"},
      {"/tmp/a#b?c.txt", "file:///tmp/a%23b%3Fc.txt"},
      {"/tmp/!$&'()*+,;=:@-._~", "file:///tmp/!$&'()*+,;=:@-._~"},
      {"/tmp/\"<>[]\\^`{|}", "file:///tmp/%22%3C%3E%5B%5D%5C%5E%60%7B%7C%7D"},
      {"/tmp/Caf\xC3\xA9 r\xC3\xA9sum\xC3\xA9.pdf", "file:///tmp/Caf%C3%A9%20r%C3%A9sum%C3%A9.pdf"},
      {"/tmp/\xE6\x97\xA5\xE6\x9C\xAC.txt", "file:///tmp/%E6%97%A5%E6%9C%AC.txt"},
      {"/a//b///c", "file:///a/b/c"},
      {"//a", "file:///a"},
      {"/", "file:///"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.path);
    URL url = URL::fileURLWithPath(row.path, false);
    EXPECT_EQ(url.absoluteString(), row.expected);
    std::optional<URL> reparsed = URL::withString(url.absoluteString());
    ASSERT_TRUE(reparsed.has_value()) << "escaping must yield a strictly valid URL";
    EXPECT_EQ(*reparsed, url);
    EXPECT_EQ(reparsed->path(), url.path());
    if (std::string_view(row.path).find("//") == std::string_view::npos && row.path[1]) {
      EXPECT_EQ(url.path(), row.path);
      EXPECT_EQ(url.lastPathComponent(), fs::path(row.path).filename().string());
    }
  }
  // The directory flag, or without one a path's own trailing slash, decides the URL's.
  EXPECT_EQ(URL::fileURLWithPath("/no/such/dir", true).absoluteString(), "file:///no/such/dir/");
  EXPECT_EQ(URL::fileURLWithPath("/no/such/dir/", true).absoluteString(), "file:///no/such/dir/");
  EXPECT_EQ(URL::fileURLWithPath("/no/such/file/", false).absoluteString(), "file:///no/such/file");
  EXPECT_EQ(URL::fileURLWithPath("/no/such/dir/").absoluteString(), "file:///no/such/dir/");
  EXPECT_EQ(URL::fileURLWithPath("/no/such/file").absoluteString(), "file:///no/such/file");
}

class URLFileSystemTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "nimbrel-url-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    dir = pattern;
    fs::create_directory(dir / "sub dir");
    std::ofstream(dir / "file.txt") << "x";
  }
  void TearDown() override {
    std::error_code ec;
    fs::remove_all(dir, ec);
  }
  fs::path dir;
};

TEST_F(URLFileSystemTest, TheFileSystemDecidesTheTrailingSlashOnlyWhenNotTold) {
  URL directory = URL::fileURLWithPath((dir / "sub dir").string());
  EXPECT_EQ(directory.absoluteString().back(), '/');
  EXPECT_EQ(directory.path(), (dir / "sub dir").string());
  EXPECT_EQ(directory.lastPathComponent(), "sub dir");

  URL file = URL::fileURLWithPath((dir / "file.txt").string());
  EXPECT_NE(file.absoluteString().back(), '/');
  EXPECT_EQ(URL::fileURLWithPath((dir / "sub dir").string(), false).absoluteString().back(), 'r');

  URL base = URL::fileURLWithPath(dir.string());
  EXPECT_EQ(base.appendingPathComponent("sub dir").absoluteString(),
            base.absoluteString() + "sub%20dir/");
  EXPECT_EQ(base.appendingPathComponent("file.txt").absoluteString(),
            base.absoluteString() + "file.txt");
  EXPECT_EQ(base.appendingPathComponent("sub dir", false).absoluteString(),
            base.absoluteString() + "sub%20dir");
  EXPECT_EQ(base.appendingPathComponent("new", true).absoluteString(),
            base.absoluteString() + "new/");
  EXPECT_EQ(base.appendingPathComponent("sub dir").path(), (dir / "sub dir").string());
}

TEST_F(URLFileSystemTest, RelativePathsResolveAgainstTheWorkingDirectory) {
  fs::path previous = fs::current_path();
  fs::current_path(dir);
  // The temporary directory may be reached through a symbolic link; compare with what is reported.
  fs::path cwd = fs::current_path();
  URL relative = URL::fileURLWithPath("a b/c.txt");
  URL here = URL::fileURLWithPath("");
  fs::current_path("/");
  URL fromRoot = URL::fileURLWithPath("x y", false);
  fs::current_path(previous);
  EXPECT_EQ(fromRoot.absoluteString(), "file:///x%20y");
  EXPECT_EQ(relative.path(), (cwd / "a b/c.txt").string());
  EXPECT_EQ(here.path(), cwd.string());
  EXPECT_EQ(here.absoluteString().back(), '/');
}

TEST(URLTest, AppendingPathComponents) {
  struct Row {
    const char* base;
    const char* component;
    const char* expected;
  };
  const Row rows[] = {
      {"https://example.org", "a b", "https://example.org/a%20b"},
      {"https://example.org/", "x", "https://example.org/x"},
      {"https://example.org/dir?q=1#f", "x.pdf", "https://example.org/dir/x.pdf?q=1#f"},
      {"https://example.org/dir/", "/x", "https://example.org/dir/x"},
      {"https://example.org/dir", "a/b c/", "https://example.org/dir/a/b%20c/"},
      {"https://example.org/dir", "100%?#", "https://example.org/dir/100%25%3F%23"},
      {"https://example.org/dir", "", "https://example.org/dir"},
      {"file:///no/such", "\xE6\x97\xA5.txt", "file:///no/such/%E6%97%A5.txt"},
      {"dir", "f", "dir/f"},
      {"?q", "a:b/c:d", "a%3Ab/c:d?q"},
      {"?q", "//host", "host?q"},
      {"mailto:", "//x", "mailto:x"},
      {"file:?q", "///", "file:?q"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.base) + " + " + row.component);
    URL appended = URL::withString(row.base)->appendingPathComponent(row.component);
    EXPECT_EQ(appended.absoluteString(), row.expected);
    std::optional<URL> reparsed = URL::withString(appended.absoluteString());
    ASSERT_TRUE(reparsed.has_value());
    EXPECT_EQ(reparsed->path(), appended.path()) << "the pieces must be where parsing finds them";
    EXPECT_EQ(reparsed->query(), appended.query());
    EXPECT_EQ(reparsed->lastPathComponent(), appended.lastPathComponent());
  }
  EXPECT_EQ(URL::withString("https://example.org/dir")
                ->appendingPathComponent("d", true)
                .absoluteString(),
            "https://example.org/dir/d/");
  EXPECT_EQ(URL::withString("?q")->appendingPathComponent("//", true).absoluteString(), "?q");
}

TEST(URLTest, DeletingTheLastPathComponent) {
  struct Row {
    const char* text;
    const char* expected;
  };
  const Row rows[] = {
      {"file:///a/b/c.txt", "file:///a/b/"},
      {"file:///a/b/", "file:///a/"},
      {"file:///a", "file:///"},
      {"file:///", "file:///"},
      {"https://example.org/a/b?q#f", "https://example.org/a/?q#f"},
      {"https://example.org", "https://example.org"},
      {"a/b", "a/"},
      {"a", "./"},
  };
  for (const Row& row : rows) {
    URL url = URL::withString(row.text)->deletingLastPathComponent();
    EXPECT_EQ(url.absoluteString(), row.expected) << row.text;
    EXPECT_EQ(url.query(), URL::withString(row.expected)->query()) << row.text;
    EXPECT_EQ(url.path(), URL::withString(row.expected)->path()) << row.text;
  }
  URL file = URL::fileURLWithPath("/x/y z/w", false);
  EXPECT_EQ(file.deletingLastPathComponent().path(), "/x/y z");
  EXPECT_EQ(file.deletingLastPathComponent().appendingPathComponent("w", false), file);
}

TEST(URLTest, EqualityAndHashingFollowTheAbsoluteString) {
  URL made = URL::fileURLWithPath("/tmp/a b.pdf", false);
  URL parsed = *URL::withString("file:///tmp/a%20b.pdf");
  EXPECT_EQ(made, parsed);
  EXPECT_FALSE(made == *URL::withString("file:///tmp/a%20B.pdf"));
  EXPECT_FALSE(made == *URL::withString("FILE:///tmp/a%20b.pdf")) << "no normalisation";
  std::unordered_set<URL> set{made, parsed, URL::fileURLWithPath("/tmp/c", false)};
  EXPECT_EQ(set.size(), 2u);
  EXPECT_TRUE(set.contains(*URL::withString("file:///tmp/c")));
}

}  // namespace
