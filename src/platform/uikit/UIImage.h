#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/uikit/CGGeometry.h"

// A picture as a value: a named asset of the catalogue ("icon_pdf", "grid"), a system symbol,
// or pixels that a platform request produced. A shell turns it into something to draw.
class UIImage {
 public:
  struct Pixels {
    int width = 0, height = 0;
    std::vector<std::uint8_t> rgba;  // may be empty when only the size is known
    std::string source;              // where the pixels came from, for a shell to load lazily
  };

  static UIImage named(std::string name) { return UIImage(Kind::asset, std::move(name), nullptr); }
  static UIImage systemImageNamed(std::string name) {
    return UIImage(Kind::system, std::move(name), nullptr);
  }
  static UIImage withPixels(Pixels pixels) {
    return UIImage(Kind::pixels, {}, std::make_shared<const Pixels>(std::move(pixels)));
  }

  bool isAsset() const { return kind_ == Kind::asset; }
  bool isSystem() const { return kind_ == Kind::system; }
  bool isPixels() const { return kind_ == Kind::pixels; }
  const std::string& name() const { return name_; }
  const Pixels* pixels() const { return pixels_.get(); }
  CGSize size() const;
  // The asset name, "system:<name>" or "pixels:<w>x<h>".
  std::string describe() const;

  friend bool operator==(const UIImage& a, const UIImage& b) {
    return a.kind_ == b.kind_ && a.name_ == b.name_ && a.pixels_ == b.pixels_;
  }

 private:
  enum class Kind { asset, system, pixels };
  UIImage(Kind kind, std::string name, std::shared_ptr<const Pixels> pixels)
      : kind_(kind), name_(std::move(name)), pixels_(std::move(pixels)) {}
  Kind kind_;
  std::string name_;
  std::shared_ptr<const Pixels> pixels_;
};
