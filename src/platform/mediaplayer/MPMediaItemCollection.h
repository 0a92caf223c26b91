#pragma once

#include <memory>
#include <vector>

#include "platform/foundation/NSObject.h"
#include "platform/mediaplayer/MPMediaItem.h"

class MPMediaItemCollection : public NSObject {
 public:
  explicit MPMediaItemCollection(std::vector<std::shared_ptr<MPMediaItem>> items) : items_(std::move(items)) {}
  static std::shared_ptr<MPMediaItemCollection> collectionWithItems(std::vector<std::shared_ptr<MPMediaItem>> items) {
    return std::make_shared<MPMediaItemCollection>(std::move(items));
  }
  const std::vector<std::shared_ptr<MPMediaItem>>& items() const { return items_; }
  size_t count() const { return items_.size(); }
  std::shared_ptr<MPMediaItem> representativeItem() const { return items_.empty() ? nullptr : items_.front(); }

 private:
  std::vector<std::shared_ptr<MPMediaItem>> items_;
};
