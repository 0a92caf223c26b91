#include "app/documents/customFileManager.h"

#include "app/core/IconName.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/foundation/SharedInstance.h"

namespace nimbrel {

std::shared_ptr<customFileManager> customFileManager::shared() {
  return SharedInstance<customFileManager>::get();
}

customFileManager::customFileManager() : FILEMANAGER(NSFileManager::defaultManager()) {
  auto paths = NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, true);
  if (paths.empty()) {
    fatalError("Unexpectedly found nil while unwrapping an Optional value",
               "Nimbrel/customFileManager", 17);
  }
  DOCUMENTDIRPATH = paths.front();
  createRootFolder();
}

void customFileManager::createRootFolder() const {
  auto urls = FILEMANAGER.URLsForDirectoryInDomains(NSDocumentDirectory, NSUserDomainMask);
  if (urls.empty()) return;
  auto root = urls.front().appendingPathComponent(kRootFolder);
  if (FILEMANAGER.fileExistsAtPath(root.path())) return;
  NSError error;
  if (!FILEMANAGER.createDirectoryAtPath(root.path(), true, &error)) {
    NSLog("URL:21==> " + error.localizedDescription);
  }
}

void customFileManager::createFolder(const std::string& name) const {
  auto urls = FILEMANAGER.URLsForDirectoryInDomains(NSDocumentDirectory, NSUserDomainMask);
  if (urls.empty()) return;
  auto folder = urls.front().appendingPathComponent(std::string(kRootFolder) + "/" + name);
  if (FILEMANAGER.fileExistsAtPath(folder.path())) return;
  NSError error;
  if (!FILEMANAGER.createDirectoryAtPath(folder.path(), true, &error)) {
    NSLog("URL:39==> " + error.localizedDescription);
  }
}

std::string customFileManager::destinationPath(const URL& url, const std::string& folder) const {
  return DOCUMENTDIRPATH + "/" + kRootFolder + "/" + folder + "/" + url.lastPathComponent();
}

std::optional<URL> customFileManager::moveFile(const std::string& fromPath,
                                               const std::string& toPath) const {
  auto from = URL::fileURLWithPath(fromPath);
  auto to = URL::fileURLWithPath(toPath);
  NSLog("From URL " + from.absoluteString());
  NSLog("To Path URL " + to.absoluteString());
  NSError error;
  if (FILEMANAGER.moveItemAtURL(from, to, &error)) return to;
  NSLog("Unable to move file:: " + error.debugDescription());
  return std::nullopt;
}

std::optional<URL> customFileManager::copyFile(const URL& from, const URL& to) const {
  NSError error;
  if (FILEMANAGER.copyItemAtURL(from, to, &error)) return to;
  NSLog("Unable to move file:: " + error.debugDescription());
  return std::nullopt;
}

bool customFileManager::removeFile(const std::optional<URL>& url) const {
  if (!url) return false;
  NSError error;
  if (FILEMANAGER.removeItemAtURL(*url, &error)) return true;
  NSLog("Unable to move file:: " + error.debugDescription());
  return false;
}

std::optional<std::vector<URL>> customFileManager::listFiles(const std::string& folder) const {
  std::string directory = DOCUMENTDIRPATH + "/" + kRootFolder + "/" + folder;
  NSError error;
  auto names = FILEMANAGER.contentsOfDirectoryAtPath(directory, &error);
  if (!names) {
    NSLog(error.localizedDescription);
    return std::nullopt;
  }
  std::vector<URL> urls;
  urls.reserve(names->size());
  for (const auto& name : *names) urls.push_back(URL::fileURLWithPath(directory + "/" + name));
  return urls;
}

std::string customFileManager::iconName(const std::string& extension) const {
  return nimbrel::iconName(extension);
}

}  // namespace nimbrel
