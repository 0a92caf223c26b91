// Measures how long the shell takes per frame while a grid of 5,000 pictures scrolls: from moving
// the grid to the frame being rendered (model reads, delegates, painting), offscreen. Prints the
// mean, median, 95th and 99th percentiles and the worst frame, for the album level and the items.
//
// usage: nimbrel-scroll-bench [ITEMS] [FRAMES]   (QT_QPA_PLATFORM=offscreen is set when unset)
// Exits with 3 when Qt or QML printed a warning.
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <QtQml/QQmlExtensionPlugin>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <numeric>
#include <string>
#include <vector>

#include "app/core/ApplicationMain.h"
#include "automation/TreeWriter.h"
#include "automation/CollectionTouch.h"
#include "backends/sim/Fixture.h"
#include "backends/sim/SimPlatform.h"
#include "platform/uikit/UICollectionView.h"
#include "shell/AppBridge.h"
#include "shell/ImageStore.h"
#include "shell/QtMessages.h"
#include "shell/QtRunLoop.h"
#include "shell/QtTextMeasurer.h"

Q_IMPORT_QML_PLUGIN(Nimbrel_ShellPlugin)

namespace {

std::string fixtureWith(int items) {
  std::string assets, ids;
  for (int i = 1; i <= items; ++i) {
    char id[64];
    std::snprintf(id, sizeof id, "5D1C0A3E-0000-4000-8000-%012d/L0/001", i);
    if (i > 1) {
      assets += ",";
      ids += ",";
    }
    assets += std::string("{\"id\":\"") + id + "\",\"mediaType\":1,\"created\":\"2026-03-01T09:30:00Z\",\"fileSize\":" +
              std::to_string(1000000 + i) + "}";
    ids += std::string("\"") + id + "\"";
  }
  return "{\"now\":\"2026-11-22T10:00:00Z\",\"preferences\":{\"isFirstTime\":true},"
         "\"photos\":{\"assets\":[" + assets + "],\"albums\":[{\"id\":\"A1000000-0000-4000-8000-000000000001/L0/040\","
         "\"title\":\"Recents\",\"type\":2,\"subtype\":209,\"assets\":[" + ids + "]}]}}";
}

QQuickItem* findItem(QQuickItem* item, const QString& name) {
  if (item->objectName() == name) return item;
  for (auto* child : item->childItems()) {
    if (auto* found = findItem(child, name)) return found;
  }
  return nullptr;
}

void waitFrame(QQuickWindow* window) {
  QEventLoop loop;
  auto c = QObject::connect(window, &QQuickWindow::afterRendering, &loop, &QEventLoop::quit, Qt::QueuedConnection);
  QTimer::singleShot(1000, &loop, &QEventLoop::quit);
  window->update();
  loop.exec();
  QObject::disconnect(c);
}

void report(const char* what, std::vector<double> ms) {
  if (ms.empty()) return;
  std::sort(ms.begin(), ms.end());
  auto at = [&](double q) { return ms[std::min(ms.size() - 1, static_cast<size_t>(q * static_cast<double>(ms.size())))]; };
  double mean = std::accumulate(ms.begin(), ms.end(), 0.0) / static_cast<double>(ms.size());
  std::printf("%-22s frames %4zu  mean %6.2f ms  p50 %6.2f  p95 %6.2f  p99 %6.2f  max %6.2f  (%.0f fps at the mean)\n",
              what, ms.size(), mean, at(0.5), at(0.95), at(0.99), ms.back(), 1000.0 / mean);
}


}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  int items = argc > 1 ? std::atoi(argv[1]) : 5000;
  int frames = argc > 2 ? std::atoi(argv[2]) : 600;
  QGuiApplication app(argc, argv);
  nimbrel::shell::installQtMessageRecorder();
  QTemporaryDir dir;
  std::string path = dir.filePath("bench.json").toStdString();
  std::ofstream(path) << fixtureWith(items);
  auto fixture = nimbrel::sim::Fixture::load(path);
  if (!fixture) {
    std::fprintf(stderr, "%s\n", fixture.error().c_str());
    return 2;
  }
  nimbrel::shell::QtRunLoop loop(fixture.value().now);
  RunLoop* previous = RunLoop::install(&loop);
  {
    nimbrel::sim::SimPlatform platform(std::move(fixture).value(), nimbrel::sim::SimPlatform::RunLoopChoice::installed);
    TextMeasurer::install(std::make_shared<nimbrel::shell::QtTextMeasurer>(QGuiApplication::font().family()));
    nimbrel::NimbrelApplicationMain();
    loop.settle();
    nimbrel::shell::AppBridge bridge;
    QQmlApplicationEngine engine;
    engine.addImageProvider("nimbrel", new nimbrel::shell::ImageProvider);
    engine.addImportPath("qrc:/qt/qml");
    engine.setInitialProperties({{"width", 390}, {"height", 844}});
    engine.load(QUrl("qrc:/qt/qml/Nimbrel/Shell/qml/Main.qml"));
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
    if (!window) return 1;

    // Splash to home, then the images screen and its one album.
    loop.runFor(5.6);
    loop.settle();
    auto home = nimbrel::TreeWriter::topScreen();
    home->performAction("onImagesBtn:", home->outlet("btnImages"));
    loop.runFor(1.0);
    loop.settle();

    auto measure = [&](const char* what) {
      auto* grid = findItem(window->contentItem(), "albumsGrid");
      if (!grid) {
        std::fprintf(stderr, "no grid on screen\n");
        return;
      }
      std::vector<double> ms;
      double step = 37;  // a brisk scroll: about 2,200 points a second at 60 frames a second
      double maxY = grid->property("contentHeight").toDouble() - grid->height();
      double y = grid->property("contentY").toDouble();
      for (int i = 0; i < 30; ++i) waitFrame(window);  // warm up
      for (int i = 0; i < frames; ++i) {
        if (y + step > maxY || y + step < 0) step = -step;
        y += step;
        QElapsedTimer t;
        t.start();
        grid->setProperty("contentY", y);
        waitFrame(window);
        ms.push_back(static_cast<double>(t.nsecsElapsed()) / 1e6);
      }
      report(what, ms);
    };
    measure("albums (1 album)");
    auto screen = nimbrel::TreeWriter::topScreen();
    auto collection = std::dynamic_pointer_cast<UICollectionView>(screen->outlet("albumsCollectionView"));
    nimbrel::touchCollection(*collection, 0, false);
    loop.runFor(1.0);
    loop.settle();
    char label[64];
    std::snprintf(label, sizeof label, "items (%d pictures)", items);
    measure(label);
  }
  loop.waitForBackground();
  RunLoop::install(previous);
  // A warning from Qt or QML (a binding loop while scrolling, say) fails the run.
  return nimbrel::shell::recordedQtWarnings().isEmpty() ? 0 : 3;
}
