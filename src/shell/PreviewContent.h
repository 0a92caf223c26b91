#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include "shell/ScreenObject.h"

namespace nimbrel::shell {

// What the document preview shows for its item: the kind of view (pdf, image, text, audio, video,
// other) and, for text, the text itself. The item is asked of the preview controller each time
// `screen` is set or `refresh` is called, so a file that went away shows as missing.
class PreviewContent : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(nimbrel::shell::ScreenObject* screen READ screen WRITE setScreen NOTIFY changed)
  Q_PROPERTY(QString kind READ kind NOTIFY changed)
  Q_PROPERTY(bool exists READ exists NOTIFY changed)
  Q_PROPERTY(QUrl url READ url NOTIFY changed)
  Q_PROPERTY(QString name READ name NOTIFY changed)
  Q_PROPERTY(QString sizeText READ sizeText NOTIFY changed)
  Q_PROPERTY(QString icon READ icon NOTIFY changed)
  Q_PROPERTY(QString text READ text NOTIFY changed)
  Q_PROPERTY(QString notice READ notice NOTIFY changed)
  // For a PDF: its pages, the first page's height over its width, and where its pages are drawn.
  Q_PROPERTY(int pageCount READ pageCount NOTIFY changed)
  Q_PROPERTY(double pageAspect READ pageAspect NOTIFY changed)
  Q_PROPERTY(QString pagesSource READ pagesSource NOTIFY changed)

 public:
  using QObject::QObject;
  ScreenObject* screen() const { return screen_; }
  void setScreen(ScreenObject* screen);
  QString kind() const { return kind_; }
  bool exists() const { return exists_; }
  QUrl url() const { return url_; }
  QString name() const { return name_; }
  QString sizeText() const { return sizeText_; }
  QString icon() const { return icon_; }
  QString text() const { return text_; }
  QString notice() const { return notice_; }
  int pageCount() const { return pageCount_; }
  double pageAspect() const { return pageAspect_; }
  QString pagesSource() const { return pagesSource_; }

  Q_INVOKABLE void refresh();
  // "Open with…": the desktop's own program for the file, through the platform's open path.
  Q_INVOKABLE bool openWith();

  // The view for a file: by its content type, and for text by whether it is UTF-8.
  static QString kindOf(const QString& path);

 Q_SIGNALS:
  void changed();

 private:
  QPointer<ScreenObject> screen_;
  QString kind_ = QStringLiteral("other"), name_, sizeText_, icon_, text_, notice_;
  QUrl url_;
  bool exists_ = false;
  int pageCount_ = 0;
  double pageAspect_ = 1.414;
  QString pagesSource_;
};

}  // namespace nimbrel::shell
