// nimbrel: the Qt Quick front end. Runs the program on the simulated platform (the only one this
// build has), with the demo fixture unless one is given; `--automation` speaks the automation
// protocol on standard input and output over the live window.
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QtQml/QQmlExtensionPlugin>

#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

#include "app/core/ApplicationMain.h"
#include "automation/AutomationSession.h"
#include "backends/sim/Fixture.h"
#include "backends/sim/SimPlatform.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/uikit/UIDevice.h"
#include "platform/uikit/UIScreen.h"
#include "shell/AppBridge.h"
#include "shell/ImageStore.h"
#include "shell/QtAutomationHost.h"
#include "shell/QtMessages.h"
#include "shell/QtRunLoop.h"
#include "shell/QtTextMeasurer.h"

Q_IMPORT_QML_PLUGIN(Nimbrel_ShellPlugin)

namespace {

struct Options {
  std::string fixture;
  bool automation = false;
  std::optional<QSize> size;
};

int usage(int status) {
  std::fprintf(stderr, "usage: nimbrel [--fixture FILE.json] [--automation] [--size WIDTHxHEIGHT]\n");
  return status;
}

// The demo fixture: beside the sources in a build tree, or installed with the program.
std::string demoFixture() {
  const QString installed =
      QCoreApplication::applicationDirPath() + QStringLiteral("/../share/nimbrel/fixtures/demo.json");
  if (QFileInfo::exists(installed)) return QDir::cleanPath(installed).toStdString();
  return NIMBREL_SOURCE_DIR "/fixtures/demo.json";
}

QString pickFontFamily() {
  for (const char* family : {"Inter", "DejaVu Sans"}) {
    if (QFontDatabase::hasFamily(QString::fromLatin1(family))) return QString::fromLatin1(family);
  }
  return QGuiApplication::font().family();
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--fixture") == 0 && i + 1 < argc) {
      options.fixture = argv[++i];
    } else if (std::strcmp(argv[i], "--automation") == 0) {
      options.automation = true;
    } else if (std::strcmp(argv[i], "--size") == 0 && i + 1 < argc) {
      int w = 0, h = 0;
      if (std::sscanf(argv[++i], "%dx%d", &w, &h) != 2 || w < 200 || h < 300) return usage(2);
      options.size = QSize(w, h);
    } else if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
      return usage(0);
    } else {
      return usage(2);
    }
  }

  nimbrel::shell::installQtMessageRecorder();
  QGuiApplication app(argc, argv);
  QGuiApplication::setApplicationName(QStringLiteral("Nimbrel"));
  const QString family = pickFontFamily();
  QFont font(family);
  font.setPixelSize(15);
  QGuiApplication::setFont(font);

  const bool demo = options.fixture.empty();
  const std::string fixturePath = demo ? demoFixture() : options.fixture;
  auto fixture = nimbrel::sim::Fixture::load(fixturePath);
  if (!fixture) {
    std::fprintf(stderr, "nimbrel: %s\n", fixture.error().c_str());
    return 2;
  }

  nimbrel::shell::QtRunLoop loop(fixture.value().now);
  RunLoop* previousLoop = RunLoop::install(&loop);
  const double scale = fixture.value().screenScale;
  const std::string systemVersion = fixture.value().systemVersion;
  const QSize fixtureScreen(static_cast<int>(fixture.value().screenWidth), static_cast<int>(fixture.value().screenHeight));
  int status = 0;
  {
    nimbrel::sim::SimPlatform platform(std::move(fixture).value(), nimbrel::sim::SimPlatform::RunLoopChoice::installed);

    // The window decides the device: a wide one is a pad.
    const QSize size = options.size.value_or(fixtureScreen);
    const bool pad = size.width() >= 700;
    UIDevice::currentDevice().configure(pad ? UIUserInterfaceIdiom::pad : UIUserInterfaceIdiom::phone, systemVersion);
    UIScreen::mainScreen().configure({double(size.width()), double(size.height())}, scale);
    TextMeasurer::install(std::make_shared<nimbrel::shell::QtTextMeasurer>(family));

    nimbrel::shell::QtAutomationHost host(loop, &platform);
    std::unique_ptr<nimbrel::AutomationSession> session;
    if (options.automation) session = std::make_unique<nimbrel::AutomationSession>(host);

    nimbrel::NimbrelApplicationMain();
    loop.settle();

    nimbrel::shell::AppBridge bridge;
    bridge.setPad(pad);
    bridge.setWindowTitle(demo ? QStringLiteral("Nimbrel — demo") : QStringLiteral("Nimbrel"));

    QQmlApplicationEngine engine;
    engine.addImageProvider(QString::fromLatin1(nimbrel::shell::ImageStore::kProviderId),
                            new nimbrel::shell::ImageProvider);
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.setInitialProperties({{"width", size.width()}, {"height", size.height()}});
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Nimbrel/Shell/qml/Main.qml")));
    auto* window = engine.rootObjects().isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(engine.rootObjects().first());
    if (!window) {
      std::fprintf(stderr, "nimbrel: the window could not be made\n");
      status = 1;
    } else {
      host.setWindow(window);
      std::unique_ptr<nimbrel::shell::StdinDriver> driver;
      if (session) {
        driver = std::make_unique<nimbrel::shell::StdinDriver>(*session);
        QObject::connect(driver.get(), &nimbrel::shell::StdinDriver::finished, &app, &QCoreApplication::quit,
                         Qt::QueuedConnection);
      }
      status = app.exec();
    }
    NSUserDefaults::standardUserDefaults().flush();
    loop.waitForBackground();
  }
  RunLoop::install(previousLoop);
  return status;
}
