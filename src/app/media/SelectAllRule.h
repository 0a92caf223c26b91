#pragma once

#include <cstddef>
#include <functional>

#include "app/ads/AppLovinNativeAdManual.h"

namespace nimbrel {

// The "select all" rule of both browse lists. With a native ad loaded, a list of two rows or more
// compares the picked rows with one row fewer. Counts are taken at each use: the closure changes
// the selection in between.
template <class Model>
void selectAllRows(Model& model) {
  auto tell = [&model](size_t complete) {
    auto closure = model.IsSelectedAll;
    if (closure) closure(model.selectedItems().size() == complete);
  };
  tell(model.items.size());
  bool adLoaded = !AppLovinNativeAdManual::shared()->arrNativeAd.empty();
  if (adLoaded && model.items.size() >= 2) {
    tell(model.items.size() - 1);
    return;
  }
  tell(model.items.size());
}

}  // namespace nimbrel
