#pragma once

#include <string>

// A font as a description; a shell picks the face.
struct UIFont {
  std::string name = "system";
  double pointSize = 17;
  bool bold = false;

  static UIFont systemFontOfSize(double size) { return {"system", size, false}; }
  static UIFont boldSystemFontOfSize(double size) { return {"system", size, true}; }
  bool operator==(const UIFont&) const = default;
};
