#pragma once

#include <string>

enum class UIUserInterfaceIdiom : int { unspecified = -1, phone = 0, pad = 1, tv = 2, carPlay = 3, mac = 5 };

class UIDevice {
 public:
  static UIDevice& currentDevice();
  UIUserInterfaceIdiom userInterfaceIdiom() const { return idiom_; }
  const std::string& systemVersion() const { return systemVersion_; }
  // True when systemVersion is at least major.minor.patch.
  bool isOperatingSystemAtLeastVersion(int major, int minor = 0, int patch = 0) const;
  void configure(UIUserInterfaceIdiom idiom, std::string systemVersion);

 private:
  UIUserInterfaceIdiom idiom_ = UIUserInterfaceIdiom::phone;
  std::string systemVersion_ = "17.0";
};
