#pragma once

#include <string>

// A colour as the platform's sRGB components, 0...1.
struct UIColor {
  double red = 0, green = 0, blue = 0, alpha = 1;

  static UIColor rgba(double r, double g, double b, double a = 1) { return {r, g, b, a}; }
  static UIColor white(double w, double a = 1) { return {w, w, w, a}; }
  static UIColor clearColor() { return {0, 0, 0, 0}; }
  static UIColor blackColor() { return {0, 0, 0, 1}; }
  static UIColor whiteColor() { return {1, 1, 1, 1}; }
  static UIColor darkTextColor() { return {0, 0, 0, 1}; }
  static UIColor labelColor() { return {0, 0, 0, 1}; }
  static UIColor lightGrayColor() { return white(2.0 / 3.0); }
  static UIColor grayColor() { return white(0.5); }
  static UIColor systemGrayColor() { return {142 / 255.0, 142 / 255.0, 147 / 255.0, 1}; }
  static UIColor systemGreenColor() { return {52 / 255.0, 199 / 255.0, 89 / 255.0, 1}; }
  static UIColor systemRedColor() { return {1, 59 / 255.0, 48 / 255.0, 1}; }
  static UIColor systemBlueColor() { return {0, 122 / 255.0, 1, 1}; }

  // "#rrggbb", each component rounded to the nearest of 0...255.
  std::string hexString() const;
  UIColor withAlphaComponent(double a) const { return {red, green, blue, a}; }
  bool operator==(const UIColor&) const = default;
};
