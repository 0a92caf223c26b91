#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/Date.h"
#include "platform/foundation/NSError.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/foundation/PlistValue.h"
#include "platform/foundation/URL.h"

// The file system as the platform's file manager offers it, over the real file system of the
// application's home. Failures come back as NSError with the platform's sentences.
class NSFileManager {
 public:
  struct ItemAttributes {
    std::int64_t size = 0;
    Date modificationDate;
    std::optional<Date> creationDate;  // none when it cannot be read
    bool isDirectory = false;
  };

  static NSFileManager& defaultManager();

  std::vector<URL> URLsForDirectoryInDomains(NSSearchPathDirectory directory,
                                             NSSearchPathDomainMask domain) const;
  // Follows symbolic links: a dangling link does not exist.
  bool fileExistsAtPath(const std::string& path, bool* isDirectory = nullptr) const;
  bool createDirectoryAtPath(const std::string& path, bool withIntermediateDirectories,
                             NSError* error) const;
  // Fails when the destination exists: nothing is overwritten.
  bool moveItemAtURL(const URL& from, const URL& to, NSError* error) const;
  bool copyItemAtURL(const URL& from, const URL& to, NSError* error) const;
  // Removes a file or a folder with all it holds.
  bool removeItemAtURL(const URL& url, NSError* error) const;
  // Names in the order the file system gives them, hidden ones included, not descending.
  std::optional<std::vector<std::string>> contentsOfDirectoryAtPath(const std::string& path,
                                                                    NSError* error) const;
  std::optional<ItemAttributes> attributesOfItemAtPath(const std::string& path, NSError* error) const;
  // The volume of the path: "NSFileSystemSize" and "NSFileSystemFreeSize" (integers), each present
  // when it can be read.
  std::optional<PlistValue::Dictionary> attributesOfFileSystemForPath(const std::string& path, NSError* error) const;
  // The URL resource value "volumeAvailableCapacityForImportantUsage" of a file URL.
  std::optional<std::int64_t> volumeAvailableCapacityForImportantUsage(const URL& url) const;

  // Writes bytes whole (temporary file and rename).
  bool createFileAtPath(const std::string& path, const std::vector<std::uint8_t>& contents) const;
};
