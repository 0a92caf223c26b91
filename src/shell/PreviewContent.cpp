#include "shell/PreviewContent.h"

#include <QPdfDocument>

#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QStringDecoder>

#include "app/core/IconName.h"
#include "app/media/Units.h"
#include "platform/quicklook/QLPreviewController.h"
#include "platform/uikit/UIApplication.h"

namespace nimbrel::shell {

namespace {

// Text larger than this is shown up to here, with a notice.
constexpr qint64 kTextLimit = 2 * 1024 * 1024;

std::optional<URL> previewItem(ScreenObject* screen) {
  if (!screen) return std::nullopt;
  auto preview = std::dynamic_pointer_cast<QLPreviewController>(screen->controller());
  return preview ? preview->currentPreviewItem() : std::nullopt;
}

}  // namespace

QString PreviewContent::kindOf(const QString& path) {
  QMimeDatabase db;
  const QMimeType type = db.mimeTypeForFile(path);
  if (type.inherits(QStringLiteral("application/pdf"))) return QStringLiteral("pdf");
  const QString name = type.name();
  if (name.startsWith(QLatin1String("image/")) && !name.contains(QLatin1String("svg"))) return QStringLiteral("image");
  if (name.startsWith(QLatin1String("audio/"))) return QStringLiteral("audio");
  if (name.startsWith(QLatin1String("video/"))) return QStringLiteral("video");
  if (type.inherits(QStringLiteral("text/plain"))) return QStringLiteral("text");
  return QStringLiteral("other");
}

void PreviewContent::setScreen(ScreenObject* screen) {
  if (screen_ == screen) return;
  screen_ = screen;
  refresh();
}

void PreviewContent::refresh() {
  auto item = previewItem(screen_);
  const QString path = item ? QString::fromStdString(item->path()) : QString();
  const QFileInfo info(path);
  exists_ = item && info.exists();
  url_ = item ? QUrl::fromLocalFile(path) : QUrl();
  name_ = item ? QString::fromStdString(item->lastPathComponent()) : QString();
  icon_ = QString::fromStdString(iconName(info.suffix().toStdString()));
  sizeText_ = exists_ ? QString::fromStdString(Units(info.size()).getReadableUnit()) : QString();
  text_.clear();
  notice_.clear();
  kind_ = exists_ && info.isFile() ? kindOf(path) : QStringLiteral("other");
  if (!exists_ && item) notice_ = QStringLiteral("This document is no longer in the folder. Go back to see the list as it is now.");
  pageCount_ = 0;
  pagesSource_.clear();
  if (kind_ == QLatin1String("pdf")) {
    // Pages are rendered by the image provider from the file; here only their number and shape.
    QPdfDocument document;
    if (document.load(path) == QPdfDocument::Error::None && document.pageCount() > 0) {
      pageCount_ = document.pageCount();
      QSizeF first = document.pagePointSize(0);
      pageAspect_ = first.width() > 0 ? first.height() / first.width() : 1.414;
      pagesSource_ = QStringLiteral("image://nimbrel/pdf/") + QString::fromLatin1(QUrl::toPercentEncoding(path));
    }
  }
  if (kind_ == QLatin1String("text")) {
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
      const QByteArray bytes = file.read(kTextLimit);
      QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
      text_ = utf8.decode(bytes);
      if (utf8.hasError()) {
        // Shown all the same, with the bytes that are no UTF-8 as replacement marks.
        notice_ = QStringLiteral("This file is not UTF-8 text; characters that are not UTF-8 are shown as \uFFFD.");
      } else if (info.size() > kTextLimit) {
        notice_ = QStringLiteral("Only the first 2 MB are shown.");
      }
    }
  }
  Q_EMIT changed();
}

bool PreviewContent::openWith() {
  auto item = previewItem(screen_);
  if (!item) return false;
  UIApplication::sharedApplication().openURL(*item, {}, nullptr);
  return true;
}

}  // namespace nimbrel::shell
