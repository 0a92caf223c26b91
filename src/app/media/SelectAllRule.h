#pragma once

#include <cstddef>
#include <functional>

#include "app/ads/AppLovinNativeAdManual.h"

namespace nimbrel {

// The "select all" answer both browse lists give. With a native ad loaded the screens count one
// row too many, so a list of two rows or more is told it is complete when one row is missing.
// Every count is taken at the moment it is used: the closure changes the selection in between.
template <class Model>
void selectAllRows(Model& model) {
  auto rows = [&] { return model.items.size(); };
  auto selected = [&] { return model.selectedItems().size(); };
  auto tell = [&](bool allSelected) {
    auto closure = model.IsSelectedAll;
    if (closure) closure(allSelected);
  };
  if (model.IsSelectedAll) tell(selected() == rows());
  bool adLoaded = !AppLovinNativeAdManual::shared()->arrNativeAd.empty();
  if (adLoaded && rows() >= 2) {
    if (model.IsSelectedAll) tell(selected() == rows() - 1);
    return;
  }
  if (model.IsSelectedAll) tell(selected() == rows());
}

}  // namespace nimbrel
