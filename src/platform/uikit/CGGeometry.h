#pragma once

using CGFloat = double;

struct CGPoint {
  CGFloat x = 0, y = 0;
  bool operator==(const CGPoint&) const = default;
};

struct CGSize {
  CGFloat width = 0, height = 0;
  bool operator==(const CGSize&) const = default;
};

struct CGRect {
  CGPoint origin;
  CGSize size;
  CGFloat width() const { return size.width; }
  CGFloat height() const { return size.height; }
  CGFloat minX() const { return origin.x; }
  CGFloat minY() const { return origin.y; }
  CGFloat maxX() const { return origin.x + size.width; }
  CGFloat maxY() const { return origin.y + size.height; }
  bool contains(CGPoint p) const { return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY(); }
  bool operator==(const CGRect&) const = default;
};

inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat w, CGFloat h) {
  return CGRect{{x, y}, {w, h}};
}

struct UIEdgeInsets {
  CGFloat top = 0, left = 0, bottom = 0, right = 0;
  bool operator==(const UIEdgeInsets&) const = default;
};
