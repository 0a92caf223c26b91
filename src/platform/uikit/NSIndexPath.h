#pragma once

#include <compare>
#include <vector>

// A position in a sectioned list.
struct NSIndexPath {
  long section = 0;
  long item = 0;

  static NSIndexPath indexPathForItemInSection(long item, long section) { return {section, item}; }
  long row() const { return item; }
  auto operator<=>(const NSIndexPath&) const = default;
};
