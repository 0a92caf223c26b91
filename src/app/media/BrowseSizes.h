#pragma once

#include <functional>

namespace nimbrel {

// A browse screen's row of the cell-size table, from W, the width of the collection's bounds.
struct BrowseSizes {
  double listAlbumHeight = 120;
  double listItemHeight = 90;
  std::function<double(double)> gridWidthPhone = [](double w) { return w / 3; };
  std::function<double(double)> gridWidthPad = [](double w) { return w * 0.25; };
  double gridAlbumExtraHeight = 50;  // grid height = width + this, album level
  double gridItemExtraHeight = 0;    // item level
};

}  // namespace nimbrel
