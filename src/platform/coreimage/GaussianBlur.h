#pragma once

#include <cstdint>
#include <vector>

// A Gaussian blur of straight RGBA pixels with standard deviation `sigma`, by three successive box
// blurs per axis (the approximation SVG's feGaussianBlur prescribes: within a few percent of the
// true kernel, at a cost that does not grow with the radius). The result is `margin` pixels larger
// on every side, transparent where the blur fades out past the source's edge.
struct BlurredPixels {
  int width = 0, height = 0;
  std::vector<std::uint8_t> rgba;
};
BlurredPixels gaussianBlurRGBA(const std::uint8_t* rgba, int width, int height, double sigma, int margin);

// The margin a blur of `sigma` spreads over: three standard deviations.
int gaussianBlurMargin(double sigma);
