#include "platform/coreimage/GaussianBlur.h"

#include <algorithm>
#include <cmath>

namespace {

struct Box {
  int lo, hi;  // the window [x + lo, x + hi]
};

// The three boxes for sigma: size d from sigma; an even d gives two boxes shifted half a pixel
// either way and one of d + 1, so the whole stays centred.
void boxesFor(double sigma, Box out[3]) {
  int d = static_cast<int>(std::floor(sigma * 3.0 * std::sqrt(2.0 * M_PI) / 4.0 + 0.5));
  if (d < 1) d = 1;
  if (d % 2 == 1) {
    int r = (d - 1) / 2;
    out[0] = out[1] = out[2] = {-r, r};
  } else {
    int h = d / 2;
    out[0] = {-h, h - 1};
    out[1] = {-h + 1, h};
    out[2] = {-h, h};
  }
}

// One box pass along a line of `n` elements `stride` floats apart, `lanes` floats per element
// (4 channels along a row; a whole row of pixels when walking down the columns). `Lanes` fixes the
// count at compile time where it is known, and nothing aliases, so the lane loops vectorise.
template <size_t Lanes = 0>
void boxPass(const float* __restrict in, float* __restrict out, int n, size_t stride, size_t lanes, Box box,
             float* __restrict sum) {
  if constexpr (Lanes != 0) lanes = Lanes;
  float inv = 1.0f / static_cast<float>(box.hi - box.lo + 1);
  std::fill(sum, sum + lanes, 0.0f);
  for (int k = std::max(0, box.lo); k <= std::min(n - 1, box.hi); ++k) {
    const float* p = in + k * stride;
    for (size_t c = 0; c < lanes; ++c) sum[c] += p[c];
  }
  for (int x = 0; x < n; ++x) {
    float* o = out + x * stride;
    for (size_t c = 0; c < lanes; ++c) o[c] = sum[c] * inv;
    int add = x + 1 + box.hi, drop = x + box.lo;
    if (add < n) {
      const float* p = in + add * stride;
      for (size_t c = 0; c < lanes; ++c) sum[c] += p[c];
    }
    if (drop >= 0 && drop < n) {
      const float* p = in + drop * stride;
      for (size_t c = 0; c < lanes; ++c) sum[c] -= p[c];
    }
  }
}

}  // namespace

int gaussianBlurMargin(double sigma) { return sigma > 0 ? static_cast<int>(std::ceil(3.0 * sigma)) : 0; }

BlurredPixels gaussianBlurRGBA(const std::uint8_t* rgba, int width, int height, double sigma, int margin) {
  BlurredPixels result;
  result.width = width + 2 * margin;
  result.height = height + 2 * margin;
  const int W = result.width, H = result.height;
  const size_t row = static_cast<size_t>(W) * 4;
  // Premultiplied, so colour does not bleed out of transparent pixels.
  std::vector<float> a(row * H, 0.0f), b(row * H);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const std::uint8_t* s = rgba + (static_cast<size_t>(y) * width + x) * 4;
      float* d = a.data() + (y + margin) * row + (x + margin) * 4;
      float alpha = s[3] / 255.0f;
      d[0] = s[0] * alpha;
      d[1] = s[1] * alpha;
      d[2] = s[2] * alpha;
      d[3] = s[3];
    }
  }
  if (sigma > 0) {
    Box boxes[3];
    boxesFor(sigma, boxes);
    std::vector<float> sum(std::max<size_t>(row, 4));
    for (const Box& box : boxes) {
      for (int y = 0; y < H; ++y) boxPass<4>(a.data() + y * row, b.data() + y * row, W, 4, 4, box, sum.data());
      std::swap(a, b);
    }
    for (const Box& box : boxes) {
      boxPass(a.data(), b.data(), H, row, row, box, sum.data());
      std::swap(a, b);
    }
  }
  result.rgba.resize(row * H);
  for (size_t i = 0; i < a.size(); i += 4) {
    float alpha = a[i + 3];
    float unmul = alpha > 0.5f ? 255.0f / alpha : 0.0f;
    for (int c = 0; c < 3; ++c) {
      result.rgba[i + c] = static_cast<std::uint8_t>(std::clamp(a[i + c] * unmul + 0.5f, 0.0f, 255.0f));
    }
    result.rgba[i + 3] = static_cast<std::uint8_t>(std::clamp(alpha + 0.5f, 0.0f, 255.0f));
  }
  return result;
}
