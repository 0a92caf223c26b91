#include "shell/ImageStore.h"

#include <QFile>
#include <QImageReader>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>
#include <QUrl>

#include <algorithm>

namespace nimbrel::shell {

namespace {

constexpr int kDefaultAssetSide = 96;
constexpr int kDefaultTileSide = 256;

QString assetPath(const QString& name) {
  return QStringLiteral(":/nimbrel/assets/") + name + QStringLiteral(".svg");
}

// Fits a picture of aspect w:h into the requested box (either side may be 0 = free).
QSize fitted(int w, int h, const QSize& requested, int fallbackSide) {
  if (w <= 0 || h <= 0) {
    w = 1;
    h = 1;
  }
  QSize box = requested;
  if (box.width() <= 0 && box.height() <= 0) box = QSize(fallbackSide, fallbackSide);
  if (box.width() <= 0) box.setWidth(box.height() * w / h);
  if (box.height() <= 0) box.setHeight(box.width() * h / w);
  QSize size(w, h);
  size.scale(box, Qt::KeepAspectRatio);
  return size.expandedTo(QSize(1, 1));
}

}  // namespace

ImageStore& ImageStore::shared() {
  static ImageStore store;
  return store;
}

size_t ImageStore::rememberedCount() const {
  std::lock_guard lock(mutex_);
  return entries_.size();
}

QString ImageStore::urlFor(const std::optional<UIImage>& image) {
  if (!image) return {};
  if (image->isAsset()) return QStringLiteral("image://nimbrel/asset/") + QString::fromStdString(image->name());
  if (image->isSystem()) return QStringLiteral("image://nimbrel/asset/") + QString::fromStdString(image->name());
  const UIImage::Pixels* pixels = image->pixels();
  if (!pixels) return {};
  // The platform's own badges ("badge:live", "badge:live-over-content") are drawings.
  if (pixels->source.rfind("badge:live", 0) == 0) return QStringLiteral("image://nimbrel/asset/live_badge");
  if (!pixels->source.empty()) return urlForFile(pixels->source, pixels->width, pixels->height);
  std::lock_guard lock(mutex_);
  quint64 id;
  auto known = ids_.find(pixels);
  if (known != ids_.end()) {
    id = known->second;
    auto& entry = entries_.at(id);
    ages_.splice(ages_.begin(), ages_, entry.age);
  } else {
    id = ++next_;
    ages_.push_front(id);
    entries_.emplace(id, Entry{*image, ages_.begin()});
    ids_.emplace(pixels, id);
    while (entries_.size() > kCapacity) {
      quint64 oldest = ages_.back();
      ages_.pop_back();
      auto it = entries_.find(oldest);
      ids_.erase(it->second.image.pixels());
      entries_.erase(it);
    }
  }
  // The size travels in the address so that a forgotten picture still gets a tile of its shape.
  return QStringLiteral("image://nimbrel/pixels/%1/%2x%3").arg(id).arg(pixels->width).arg(pixels->height);
}

QString ImageStore::urlForFile(const std::string& path, int width, int height) {
  if (path.empty()) return {};
  // One address per file and size: the same picture asked for again is the engine's cache hit.
  return QStringLiteral("image://nimbrel/file/%1x%2/").arg(width).arg(height) +
         QString::fromLatin1(QUrl::toPercentEncoding(QString::fromStdString(path)));
}

bool ImageStore::hasAsset(const QString& name) {
  return QFile::exists(assetPath(name));
}

QImage ImageStore::renderAsset(const QString& name, const QSize& requested) {
  QSvgRenderer renderer(assetPath(name));
  if (!renderer.isValid()) {
    // An asset this build has no drawing for: a quiet grey square rather than nothing.
    QSize size = fitted(1, 1, requested, kDefaultAssetSide);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setBrush(QColor(0xd8, 0xd8, 0xdc));
    p.setPen(Qt::NoPen);
    p.drawRoundedRect(QRectF(QPointF(0, 0), size).adjusted(2, 2, -2, -2), size.width() / 5.0, size.width() / 5.0);
    return image;
  }
  QSize natural = renderer.defaultSize();
  QSize size = fitted(natural.width(), natural.height(), requested, kDefaultAssetSide);
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  renderer.render(&p);
  return image;
}

QImage ImageStore::placeholderTile(int width, int height, quint32 seed, const QSize& requested) {
  QSize size = fitted(width, height, requested, kDefaultTileSide);
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  // Soft pairs of colours, so that a grid of tiles reads as a grid of different pictures.
  static const QColor kPairs[][2] = {
      {QColor(0x8e, 0xc5, 0xfc), QColor(0xe0, 0xc3, 0xfc)}, {QColor(0xf6, 0xd3, 0x65), QColor(0xfd, 0xa0, 0x85)},
      {QColor(0x84, 0xfa, 0xb0), QColor(0x8f, 0xd3, 0xf4)}, {QColor(0xa1, 0xc4, 0xfd), QColor(0xc2, 0xe9, 0xfb)},
      {QColor(0xff, 0xec, 0xd2), QColor(0xfc, 0xb6, 0x9f)}, {QColor(0xd4, 0xfc, 0x79), QColor(0x96, 0xe6, 0xa1)},
      {QColor(0xfb, 0xc2, 0xeb), QColor(0xa6, 0xc1, 0xee)}, {QColor(0xfd, 0xcb, 0xf1), QColor(0xe6, 0xde, 0xe9)},
  };
  const auto& pair = kPairs[seed % (sizeof(kPairs) / sizeof(kPairs[0]))];
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  QLinearGradient gradient(0, 0, size.width(), size.height());
  gradient.setColorAt(0, pair[0]);
  gradient.setColorAt(1, pair[1]);
  p.fillRect(image.rect(), gradient);
  // A small landscape: a sun and two hills.
  double w = size.width(), h = size.height(), unit = std::min(w, h);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(255, 255, 255, 150));
  p.drawEllipse(QPointF(w * 0.7, h * 0.32), unit * 0.09, unit * 0.09);
  QPainterPath hills;
  hills.moveTo(0, h);
  hills.lineTo(0, h * 0.78);
  hills.quadTo(w * 0.25, h * 0.52, w * 0.48, h * 0.74);
  hills.quadTo(w * 0.7, h * 0.58, w, h * 0.72);
  hills.lineTo(w, h);
  hills.closeSubpath();
  p.setBrush(QColor(255, 255, 255, 110));
  p.drawPath(hills);
  return image;
}

QImage ImageStore::render(const QString& id, const QSize& requested) {
  if (id.startsWith(QStringLiteral("asset/"))) return renderAsset(id.mid(6), requested);
  if (id.startsWith(QStringLiteral("file/"))) {
    int slash = id.indexOf(QLatin1Char('/'), 5);
    const QStringList dims = id.mid(5, slash - 5).split(QLatin1Char('x'));
    int w = dims.value(0).toInt(), h = dims.value(1).toInt();
    QString path = QUrl::fromPercentEncoding(id.mid(slash + 1).toLatin1());
    QImageReader reader(path);
    if (reader.canRead()) {
      QSize natural = reader.size();
      if (natural.isValid()) reader.setScaledSize(fitted(natural.width(), natural.height(), requested, natural.width()));
      QImage loaded = reader.read();
      if (!loaded.isNull()) return loaded;
    }
    return placeholderTile(w, h, qHash(path), requested);
  }
  if (id.startsWith(QStringLiteral("pixels/"))) {
    const QStringList parts = id.split(QLatin1Char('/'));
    quint64 key = parts.value(1).toULongLong();
    const QStringList dims = parts.value(2).split(QLatin1Char('x'));
    int w = dims.value(0).toInt(), h = dims.value(1).toInt();
    std::optional<UIImage> image;
    {
      std::lock_guard lock(mutex_);
      auto it = entries_.find(key);
      if (it != entries_.end()) image = it->second.image;
    }
    if (image && image->pixels()) {
      const UIImage::Pixels& px = *image->pixels();
      if (px.width > 0 && px.height > 0 &&
          px.rgba.size() == static_cast<size_t>(px.width) * static_cast<size_t>(px.height) * 4) {
        QImage raw(px.rgba.data(), px.width, px.height, px.width * 4, QImage::Format_RGBA8888);
        QSize size = fitted(px.width, px.height, requested, std::max(px.width, px.height));
        return raw.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
      }
    }
    return placeholderTile(w, h, static_cast<quint32>(key * 2654435761u), requested);
  }
  return {};
}

QImage ImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
  QImage image = ImageStore::shared().render(id, requestedSize);
  if (size) *size = image.size();
  return image;
}

}  // namespace nimbrel::shell
