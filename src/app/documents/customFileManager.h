#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/URL.h"

namespace nimbrel {

// The one gate to the private folder: "<documents>/Nimbrel/importedFiles". Synchronous, on the
// caller's thread; failures are logged and returned as no value or false.
class customFileManager {
 public:
  static inline constexpr const char* kRootFolder = "Nimbrel";
  static inline constexpr const char* kImportedFolder = "importedFiles";

  // Made on first use; making it creates the root folder. Without a documents directory the
  // process ends.
  static std::shared_ptr<customFileManager> shared();
  customFileManager();

  void createRootFolder() const;
  void createFolder(const std::string& name) const;
  // DOCUMENTDIRPATH + "/Nimbrel" + "/" + folder + "/" + the source's last path component, joined
  // as plain text.
  std::string destinationPath(const URL& url, const std::string& folder) const;
  std::optional<URL> moveFile(const std::string& fromPath, const std::string& toPath) const;
  std::optional<URL> copyFile(const URL& from, const URL& to) const;
  bool removeFile(const std::optional<URL>& url) const;
  std::optional<std::vector<URL>> listFiles(const std::string& folder) const;
  std::string iconName(const std::string& extension) const;

  const std::string& documentDirPath() const { return DOCUMENTDIRPATH; }

 private:
  NSFileManager& FILEMANAGER;
  std::string DOCUMENTDIRPATH;
};

}  // namespace nimbrel
