#pragma once

#include <QObject>
#include <QTimer>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>

class AVPlayer;

namespace nimbrel::shell {

// A player as QML sees it: whether it plays, where it is and how long its item lasts, read again
// while anyone looks (the position moves on the run loop's clock, and the player tells nobody);
// and the system player's own controls, which act on it directly.
class PlayerObject : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by screens and player views")
  Q_PROPERTY(bool valid READ valid CONSTANT)
  Q_PROPERTY(bool playing READ playing NOTIFY changed)
  Q_PROPERTY(double position READ position NOTIFY changed)
  // -1 when the item's length cannot be read.
  Q_PROPERTY(double duration READ duration NOTIFY changed)
  Q_PROPERTY(QString fileName READ fileName CONSTANT)
  Q_PROPERTY(QString url READ url CONSTANT)
  // The file Qt Multimedia decodes: a song's library address leads to the library's file.
  Q_PROPERTY(QUrl source READ source CONSTANT)

 public:
  explicit PlayerObject(std::shared_ptr<AVPlayer> player, QObject* parent = nullptr);

  bool valid() const { return player_ != nullptr; }
  bool playing() const { return playing_; }
  double position() const { return position_; }
  double duration() const { return duration_; }
  QString fileName() const;
  QString url() const;
  QUrl source() const;

  Q_INVOKABLE void play();
  Q_INVOKABLE void pause();
  Q_INVOKABLE void seek(double seconds);
  // "1:05", "-0:07": the system player's time labels.
  static QString timeText(double seconds);
  // The same for QML, which cannot call a static member of an uncreatable type.
  Q_INVOKABLE QString formatTime(double seconds) const { return timeText(seconds); }

  // Reads the player again; emits `changed` when something differs.
  void refresh();
  const std::shared_ptr<AVPlayer>& player() const { return player_; }
  // How often the position is read while the player plays (and, slower, while it does not).
  static constexpr int kPlayingIntervalMs = 100;
  static constexpr int kIdleIntervalMs = 250;

 Q_SIGNALS:
  void changed();

 private:
  std::shared_ptr<AVPlayer> player_;
  QTimer timer_;
  bool playing_ = false;
  double position_ = 0;
  double duration_ = -1;
};

}  // namespace nimbrel::shell
