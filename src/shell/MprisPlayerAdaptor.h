#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QVariantMap>

#include "shell/MprisService.h"

namespace nimbrel::shell {

// org.mpris.MediaPlayer2.Player over the service: one song, no queue, one speed.
class MprisPlayerAdaptor : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
  Q_PROPERTY(QString PlaybackStatus READ playbackStatus)
  Q_PROPERTY(double Rate READ rate WRITE setRate)
  Q_PROPERTY(double MinimumRate READ rate)
  Q_PROPERTY(double MaximumRate READ rate)
  Q_PROPERTY(QVariantMap Metadata READ metadata)
  Q_PROPERTY(double Volume READ volume WRITE setVolume)
  Q_PROPERTY(qlonglong Position READ position)
  Q_PROPERTY(bool CanGoNext READ no)
  Q_PROPERTY(bool CanGoPrevious READ no)
  Q_PROPERTY(bool CanPlay READ canPlay)
  Q_PROPERTY(bool CanPause READ canPlay)
  Q_PROPERTY(bool CanSeek READ canPlay)
  Q_PROPERTY(bool CanControl READ yes)

 public:
  explicit MprisPlayerAdaptor(MprisService* service);

  QString playbackStatus() const { return service_->playbackStatus(); }
  double rate() const { return 1.0; }
  void setRate(double) {}
  QVariantMap metadata() const { return service_->metadata(); }
  double volume() const { return 1.0; }
  void setVolume(double) {}
  qlonglong position() const { return service_->position(); }
  bool no() const { return false; }
  bool yes() const { return true; }
  bool canPlay() const { return service_->canControlShownPlayer(); }

 public Q_SLOTS:
  void Next() {}
  void Previous() {}
  void Stop() {}
  void OpenUri(const QString&) {}
  void PlayPause() { service_->playPause(); }
  void Play() { service_->play(); }
  void Pause() { service_->pause(); }
  void Seek(qlonglong offset) { service_->seek(offset); }
  void SetPosition(const QDBusObjectPath& trackId, qlonglong position) { service_->setPosition(trackId, position); }

 Q_SIGNALS:
  void Seeked(qlonglong Position);

 private:
  MprisService* service_;
};

}  // namespace nimbrel::shell
