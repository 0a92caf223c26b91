#include "platform/coreimage/CIContext.h"

#include <algorithm>
#include <cmath>

CGImageRef CIContext::createCGImage(const CIImage& image, CGRect rect) const {
  CGRect extent = image.extent();
  if (rect.origin == extent.origin && rect.size.width == extent.size.width && rect.size.height == extent.size.height) {
    return image.sharedPixels();
  }
  int x0 = static_cast<int>(std::floor(std::max(rect.minX(), extent.minX()) - extent.minX()));
  int y0 = static_cast<int>(std::floor(std::max(rect.minY(), extent.minY()) - extent.minY()));
  int x1 = static_cast<int>(std::ceil(std::min(rect.minX() + rect.width(), extent.minX() + extent.width()) - extent.minX()));
  int y1 = static_cast<int>(std::ceil(std::min(rect.minY() + rect.height(), extent.minY() + extent.height()) - extent.minY()));
  if (x1 <= x0 || y1 <= y0) return nullptr;
  const UIImage::Pixels& in = image.pixels();
  auto out = std::make_shared<UIImage::Pixels>();
  out->width = x1 - x0;
  out->height = y1 - y0;
  out->source = in.source;
  if (!in.rgba.empty()) {
    out->rgba.resize(static_cast<size_t>(out->width) * out->height * 4);
    for (int y = 0; y < out->height; ++y) {
      const auto* from = in.rgba.data() + (static_cast<size_t>(y + y0) * in.width + x0) * 4;
      std::copy(from, from + out->width * 4, out->rgba.data() + static_cast<size_t>(y) * out->width * 4);
    }
  }
  return out;
}
