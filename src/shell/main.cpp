// nimbrel: the Qt Quick front end. Runs the program over the user's own folders (the desktop
// platform), or on the simulated platform with `--fixture F.json` or `--demo` (the demo fixture);
// `--automation` speaks the automation protocol on standard input and output over the live window.
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QtQml/QQmlExtensionPlugin>

#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

#include "app/core/AppData.h"
#include "app/core/ApplicationMain.h"
#include "app/core/BasicMethod.h"
#include "automation/AutomationSession.h"
#include "backends/desktop/DesktopPlatform.h"
#include "backends/sim/Fixture.h"
#include "backends/sim/SimPlatform.h"
#include "platform/foundation/NSPathUtilities.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/uikit/UIDevice.h"
#include "platform/uikit/UIScreen.h"
#include "shell/AppBridge.h"
#include "shell/ImageStore.h"
#include "shell/MprisService.h"
#include "shell/QtAutomationHost.h"
#include "shell/QtMessages.h"
#include "shell/QtRunLoop.h"
#include "shell/QtShareSurface.h"
#include "shell/QtTextMeasurer.h"
#include "shell/StartupTrace.h"

Q_IMPORT_QML_PLUGIN(Nimbrel_ShellPlugin)

namespace {

struct Options {
  std::string fixture;
  bool demo = false;
  bool automation = false;
  std::optional<QSize> size;
};

constexpr const char* kUsage = "usage: nimbrel [--fixture FILE.json | --demo] [--automation] [--size WIDTHxHEIGHT]\n";

int usage(int status) {
  std::fputs(kUsage, stderr);
  return status;
}

// Under --automation standard output belongs to the protocol, so the text goes to standard error.
int help(std::FILE* out) {
  std::fputs(kUsage, out);
  std::fputs("\nNimbrel, a file manager and media browser, over your Pictures, Videos and Music folders.\n\n"
             "  --fixture FILE.json  run on the simulated platform that FILE.json describes\n"
             "  --demo               run on the simulated platform with the demo fixture\n"
             "  --automation         speak the automation protocol on standard input and output\n"
             "  --size WIDTHxHEIGHT  the window's size; 700 wide or more is a pad\n"
             "  --help, -h           show this text\n"
             "  --version            show the version\n\n"
             "NIMBREL_ADS=demo shows the labelled demo ads; NIMBREL_PICTURES, NIMBREL_VIDEOS, NIMBREL_MUSIC\n"
             "and NIMBREL_HOME choose the folders. See nimbrel(1).\n",
             out);
  return 0;
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

// The program's own reading of its lists decides what the desktop sets aside.
nimbrel::desktop::StoredListCleaner::Rules storedListRules() {
  nimbrel::desktop::StoredListCleaner::Rules rules;
  rules.keys = {nimbrel::kRecentFilesKey, nimbrel::kFavFilesKey};
  rules.decodeError = [](const Data& bytes) -> std::optional<std::string> {
    auto decoded = nimbrel::decodeFiles(bytes);
    if (auto* error = std::get_if<nimbrel::DecodingError>(&decoded)) return error->debugDescription;
    return std::nullopt;
  };
  rules.forget = [](const std::vector<std::string>& addresses) {
    std::vector<URL> urls;
    for (const auto& a : addresses) {
      if (auto url = URL::withString(a)) urls.push_back(*url);
    }
    auto data = nimbrel::AppData::shared();
    data->recentFiles = nimbrel::filesExcluding(data->recentFiles, urls);
    data->FavouriteFiles = nimbrel::filesExcluding(data->FavouriteFiles, urls);
  };
  return rules;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  std::FILE* textOut = stdout;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--automation") == 0) textOut = stderr;
  }
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--fixture") == 0 && i + 1 < argc) {
      options.fixture = argv[++i];
    } else if (std::strcmp(argv[i], "--demo") == 0) {
      options.demo = true;
    } else if (std::strcmp(argv[i], "--automation") == 0) {
      options.automation = true;
    } else if (std::strcmp(argv[i], "--size") == 0 && i + 1 < argc) {
      int w = 0, h = 0;
      if (std::sscanf(argv[++i], "%dx%d", &w, &h) != 2 || w < 200 || h < 300) return usage(2);
      options.size = QSize(w, h);
    } else if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
      return help(textOut);
    } else if (std::strcmp(argv[i], "--version") == 0) {
      std::fprintf(textOut, "nimbrel %s\n", NIMBREL_VERSION);
      return 0;
    } else {
      return usage(2);
    }
  }

  nimbrel::shell::installQtMessageRecorder();
  // Qt's FFmpeg media backend decodes what the library's own probes read; the GStreamer one
  // depends on plugins a machine may lack and fails hard without them.
  if (!qEnvironmentVariableIsSet("QT_MEDIA_BACKEND")) qputenv("QT_MEDIA_BACKEND", "ffmpeg");
  // Widgets for the desktop's own file chooser; the window itself is Qt Quick.
  QApplication app(argc, argv);
  QGuiApplication::setApplicationName(QStringLiteral("Nimbrel"));
  QGuiApplication::setApplicationVersion(QStringLiteral(NIMBREL_VERSION));
  // Ties the window to the installed desktop entry: its icon and name in docks and task lists.
  QGuiApplication::setDesktopFileName(QStringLiteral("app.nimbrel.Nimbrel"));
  const QString family = pickFontFamily();
  QFont font(family);
  font.setPixelSize(15);
  QGuiApplication::setFont(font);

  const bool simulated = options.demo || !options.fixture.empty();
  std::optional<nimbrel::sim::Fixture> fixture;
  if (simulated) {
    auto loaded = nimbrel::sim::Fixture::load(options.fixture.empty() ? demoFixture() : options.fixture);
    if (!loaded) {
      std::fprintf(stderr, "nimbrel: %s\n", loaded.error().c_str());
      return 2;
    }
    fixture = std::move(loaded).value();
  }

  nimbrel::shell::QtRunLoop loop(fixture ? fixture->now : nimbrel::desktop::DesktopPlatform::wallClockSince2001());
  RunLoop* previousLoop = RunLoop::install(&loop);
  // A phone-sized window unless told otherwise; the sim's fixture names its own screen.
  const double scale = fixture ? fixture->screenScale : 2.0;
  const std::string systemVersion = fixture ? fixture->systemVersion : std::string("17.0");
  const QSize defaultSize = fixture ? QSize(static_cast<int>(fixture->screenWidth), static_cast<int>(fixture->screenHeight))
                                    : QSize(390, 844);
  const QSize size = options.size.value_or(defaultSize);
  // The window decides the device: a wide one is a pad.
  const bool pad = size.width() >= 700;
  int status = 0;
  {
    std::unique_ptr<nimbrel::sim::SimPlatform> sim;
    std::unique_ptr<nimbrel::desktop::DesktopPlatform> desktop;
    if (fixture) {
      sim = std::make_unique<nimbrel::sim::SimPlatform>(std::move(*fixture),
                                                         nimbrel::sim::SimPlatform::RunLoopChoice::installed);
    } else {
      nimbrel::desktop::DesktopPlatform::Options desktopOptions;
      desktopOptions.runLoop = nimbrel::desktop::DesktopPlatform::RunLoopChoice::installed;
      desktopOptions.storedLists = storedListRules();
      desktopOptions.shareSurface = std::make_shared<nimbrel::shell::QtShareSurface>();
      desktop = std::make_unique<nimbrel::desktop::DesktopPlatform>(desktopOptions);
    }

    UIDevice::currentDevice().configure(pad ? UIUserInterfaceIdiom::pad : UIUserInterfaceIdiom::phone, systemVersion);
    UIScreen::mainScreen().configure({double(size.width()), double(size.height())}, scale);
    TextMeasurer::install(std::make_shared<nimbrel::shell::QtTextMeasurer>(family));

    nimbrel::shell::QtAutomationHost host(loop, sim.get());
    if (desktop) host.setPreferencesPath(desktop->locations().preferences);
    std::unique_ptr<nimbrel::AutomationSession> session;
    if (options.automation) session = std::make_unique<nimbrel::AutomationSession>(host);

    nimbrel::NimbrelApplicationMain();
    loop.settle();

    nimbrel::shell::AppBridge bridge;
    bridge.setPad(pad);
    bridge.setRealPlayback(desktop != nullptr);
    bridge.setNativeDocumentPicker(desktop != nullptr && !options.automation);
    bridge.setWindowTitle(!sim                       ? QStringLiteral("Nimbrel")
                         : options.fixture.empty() ? QStringLiteral("Nimbrel — demo")
                                                   : QStringLiteral("Nimbrel — simulated"));

    // The desktop's media controls; covers for them go to the program's cache folder.
    nimbrel::shell::MprisService mpris(QString::fromStdString(
        desktop ? desktop->locations().cache : NSHomeDirectory() + "/Library/Caches"));
    mpris.start();

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
      if (nimbrel::shell::StartupTrace::wanted()) new nimbrel::shell::StartupTrace(window);
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
