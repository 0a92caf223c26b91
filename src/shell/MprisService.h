#pragma once

#include <QDBusObjectPath>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantMap>

#include <memory>

namespace nimbrel {
class MusicPlayerVC;
}

namespace nimbrel::shell {

// The music player as the desktop's media controls see it (MPRIS 2.2 on the session bus): the
// controls press the player screen's own buttons, and what the screen shows is read back. Without
// a player screen on show the player is stopped and the controls do nothing.
class MprisService : public QObject {
  Q_OBJECT

 public:
  static constexpr const char* kServiceName = "org.mpris.MediaPlayer2.nimbrel";
  static constexpr const char* kObjectPath = "/org/mpris/MediaPlayer2";
  static constexpr const char* kPlayerInterface = "org.mpris.MediaPlayer2.Player";

  // Covers handed to the desktop are written under `artFolder`.
  explicit MprisService(QString artFolder, QObject* parent = nullptr);
  ~MprisService() override;

  // Takes the name on the session bus; without one (a headless run) the player works all the same
  // and one line on standard error tells why the controls are off.
  bool start();

  QString playbackStatus() const;
  QVariantMap metadata();
  qlonglong position() const;
  bool canControlShownPlayer() const { return shownPlayer() != nullptr; }

  void playPause();
  void play();
  void pause();
  void seek(qlonglong offsetMicroseconds);
  void setPosition(const QDBusObjectPath& trackId, qlonglong positionMicroseconds);

 Q_SIGNALS:
  void seeked(qlonglong positionMicroseconds);

 private:
  std::shared_ptr<MusicPlayerVC> shownPlayer() const;
  // A person's press of the control wired to `selector` on the screen.
  void press(MusicPlayerVC& screen, const char* selector);
  QString artUrlFor(MusicPlayerVC& screen);
  // Reads the screen again and tells the bus what changed.
  void poll();

  QString artFolder_;
  QTimer timer_;
  bool registered_ = false;
  QVariantMap published_;
  qlonglong lastPosition_ = 0;
  qint64 lastPollMs_ = 0;
  const MusicPlayerVC* lastScreen_ = nullptr;
};

}  // namespace nimbrel::shell
