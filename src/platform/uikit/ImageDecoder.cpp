#include "platform/uikit/ImageDecoder.h"

#include <mutex>

namespace {
std::mutex gMutex;
std::shared_ptr<ImageDecoder>& slot() {
  static std::shared_ptr<ImageDecoder> s;
  return s;
}
}  // namespace

std::shared_ptr<ImageDecoder> ImageDecoder::current() {
  std::lock_guard lock(gMutex);
  return slot();
}

void ImageDecoder::install(std::shared_ptr<ImageDecoder> decoder) {
  std::lock_guard lock(gMutex);
  slot() = std::move(decoder);
}
