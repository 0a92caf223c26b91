#include "platform/foundation/NSFileManager.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "platform/foundation/FileCreationDateSource.h"
#include "platform/foundation/VolumeInfoSource.h"

namespace fs = std::filesystem;

namespace {

std::string lastComponent(const std::string& path) {
  std::string p = path;
  while (p.size() > 1 && p.back() == '/') p.pop_back();
  auto slash = p.rfind('/');
  return slash == std::string::npos ? p : p.substr(slash + 1);
}

std::string parentOf(const std::string& path) {
  std::string p = path;
  while (p.size() > 1 && p.back() == '/') p.pop_back();
  auto slash = p.rfind('/');
  if (slash == std::string::npos) return ".";
  if (slash == 0) return "/";
  return p.substr(0, slash);
}

std::string quoted(const std::string& name) { return "\u201C" + name + "\u201D"; }

void fail(NSError* out, long code, std::string sentence,
          std::vector<std::pair<std::string, std::string>> info, int posixError) {
  if (!out) return;
  *out = NSError{NSError::NSCocoaErrorDomain, code, std::move(sentence), std::move(info),
                 posixError ? std::make_shared<NSError>(NSError::posix(posixError)) : nullptr};
}

bool lexists(const std::string& path) {
  struct stat st;
  return ::lstat(path.c_str(), &st) == 0;
}

bool copyTree(const fs::path& from, const fs::path& to, std::error_code& ec) {
  fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks, ec);
  return !ec;
}

}  // namespace

NSFileManager& NSFileManager::defaultManager() {
  static NSFileManager manager;
  return manager;
}

std::vector<URL> NSFileManager::URLsForDirectoryInDomains(NSSearchPathDirectory directory,
                                                          NSSearchPathDomainMask domain) const {
  std::vector<URL> out;
  for (const auto& path : NSSearchPathForDirectoriesInDomains(directory, domain, true)) {
    out.push_back(URL::fileURLWithPath(path, true));
  }
  return out;
}

bool NSFileManager::fileExistsAtPath(const std::string& path, bool* isDirectory) const {
  struct stat st;
  if (path.empty() || ::stat(path.c_str(), &st) != 0) return false;
  if (isDirectory) *isDirectory = S_ISDIR(st.st_mode);
  return true;
}

bool NSFileManager::createDirectoryAtPath(const std::string& path, bool intermediates,
                                          NSError* error) const {
  const std::string name = lastComponent(path);
  const std::string folder = lastComponent(parentOf(path));
  auto info = [&] { return std::vector<std::pair<std::string, std::string>>{{"NSFilePath", path}}; };
  bool isDir = false;
  if (fileExistsAtPath(path, &isDir)) {
    if (isDir && intermediates) return true;
    fail(error, 516,
         "The file " + quoted(name) + " couldn\u2019t be saved in the folder " + quoted(folder) +
             " because a file with the same name already exists.",
         info(), EEXIST);
    return false;
  }
  std::error_code ec;
  if (intermediates) {
    fs::create_directories(path, ec);
  } else {
    fs::create_directory(path, ec);
  }
  if (!ec) return true;
  int e = ec.value();
  if (e == EACCES || e == EPERM || e == EROFS) {
    fail(error, 513,
         "You don\u2019t have permission to save the file " + quoted(name) + " in the folder " +
             quoted(folder) + ".",
         info(), e);
  } else if (e == ENOENT) {
    fail(error, 4, "The folder " + quoted(folder) + " doesn\u2019t exist.", info(), e);
  } else {
    fail(error, 512, "The file " + quoted(name) + " couldn\u2019t be saved in the folder " + quoted(folder) + ".",
         info(), e);
  }
  return false;
}

bool NSFileManager::moveItemAtURL(const URL& from, const URL& to, NSError* error) const {
  const std::string src = from.path();
  const std::string dst = to.path();
  const std::string name = lastComponent(src);
  const std::string folder = lastComponent(parentOf(dst));
  std::vector<std::pair<std::string, std::string>> info{{"NSSourceFilePathErrorKey", src},
                                                        {"NSUserStringVariant", "(Move)"},
                                                        {"NSDestinationFilePath", dst},
                                                        {"NSFilePath", src}};
  const std::string missing = quoted(name) + " couldn\u2019t be moved to " + quoted(folder) +
                              " because either the former doesn\u2019t exist, or the folder "
                              "containing the latter doesn\u2019t exist.";
  if (!lexists(src)) {
    fail(error, 4, missing, info, ENOENT);
    return false;
  }
  if (lexists(dst)) {
    fail(error, 516,
         quoted(name) + " couldn\u2019t be moved to " + quoted(folder) +
             " because an item with the same name already exists.",
         info, EEXIST);
    return false;
  }
  // No-replace, so that a file another program makes at the destination meanwhile is not lost.
  int moved = ::renameat2(AT_FDCWD, src.c_str(), AT_FDCWD, dst.c_str(), RENAME_NOREPLACE);
  if (moved != 0 && (errno == EINVAL || errno == ENOSYS)) moved = ::rename(src.c_str(), dst.c_str());
  if (moved == 0) return true;
  int e = errno;
  if (e == EEXIST) {
    fail(error, 516,
         quoted(name) + " couldn\u2019t be moved to " + quoted(folder) +
             " because an item with the same name already exists.",
         info, EEXIST);
    return false;
  }
  if (e == EXDEV) {
    // Another volume: copy, then take the original away only once the copy is whole.
    std::error_code ec;
    if (copyTree(src, dst, ec)) {
      fs::remove_all(src, ec);
      return true;
    }
    fs::remove_all(dst, ec);
    e = EIO;
  }
  if (e == ENOENT || e == ENOTDIR) {
    fail(error, 4, missing, info, e);
  } else if (e == EACCES || e == EPERM || e == EROFS) {
    fail(error, 513,
         quoted(name) + " couldn\u2019t be moved because you don\u2019t have permission to access " +
             quoted(folder) + ".",
         info, e);
  } else {
    fail(error, 512, quoted(name) + " couldn\u2019t be moved to " + quoted(folder) + ".", info, e);
  }
  return false;
}

bool NSFileManager::copyItemAtURL(const URL& from, const URL& to, NSError* error) const {
  const std::string src = from.path();
  const std::string dst = to.path();
  const std::string name = lastComponent(src);
  const std::string folder = lastComponent(parentOf(dst));
  std::vector<std::pair<std::string, std::string>> info{{"NSSourceFilePathErrorKey", src},
                                                        {"NSUserStringVariant", "(Copy)"},
                                                        {"NSDestinationFilePath", dst},
                                                        {"NSFilePath", src}};
  if (!lexists(src)) {
    fail(error, 260, "The file " + quoted(name) + " couldn\u2019t be opened because there is no such file.",
         {{"NSFilePath", src}}, ENOENT);
    return false;
  }
  if (lexists(dst)) {
    fail(error, 516,
         quoted(name) + " couldn\u2019t be copied to " + quoted(folder) +
             " because an item with the same name already exists.",
         info, EEXIST);
    return false;
  }
  std::error_code ec;
  if (copyTree(src, dst, ec)) return true;
  std::error_code ignore;
  fs::remove_all(dst, ignore);
  int e = ec.value();
  if (e == ENOENT || e == ENOTDIR) {
    fail(error, 4,
         quoted(name) + " couldn\u2019t be copied to " + quoted(folder) +
             " because either the former doesn\u2019t exist, or the folder containing the latter "
             "doesn\u2019t exist.",
         info, e);
  } else if (e == EACCES || e == EPERM || e == EROFS) {
    fail(error, 513,
         quoted(name) + " couldn\u2019t be copied because you don\u2019t have permission to access " +
             quoted(folder) + ".",
         info, e);
  } else {
    fail(error, 512, quoted(name) + " couldn\u2019t be copied to " + quoted(folder) + ".", info, e);
  }
  return false;
}

bool NSFileManager::removeItemAtURL(const URL& url, NSError* error) const {
  const std::string path = url.path();
  const std::string name = lastComponent(path);
  std::vector<std::pair<std::string, std::string>> info{{"NSFilePath", path},
                                                        {"NSUserStringVariant", "(Remove)"}};
  if (!lexists(path)) {
    fail(error, 4, quoted(name) + " couldn\u2019t be removed.", info, ENOENT);
    return false;
  }
  std::error_code ec;
  fs::remove_all(path, ec);
  if (!ec) return true;
  int e = ec.value();
  if (e == EACCES || e == EPERM || e == EROFS) {
    fail(error, 513,
         quoted(name) + " couldn\u2019t be removed because you don\u2019t have permission to access it.",
         info, e);
  } else {
    fail(error, 512, quoted(name) + " couldn\u2019t be removed.", info, e);
  }
  return false;
}

std::optional<std::vector<std::string>> NSFileManager::contentsOfDirectoryAtPath(
    const std::string& path, NSError* error) const {
  const std::string name = lastComponent(path);
  std::vector<std::pair<std::string, std::string>> info{{"NSFilePath", path}};
  std::error_code ec;
  fs::directory_iterator it(path, ec);
  if (ec) {
    int e = ec.value();
    if (e == ENOENT) {
      fail(error, 260, "The folder " + quoted(name) + " doesn\u2019t exist.", info, e);
    } else if (e == EACCES || e == EPERM) {
      fail(error, 257,
           "The file " + quoted(name) + " couldn\u2019t be opened because you don\u2019t have "
           "permission to view it.",
           info, e);
    } else {
      fail(error, 256, "The file " + quoted(name) + " couldn\u2019t be opened.", info, e);
    }
    return std::nullopt;
  }
  std::vector<std::string> names;
  for (; it != fs::directory_iterator(); it.increment(ec)) {
    if (ec) break;
    names.push_back(it->path().filename().string());
  }
  return names;
}

std::optional<NSFileManager::ItemAttributes> NSFileManager::attributesOfItemAtPath(
    const std::string& path, NSError* error) const {
  struct stat st;
  if (::stat(path.c_str(), &st) != 0) {
    // The sentence costs more than the stat, and most callers only want to know.
    if (error) {
      fail(error, 260,
           "The file " + quoted(lastComponent(path)) + " couldn\u2019t be opened because there is no such file.",
           {{"NSFilePath", path}}, errno);
    }
    return std::nullopt;
  }
  ItemAttributes a;
  a.size = static_cast<std::int64_t>(st.st_size);
  a.isDirectory = S_ISDIR(st.st_mode);
  a.modificationDate = Date::fromUnix(static_cast<double>(st.st_mtim.tv_sec) + st.st_mtim.tv_nsec / 1e9);
  a.creationDate = FileCreationDateSource::current()->creationDate(path);
  return a;
}

bool NSFileManager::createFileAtPath(const std::string& path,
                                     const std::vector<std::uint8_t>& contents) const {
  std::string tmp = path + ".tmp-XXXXXX";
  int fd = ::mkstemp(tmp.data());
  if (fd < 0) return false;
  size_t done = 0;
  while (done < contents.size()) {
    ssize_t n = ::write(fd, contents.data() + done, contents.size() - done);
    if (n < 0) {
      if (errno == EINTR) continue;
      ::close(fd);
      ::unlink(tmp.c_str());
      return false;
    }
    done += static_cast<size_t>(n);
  }
  ::fchmod(fd, 0644);
  ::close(fd);
  if (::rename(tmp.c_str(), path.c_str()) != 0) {
    ::unlink(tmp.c_str());
    return false;
  }
  return true;
}

std::optional<PlistValue::Dictionary> NSFileManager::attributesOfFileSystemForPath(const std::string& path,
                                                                                 NSError* error) const {
  struct stat st;
  if (::stat(path.c_str(), &st) != 0) {
    fail(error, 260,
         "The file " + quoted(lastComponent(path)) + " couldn\u2019t be opened because there is no such file.",
         {{"NSFilePath", path}}, errno);
    return std::nullopt;
  }
  auto figures = VolumeInfoSource::current()->figures(path);
  PlistValue::Dictionary out;
  if (figures.size) out.emplace_back("NSFileSystemSize", PlistValue(*figures.size));
  if (figures.free) out.emplace_back("NSFileSystemFreeSize", PlistValue(*figures.free));
  return out;
}

std::optional<std::int64_t> NSFileManager::volumeAvailableCapacityForImportantUsage(const URL& url) const {
  if (!url.isFileURL()) return std::nullopt;
  return VolumeInfoSource::current()->figures(url.path()).importantAvailable;
}
