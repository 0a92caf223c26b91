#include "platform/coreimage/CIFilter.h"

#include "platform/coreimage/GaussianBlur.h"

std::shared_ptr<CIFilter> CIFilter::filterWithName(const std::string& name) {
  if (name != "CIGaussianBlur") return nullptr;
  return std::make_shared<CIFilter>();
}

void CIFilter::setDefaults() { radius_ = 10.0; }

void CIFilter::setValue(const CIImage& image, const std::string& key) {
  if (key == kCIInputImageKey) input_ = image;
}

void CIFilter::setValue(double number, const std::string& key) {
  if (key == kCIInputRadiusKey) radius_ = number;
}

std::optional<CIImage> CIFilter::valueForKey(const std::string& key) const {
  if (key == kCIInputImageKey) return input_;
  if (key != kCIOutputImageKey || !input_) return std::nullopt;
  // The radius is the kernel's standard deviation; the output spreads three of them past the input.
  const UIImage::Pixels& in = input_->pixels();
  int margin = gaussianBlurMargin(radius_);
  auto out = std::make_shared<UIImage::Pixels>();
  out->width = in.width + 2 * margin;
  out->height = in.height + 2 * margin;
  out->source = in.source.empty() ? std::string() : in.source + "#blur";
  if (!in.rgba.empty()) {
    BlurredPixels blurred = gaussianBlurRGBA(in.rgba.data(), in.width, in.height, radius_, margin);
    out->rgba = std::move(blurred.rgba);
  }
  CGRect extent = input_->extent();
  return CIImage(std::move(out), {extent.minX() - margin, extent.minY() - margin});
}
