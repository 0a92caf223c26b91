#include "shell/QtShareSurface.h"

#include <fcntl.h>
#include <unistd.h>

#include <memory>

#include <QClipboard>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMimeData>
#include <QStandardPaths>
#include <QUrl>

namespace nimbrel::shell {

namespace {

// Answers true when the call returns without an error, false at once when there is no bus.
void callBus(const QDBusMessage& message, std::function<void(bool)> answered) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) {
    answered(false);
    return;
  }
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), qApp);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, qApp, [answered](QDBusPendingCallWatcher* w) {
    answered(!w->isError());
    w->deleteLater();
  });
}

}  // namespace

QMimeData* QtShareSurface::filesMimeData(const std::vector<std::string>& uris, const std::string& text) {
  auto* data = new QMimeData;
  QList<QUrl> urls;
  QByteArray copied = "copy";
  for (const auto& uri : uris) {
    urls.push_back(QUrl::fromEncoded(QByteArray::fromStdString(uri)));
    copied += '\n' + QByteArray::fromStdString(uri);
  }
  if (!urls.isEmpty()) {
    data->setUrls(urls);
    // What GNOME's and other GTK file managers read for a paste of copied files.
    data->setData(QStringLiteral("x-special/gnome-copied-files"), copied);
  }
  data->setText(QString::fromStdString(text));
  return data;
}

QVariantMap QtShareSurface::filesMimeMap(const std::vector<std::string>& uris, const std::string& text) {
  std::unique_ptr<QMimeData> data(filesMimeData(uris, text));
  QVariantMap map;
  // Drag.mimeData sends a string as UTF-8: these formats are ASCII and UTF-8 text.
  for (const QString& format : data->formats()) map.insert(format, QString::fromUtf8(data->data(format)));
  return map;
}

void QtShareSurface::putOnClipboard(const std::vector<std::string>& uris, const std::string& text) {
  QGuiApplication::clipboard()->setMimeData(filesMimeData(uris, text));
}

void QtShareSurface::chooseFolder(std::function<void(std::optional<std::string>)> chosen) {
  auto* dialog = new QFileDialog(nullptr, QStringLiteral("Save to"),
                                 QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly);
  dialog->setAcceptMode(QFileDialog::AcceptOpen);
  QObject::connect(dialog, &QFileDialog::finished, dialog, [dialog, chosen](int result) {
    QStringList picked = dialog->selectedFiles();
    if (result == QDialog::Accepted && !picked.isEmpty()) {
      chosen(picked.front().toStdString());
    } else {
      chosen(std::nullopt);
    }
  });
  dialog->open();
}

void QtShareSurface::openWithChooser(const std::string& uri, std::function<void(bool)> answered) {
  // OpenFile takes the file itself, so a sandboxed program's paths need not be the host's.
  int fd = ::open(QUrl::fromEncoded(QByteArray::fromStdString(uri)).toLocalFile().toLocal8Bit().constData(),
                  O_RDONLY | O_CLOEXEC);
  if (fd < 0) {
    answered(false);
    return;
  }
  QDBusUnixFileDescriptor file(fd);
  ::close(fd);  // the descriptor object keeps its own duplicate
  auto message = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                                                QStringLiteral("/org/freedesktop/portal/desktop"),
                                                QStringLiteral("org.freedesktop.portal.OpenURI"),
                                                QStringLiteral("OpenFile"));
  QVariantMap options{{QStringLiteral("ask"), true}};
  message << QString() << QVariant::fromValue(file) << options;
  callBus(message, std::move(answered));
}

void QtShareSurface::showItems(const std::vector<std::string>& uris, std::function<void(bool)> answered) {
  QStringList list;
  for (const auto& uri : uris) list.push_back(QString::fromStdString(uri));
  auto message = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
                                                QStringLiteral("/org/freedesktop/FileManager1"),
                                                QStringLiteral("org.freedesktop.FileManager1"),
                                                QStringLiteral("ShowItems"));
  message << list << QString();
  callBus(message, std::move(answered));
}

}  // namespace nimbrel::shell
