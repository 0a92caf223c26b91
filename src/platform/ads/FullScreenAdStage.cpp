#include "platform/ads/FullScreenAdStage.h"

FullScreenAdStage& FullScreenAdStage::shared() {
  static FullScreenAdStage stage;
  return stage;
}

bool FullScreenAdStage::present(Showing ad, std::function<void()> onClose) {
  if (showing_) return false;
  showing_ = std::move(ad);
  onClose_ = std::move(onClose);
  changed_.emit();
  return true;
}

bool FullScreenAdStage::close() {
  if (!showing_) return false;
  showing_.reset();
  auto onClose = std::move(onClose_);
  onClose_ = nullptr;
  changed_.emit();
  if (onClose) onClose();
  return true;
}

void FullScreenAdStage::reset() {
  showing_.reset();
  onClose_ = nullptr;
  changed_ = ChangeSignal{};
}
