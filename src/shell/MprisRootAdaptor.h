#pragma once

#include <QDBusAbstractAdaptor>
#include <QStringList>

namespace nimbrel::shell {

// org.mpris.MediaPlayer2: who we are; the window is neither raised nor closed from outside.
class MprisRootAdaptor : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
  Q_PROPERTY(bool CanQuit READ canQuit)
  Q_PROPERTY(bool CanRaise READ canRaise)
  Q_PROPERTY(bool HasTrackList READ hasTrackList)
  Q_PROPERTY(QString Identity READ identity)
  Q_PROPERTY(QStringList SupportedUriSchemes READ supportedUriSchemes)
  Q_PROPERTY(QStringList SupportedMimeTypes READ supportedMimeTypes)

 public:
  explicit MprisRootAdaptor(QObject* parent) : QDBusAbstractAdaptor(parent) {}
  bool canQuit() const { return false; }
  bool canRaise() const { return false; }
  bool hasTrackList() const { return false; }
  QString identity() const { return QStringLiteral("Nimbrel"); }
  QStringList supportedUriSchemes() const { return {}; }
  QStringList supportedMimeTypes() const { return {}; }

 public Q_SLOTS:
  void Raise() {}
  void Quit() {}
};

}  // namespace nimbrel::shell
