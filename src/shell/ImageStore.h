#pragma once

#include <QImage>
#include <QQuickImageProvider>
#include <QString>

#include <cstdint>
#include <list>
#include <mutex>
#include <optional>
#include <unordered_map>

#include "platform/uikit/UIImage.h"

namespace nimbrel::shell {

// Turns the platform's picture values into addresses QML can load ("image://nimbrel/..."), and
// those addresses back into pictures: named assets from the shell's own drawings, pictures from
// their own pixels, from the file they came from when it is a real image (a song's cover through
// the platform's decoder), else a placeholder tile of their aspect.
class ImageStore {
 public:
  static constexpr const char* kProviderId = "nimbrel";
  static ImageStore& shared();

  // "" for no picture.
  QString urlFor(const std::optional<UIImage>& image);
  // A picture read lazily from a file, of the given size (a tile of that shape when unreadable).
  static QString urlForFile(const std::string& path, int width, int height);
  // The picture for an address's path ("asset/icon_pdf", "pixels/12/4032x3024").
  QImage render(const QString& id, const QSize& requested);
  // "round/<address>": the picture cut to a circle around its centre.
  static QImage roundCut(const QImage& image, const QSize& requested);
  // What QML would draw for `image` at that size.
  QImage picture(const UIImage& image, const QSize& requested);

  static QImage renderAsset(const QString& name, const QSize& requested);
  static QImage placeholderTile(int width, int height, quint32 seed, const QSize& requested);
  static bool hasAsset(const QString& name);
  // A song's cover ("<song>#artwork") through the platform's decoder, filling a box of the
  // picture's shape at the requested size; null without a decoder or a cover.
  static QImage decodedArtwork(const QString& source, int width, int height, const QSize& requested);

  // How many picture values are remembered (a bounded number, oldest forgotten first).
  size_t rememberedCount() const;
  static constexpr size_t kCapacity = 4096;

 private:
  struct Entry {
    UIImage image;
    std::list<quint64>::iterator age;
  };
  mutable std::mutex mutex_;
  quint64 next_ = 0;
  std::unordered_map<const UIImage::Pixels*, quint64> ids_;
  std::unordered_map<quint64, Entry> entries_;
  std::list<quint64> ages_;  // most recent at the front
};

// The provider registered with the QML engine under ImageStore::kProviderId.
class ImageProvider final : public QQuickImageProvider {
 public:
  ImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}
  QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace nimbrel::shell
