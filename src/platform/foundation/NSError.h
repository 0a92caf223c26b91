#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

// An error as the platform reports it: domain, code, the sentence a person reads, and details.
struct NSError {
  std::string domain;
  long code = 0;
  std::string localizedDescription;
  std::vector<std::pair<std::string, std::string>> userInfo;
  std::shared_ptr<NSError> underlyingError;

  // "Error Domain=<domain> Code=<code> "<description>" UserInfo={key=value, ...}", the form the
  // platform's debug description takes (without object addresses).
  std::string debugDescription() const;

  static constexpr const char* NSCocoaErrorDomain = "NSCocoaErrorDomain";
  static constexpr const char* NSPOSIXErrorDomain = "NSPOSIXErrorDomain";
  static NSError posix(int errnoValue);
};
