#include "shell/MprisService.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QUrl>

#include <cmath>
#include <cstdio>
#include <functional>

#include "app/audio/MusicPlayerVC.h"
#include "automation/TreeWriter.h"
#include "platform/uikit/UIControl.h"
#include "shell/ImageStore.h"
#include "shell/MprisPlayerAdaptor.h"
#include "shell/MprisRootAdaptor.h"

namespace nimbrel::shell {

namespace {

constexpr int kPollMs = 250;
constexpr qlonglong kMicroseconds = 1000000;
constexpr int kArtSide = 512;

QDBusObjectPath trackIdOf(const MusicPlayerVC& screen) {
  return QDBusObjectPath(QStringLiteral("/org/nimbrel/track/%1").arg(screen.song ? screen.song->persistentID() : 0));
}

// The control under the screen's view whose press sends `selector`.
std::shared_ptr<UIControl> controlSending(const std::shared_ptr<UIView>& view, const std::string& selector) {
  if (!view) return nullptr;
  if (auto control = std::dynamic_pointer_cast<UIControl>(view)) {
    for (const auto& action : control->actionsForControlEvent(UIControlEvents::touchUpInside)) {
      if (action == selector) return control;
    }
  }
  for (const auto& sub : view->subviews()) {
    if (auto found = controlSending(sub, selector)) return found;
  }
  return nullptr;
}

}  // namespace

MprisService::MprisService(QString artFolder, QObject* parent) : QObject(parent), artFolder_(std::move(artFolder)) {
  new MprisRootAdaptor(this);
  new MprisPlayerAdaptor(this);
  connect(&timer_, &QTimer::timeout, this, &MprisService::poll);
}

MprisService::~MprisService() {
  if (!registered_) return;
  QDBusConnection bus = QDBusConnection::sessionBus();
  bus.unregisterObject(QString::fromLatin1(kObjectPath));
  bus.unregisterService(QString::fromLatin1(kServiceName));
}

bool MprisService::start() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  auto off = [](const QString& why) {
    std::fprintf(stderr, "MPRIS is off: %s\n", why.toUtf8().constData());
    return false;
  };
  if (!bus.isConnected()) {
    QString why = bus.lastError().message();
    return off(why.isEmpty() ? QStringLiteral("no session bus") : why);
  }
  if (!bus.registerObject(QString::fromLatin1(kObjectPath), this, QDBusConnection::ExportAdaptors)) {
    return off(bus.lastError().message());
  }
  // A second program takes a name of its own, as the protocol suggests.
  if (!bus.registerService(QString::fromLatin1(kServiceName)) &&
      !bus.registerService(QString::fromLatin1(kServiceName) +
                           QStringLiteral(".instance%1").arg(QCoreApplication::applicationPid()))) {
    bus.unregisterObject(QString::fromLatin1(kObjectPath));
    return off(bus.lastError().message());
  }
  registered_ = true;
  poll();
  timer_.start(kPollMs);
  return true;
}

std::shared_ptr<MusicPlayerVC> MprisService::shownPlayer() const {
  auto screens = TreeWriter::screens();
  for (auto it = screens.rbegin(); it != screens.rend(); ++it) {
    if (auto screen = std::dynamic_pointer_cast<MusicPlayerVC>(it->controller); screen && screen->isViewLoaded()) {
      return screen->player ? screen : nullptr;
    }
  }
  return nullptr;
}

// The status follows the screen's play button, which is what a press acts on: "Paused" while it
// offers to play again, even when a slider move has brought the sound back meanwhile.
QString MprisService::playbackStatus() const {
  auto screen = shownPlayer();
  if (!screen) return QStringLiteral("Stopped");
  return screen->isPlay ? QStringLiteral("Paused") : QStringLiteral("Playing");
}

qlonglong MprisService::position() const {
  auto screen = shownPlayer();
  return screen ? static_cast<qlonglong>(screen->currentTime) * kMicroseconds : 0;
}

QVariantMap MprisService::metadata() {
  auto screen = shownPlayer();
  if (!screen) return {{QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath("/org/mpris/MediaPlayer2/TrackList/NoTrack"))}};
  QVariantMap m;
  m.insert(QStringLiteral("mpris:trackid"), QVariant::fromValue(trackIdOf(*screen)));
  m.insert(QStringLiteral("mpris:length"), static_cast<qlonglong>(screen->TotalSeconds) * kMicroseconds);
  if (const auto& song = screen->song) {
    if (song->title()) m.insert(QStringLiteral("xesam:title"), QString::fromStdString(*song->title()));
    if (song->artist()) m.insert(QStringLiteral("xesam:artist"), QStringList{QString::fromStdString(*song->artist())});
    if (song->albumTitle()) m.insert(QStringLiteral("xesam:album"), QString::fromStdString(*song->albumTitle()));
  }
  QString art = artUrlFor(*screen);
  if (!art.isEmpty()) m.insert(QStringLiteral("mpris:artUrl"), art);
  return m;
}

QString MprisService::artUrlFor(MusicPlayerVC& screen) {
  auto artwork = screen.song ? screen.song->artwork() : nullptr;
  if (!artwork || artFolder_.isEmpty()) return {};
  // Written once per song: the desktop reads the file as often as it likes.
  const QString path = QDir(artFolder_).filePath(QStringLiteral("mpris/%1.png").arg(screen.song->persistentID()));
  if (!QFileInfo::exists(path)) {
    auto image = artwork->imageWithSize({kArtSide, kArtSide});
    QImage picture = image ? ImageStore::shared().picture(*image, QSize(kArtSide, kArtSide)) : QImage();
    if (picture.isNull() || !QDir().mkpath(QFileInfo(path).path())) return {};
    const QString partial = path + QStringLiteral(".part");
    if (!picture.save(partial, "PNG") || !QFile::rename(partial, path)) {
      QFile::remove(partial);
      return {};
    }
  }
  return QUrl::fromLocalFile(path).toString();
}

void MprisService::press(MusicPlayerVC& screen, const char* selector) {
  if (auto control = controlSending(screen.view(), selector); control && control->isEnabled()) {
    control->sendActionsForControlEvents(UIControlEvents::touchUpInside);
  } else {
    screen.performAction(selector, nullptr);
  }
  poll();
}

void MprisService::playPause() {
  if (auto screen = shownPlayer()) press(*screen, "btnPlay:");
}

void MprisService::play() {
  if (auto screen = shownPlayer(); screen && screen->isPlay) press(*screen, "btnPlay:");
}

void MprisService::pause() {
  if (auto screen = shownPlayer(); screen && !screen->isPlay) press(*screen, "btnPlay:");
}

// The desktop's seek keys and gestures become the screen's 15-second jumps.
void MprisService::seek(qlonglong offset) {
  auto screen = shownPlayer();
  if (!screen || offset == 0) return;
  press(*screen, offset > 0 ? "btnAddTime:" : "btnLessTime:");
}

// As a person drags the slider there.
void MprisService::setPosition(const QDBusObjectPath& trackId, qlonglong position) {
  auto screen = shownPlayer();
  if (!screen || !screen->sliderOutlet || trackId != trackIdOf(*screen)) return;
  if (position < 0 || position > static_cast<qlonglong>(screen->TotalSeconds) * kMicroseconds) return;
  screen->sliderOutlet->setValue(static_cast<float>(static_cast<double>(position) / kMicroseconds));
  screen->sliderOutlet->sendActionsForControlEvents(UIControlEvents::valueChanged);
  poll();
}

void MprisService::poll() {
  if (!registered_) return;
  auto screen = shownPlayer();
  QVariantMap now{{QStringLiteral("PlaybackStatus"), playbackStatus()},
                  {QStringLiteral("Metadata"), metadata()},
                  {QStringLiteral("CanPlay"), bool(screen)},
                  {QStringLiteral("CanPause"), bool(screen)},
                  {QStringLiteral("CanSeek"), bool(screen)}};
  QVariantMap changed;
  for (auto it = now.cbegin(); it != now.cend(); ++it) {
    if (published_.value(it.key()) != it.value()) changed.insert(it.key(), it.value());
  }
  published_ = now;
  if (!changed.isEmpty()) {
    QDBusMessage signal = QDBusMessage::createSignal(QString::fromLatin1(kObjectPath),
                                                     QStringLiteral("org.freedesktop.DBus.Properties"),
                                                     QStringLiteral("PropertiesChanged"));
    signal << QString::fromLatin1(kPlayerInterface) << changed << QStringList();
    QDBusConnection::sessionBus().send(signal);
  }
  // The counter moves a second a tick while playing; anything else is a jump the desktop hears of.
  const qint64 nowMs = QDateTime::currentMSecsSinceEpoch();
  const qlonglong at = position();
  if (screen && screen.get() == lastScreen_) {
    double expected = static_cast<double>(lastPosition_) / kMicroseconds +
                      (screen->isPlay ? 0.0 : static_cast<double>(nowMs - lastPollMs_) / 1000.0);
    if (std::abs(static_cast<double>(at) / kMicroseconds - expected) > 1.5) Q_EMIT seeked(at);
  }
  lastScreen_ = screen.get();
  lastPosition_ = at;
  lastPollMs_ = nowMs;
}

}  // namespace nimbrel::shell
