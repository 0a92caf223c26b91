#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/coreimage/CIImage.h"

inline constexpr const char* kCIInputImageKey = "inputImage";
inline constexpr const char* kCIOutputImageKey = "outputImage";
inline constexpr const char* kCIInputRadiusKey = "inputRadius";

// An image filter by name. This platform has "CIGaussianBlur" (inputImage, inputRadius; radius 10
// by default); any other name gives no filter.
class CIFilter {
 public:
  static std::shared_ptr<CIFilter> filterWithName(const std::string& name);

  void setDefaults();
  void setValue(const CIImage& image, const std::string& key);
  void setValue(double number, const std::string& key);
  // The input image, or for kCIOutputImageKey the filtered image (computed on each read); none
  // without an input.
  std::optional<CIImage> valueForKey(const std::string& key) const;
  double radius() const { return radius_; }

 private:
  std::optional<CIImage> input_;
  double radius_ = 10.0;
};
