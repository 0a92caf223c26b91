#include "shell/ImageStore.h"

#include <QPainter>
#include <QPdfDocument>

#include <QFile>
#include <QImageReader>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>
#include <QUrl>

#include <algorithm>

#include "platform/uikit/ImageDecoder.h"

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
  // A catalogue picture that went through Core Image: its drawing, blurred when it was.
  if (pixels->source.rfind("asset:", 0) == 0) {
    QString name = QString::fromStdString(pixels->source.substr(6));
    const bool blurred = name.endsWith(QStringLiteral("#blur"));
    if (blurred) name.chop(5);
    return (blurred ? QStringLiteral("image://nimbrel/blurred/asset/") : QStringLiteral("image://nimbrel/asset/")) + name;
  }
  // An empty picture (a backdrop left blank) draws nothing.
  if (pixels->source.empty() && (pixels->width <= 0 || pixels->height <= 0)) return {};
  // Pixels in hand (a blurred backdrop) are drawn as they are; otherwise the source is read.
  const bool hasRgba = pixels->width > 0 && pixels->height > 0 &&
                       pixels->rgba.size() == static_cast<size_t>(pixels->width) * static_cast<size_t>(pixels->height) * 4;
  if (!hasRgba && !pixels->source.empty()) {
    // A blur the platform could not compute for want of pixels: the shell softens the source.
    const std::string& source = pixels->source;
    if (source.size() > 5 && source.ends_with("#blur")) {
      return urlForFile(source.substr(0, source.size() - 5), pixels->width, pixels->height)
          .replace(QStringLiteral("image://nimbrel/file/"), QStringLiteral("image://nimbrel/blurred/file/"));
    }
    return urlForFile(source, pixels->width, pixels->height);
  }
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

QImage ImageStore::decodedArtwork(const QString& source, int width, int height, const QSize& requested) {
  // A song's cover lives inside the song: only the platform's decoder can reach it.
  auto decoder = ImageDecoder::current();
  if (!decoder || width <= 0 || height <= 0) return {};
  QSize size = fitted(width, height, requested, std::max(width, height));
  UIImage::Pixels picture;
  picture.width = size.width();
  picture.height = size.height();
  picture.source = source.toStdString();
  auto rgba = decoder->decode(picture);
  if (!rgba || rgba->size() != static_cast<size_t>(picture.width) * static_cast<size_t>(picture.height) * 4) return {};
  return QImage(rgba->data(), picture.width, picture.height, picture.width * 4, QImage::Format_RGBA8888).copy();
}

QImage ImageStore::render(const QString& id, const QSize& requested) {
  if (id.startsWith(QStringLiteral("round/"))) {
    // The inner picture at its own size: fitting it into the square first would cut the circle
    // from a smaller picture. Drawings scale freely.
    const QString inner = id.mid(6);
    return roundCut(render(inner, inner.startsWith(QStringLiteral("asset/")) ? requested : QSize()), requested);
  }
  if (id.startsWith(QStringLiteral("blurred/"))) {
    // Drawn tiny and brought back up: a soft wash of the picture's colours.
    QImage small = render(id.mid(8), QSize(12, 12));
    if (small.isNull()) return small;
    QSize size = fitted(small.width(), small.height(), requested, kDefaultTileSide);
    return small.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  }
  if (id.startsWith(QStringLiteral("asset/"))) return renderAsset(id.mid(6), requested);
  if (id.startsWith(QStringLiteral("pdf/"))) {
    // "pdf/<file, percent-encoded>/<page>": the page at the requested width.
    int slash = id.lastIndexOf(QLatin1Char('/'));
    QString path = QUrl::fromPercentEncoding(id.mid(4, slash - 4).toLatin1());
    int page = id.mid(slash + 1).toInt();
    QPdfDocument document;
    if (document.load(path) != QPdfDocument::Error::None || page >= document.pageCount()) return {};
    QSizeF points = document.pagePointSize(page);
    int width = requested.width() > 0 ? requested.width() : int(points.width());
    int height = points.width() > 0 ? int(width * points.height() / points.width()) : width;
    QImage picture = document.render(page, QSize(width, height));
    QImage sheet(picture.size(), QImage::Format_RGB32);
    sheet.fill(Qt::white);  // pages are drawn on white paper, not on the window
    QPainter painter(&sheet);
    painter.drawImage(0, 0, picture);
    return sheet;
  }
  if (id.startsWith(QStringLiteral("file/"))) {
    int slash = id.indexOf(QLatin1Char('/'), 5);
    const QStringList dims = id.mid(5, slash - 5).split(QLatin1Char('x'));
    int w = dims.value(0).toInt(), h = dims.value(1).toInt();
    QString path = QUrl::fromPercentEncoding(id.mid(slash + 1).toLatin1());
    if (path.endsWith(QStringLiteral("#artwork"))) {
      QImage cover = decodedArtwork(path, w, h, requested);
      return cover.isNull() ? placeholderTile(w, h, qHash(path), requested) : cover;
    }
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

QImage ImageStore::roundCut(const QImage& image, const QSize& requested) {
  if (image.isNull()) return image;
  // Qt Quick 6.4 has no mask for a round picture in the software renderer: the cut is drawn here.
  int side = std::min(image.width(), image.height());
  if (requested.width() > 0 && requested.height() > 0) side = std::min({side, requested.width(), requested.height()});
  QImage square = image.scaled(side, side, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
  QImage out(side, side, QImage::Format_ARGB32_Premultiplied);
  out.fill(Qt::transparent);
  QPainter p(&out);
  p.setRenderHint(QPainter::Antialiasing);
  QPainterPath circle;
  circle.addEllipse(QRectF(0, 0, side, side));
  p.setClipPath(circle);
  p.drawImage(QPointF((side - square.width()) / 2.0, (side - square.height()) / 2.0), square);
  return out;
}

QImage ImageStore::picture(const UIImage& image, const QSize& requested) {
  static const QString kPrefix = QStringLiteral("image://nimbrel/");
  QString url = urlFor(image);
  return url.startsWith(kPrefix) ? render(url.mid(kPrefix.size()), requested) : QImage();
}

QImage ImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
  QImage image = ImageStore::shared().render(id, requestedSize);
  if (size) *size = image.size();
  return image;
}

}  // namespace nimbrel::shell
