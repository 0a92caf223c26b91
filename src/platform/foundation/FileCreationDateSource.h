#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/foundation/Date.h"

// Where a file's creation date comes from; a file whose date cannot be read has none.
class FileCreationDateSource {
 public:
  virtual ~FileCreationDateSource() = default;
  virtual std::optional<Date> creationDate(const std::string& path) const = 0;

  // Until a backend installs one: the birth time the file system keeps, else the modification time.
  static std::shared_ptr<FileCreationDateSource> current();
  static void install(std::shared_ptr<FileCreationDateSource> source);
};
