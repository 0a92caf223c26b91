#include "shell/DragOut.h"

#include <QQmlContext>
#include <QQmlProperty>

#include <gtest/gtest.h>

#include <fstream>

#include "SceneTest.h"
#include "app/audio/AudioVC.h"
#include "app/audio/SongRecords.h"
#include "app/core/AppData.h"
#include "app/core/File.h"
#include "app/core/HomeViewController.h"
#include "app/documents/DocumentVC.h"
#include "app/history/RecentFilesVC.h"
#include "app/media/ImagesVC.h"
#include "app/media/PhotoLibraryAccess.h"
#include "automation/CollectionTouch.h"
#include "backends/desktop/DesktopShareActivities.h"
#include "platform/mediaplayer/MediaLibrarySource.h"
#include "platform/photos/PhotoLibrarySource.h"

namespace nimbrel::shell {
namespace {

// Two pictures and a video in one album, and a song.
constexpr const char* kLibrary = R"({"now": "2026-11-22T10:00:00Z",
  "photos": {"assets": [{"id": "P1/L0/001", "created": "2026-03-01T10:00:00Z"}, {"id": "V1/L0/001", "mediaType": 2},
                        {"id": "P2/L0/001", "created": "2026-03-02T10:00:00Z"}],
             "albums": [{"id": "LIB", "title": "Recents", "type": 2, "subtype": 209,
                         "assets": ["P1/L0/001", "V1/L0/001", "P2/L0/001"]}]},
  "music": {"songs": [{"persistentID": "7"}]}})";

void installDesktopActivities(const std::string& temporaryFolder) {
  desktop::DesktopShareActivities::Options options;
  options.temporaryFolder = temporaryFolder;
  ShareActivities::install(std::make_shared<desktop::DesktopShareActivities>(nullptr, options));
}

std::string fileOf(const std::string& asset) { return PhotoLibrarySource::current()->asset(asset)->backingPath; }

class DragOutTest : public ::testing::Test {
 protected:
  DragOutTest() {
    platform = std::make_unique<sim::SimPlatform>(sim::Fixture::parse(kLibrary).value());
    installDesktopActivities(platform->home());
    registerMainStoryboard();  // the screens' nibs
    document = platform->home() + "/my notes.txt";
    std::ofstream(document) << "notes";
  }
  ~DragOutTest() override { AppData::shared()->recentFiles.clear(); }

  static std::shared_ptr<PhotosViewModel> assets(const std::vector<std::string>& ids) {
    std::vector<PhotoModel> models;
    for (const auto& id : ids) models.push_back(PhotoModel::fromAsset(PHAsset::fetchAssetsWithLocalIdentifiers({id}, nullptr)[0]));
    return PhotosViewModel::withModels(models);
  }
  static std::shared_ptr<UICollectionView> collectionOf(std::shared_ptr<UICollectionViewDataSource> screen) {
    auto collection = std::make_shared<UICollectionView>();
    collection->setDataSource(screen);
    collection->setAllowsMultipleSelection(true);
    return collection;
  }
  static std::string dragged(const UICollectionView& collection, long row) {
    return dragMimeData(collection, row).value(QStringLiteral("text/plain")).toString().toStdString();
  }

  std::unique_ptr<sim::SimPlatform> platform;
  std::string document;
};

TEST_F(DragOutTest, EachScreenHandsOverTheFilesBehindItsRows) {
  auto pictures = std::make_shared<ImagesVC>();
  pictures->isAlBumsDisplay = false;
  pictures->photoViewModel = assets({"P1/L0/001", "V1/L0/001"});
  auto albums = std::make_shared<ImagesVC>();
  albums->viewModel = AlbumsViewModel::withModels({AlbumModel()});
  auto songs = std::make_shared<AudioVC>();
  songs->isAlBumsDisplay = false;
  songs->photoViewModel = PhotosViewModel::withModels({songRecord(MPMediaItem(MediaLibrarySource::current()->songs()[0]))});
  auto documents = std::make_shared<DocumentVC>();
  documents->viewModel = AlbumsViewModel::withModels({DocumentVC::documentModel(URL::fileURLWithPath(document))});
  auto recents = std::make_shared<RecentFilesVC>();
  PhotoModel recentVideo, recentDocument;
  recentVideo.identifier = assetAddress("V1/L0/001", FileType::video);
  recentDocument.identifier = URL::fileURLWithPath(document).absoluteString();
  recents->viewModel = PhotosViewModel::withModels({recentVideo, recentDocument});
  auto home = std::make_shared<HomeViewController>();
  AppData::shared()->recentFiles = {{*URL::withString(assetAddress("P1/L0/001", FileType::photo)), Date::now(), FileType::photo}};

  const std::string song = MediaLibrarySource::current()->songs()[0]->backingPath;
  struct Case {
    const char* what;
    std::shared_ptr<UICollectionViewDataSource> screen;
    long row;
    std::string files;  // as the plain text of the drag
  };
  const Case cases[] = {
      {"a picture", pictures, 0, fileOf("P1/L0/001")},
      {"a video", pictures, 1, fileOf("V1/L0/001")},
      {"past the last row", pictures, 2, ""},
      {"an album", albums, 0, ""},
      {"a song", songs, 0, song},
      {"a document", documents, 0, document},
      {"a recent video", recents, 0, fileOf("V1/L0/001")},
      {"a recent document", recents, 1, document},
      {"a recent picture on home", home, 0, fileOf("P1/L0/001")},
  };
  for (const auto& c : cases) {
    auto collection = collectionOf(c.screen);
    EXPECT_EQ(dragged(*collection, c.row), c.files) << c.what;
    EXPECT_EQ(mayDrag(*collection, c.row), !c.files.empty()) << c.what;
  }

  ShareActivities::install(nullptr);
  EXPECT_FALSE(mayDrag(*collectionOf(documents), 0)) << "the sim hands out no files";
  EXPECT_TRUE(dragMimeData(*collectionOf(documents), 0).isEmpty());
}

TEST_F(DragOutTest, ADragFromASelectedCellTakesTheSelectionAndAnyOtherDragItsOwnCell) {
  auto screen = std::make_shared<ImagesVC>();
  screen->isAlBumsDisplay = false;
  screen->photoViewModel = assets({"P1/L0/001", "V1/L0/001", "P2/L0/001"});
  auto collection = collectionOf(screen);
  collection->selectItemAtIndexPath({0, 2}, false);
  collection->selectItemAtIndexPath({0, 0}, false);
  EXPECT_EQ(draggedRows(*collection, 0), std::vector<long>{0}) << "outside selection mode";
  screen->photoViewModel->isMultipleSelectionEnabled = true;
  EXPECT_EQ(draggedRows(*collection, 2), (std::vector<long>{0, 2}));
  EXPECT_EQ(draggedRows(*collection, 1), std::vector<long>{1});
  EXPECT_EQ(dragged(*collection, 2), fileOf("P1/L0/001") + "\n" + fileOf("P2/L0/001"));
}

// The grid's cells on the desktop: what a mouse drag from a selected cell would carry.
class DragOutSceneTest : public SceneTest {};

TEST_F(DragOutSceneTest, ADragFromTheSelectionCarriesItsFilesAsAUriListForACopy) {
  start({390, 844}, kLibrary);
  installDesktopActivities(platform_->home());
  auto screen = std::dynamic_pointer_cast<ImagesVC>(
      UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("ImagesVC"));
  ASSERT_TRUE(screen);
  screen->mediatype = MediaTypes::image;
  screen->albums = albumsForMediaType(MediaTypes::image);
  nav()->pushViewController(screen, true);
  wait(0.6);
  screen->openAlbumAtRow(0);
  wait(0.3);
  ASSERT_EQ(screen->photoViewModel->items.size(), 2u) << "the album's pictures";
  ASSERT_FALSE(touchCollection(*screen->albumsCollectionView, 0, true)) << "a long press selects the first";
  ASSERT_FALSE(touchCollection(*screen->albumsCollectionView, 1, false)) << "a tap adds the second";
  wait(0.2);

  QQuickItem* second = nullptr;
  std::function<void(QQuickItem*)> visit = [&](QQuickItem* at) {
    if (at->objectName() == QLatin1String("cellTouch") && at->isVisible() && at->property("row").toInt() == 1) second = at;
    for (auto* child : at->childItems()) visit(child);
  };
  visit(window_->contentItem());
  ASSERT_TRUE(second);
  auto attached = [&](const char* name) { return QQmlProperty(second, QString::fromLatin1(name), qmlContext(second)).read(); };
  EXPECT_EQ(attached("Drag.supportedActions").toInt(), int(Qt::CopyAction));
  EXPECT_EQ(attached("Drag.dragType").toInt(), 1) << "Drag.Automatic: the session's own drag";
  QVariant ready;
  ASSERT_TRUE(QMetaObject::invokeMethod(second, "prepareDrag", Q_RETURN_ARG(QVariant, ready)));
  EXPECT_TRUE(ready.toBool());

  // Newest first: the second row is the first picture.
  auto uri = [](const std::string& asset) { return QUrl::fromLocalFile(QString::fromStdString(fileOf(asset))).toEncoded(); };
  QVariantMap data = attached("Drag.mimeData").toMap();
  EXPECT_EQ(data.value(QStringLiteral("text/uri-list")).toString().toUtf8(), uri("P2/L0/001") + "\r\n" + uri("P1/L0/001") + "\r\n");
  EXPECT_EQ(data.value(QStringLiteral("x-special/gnome-copied-files")).toString().toUtf8(),
            "copy\n" + uri("P2/L0/001") + "\n" + uri("P1/L0/001"));
  EXPECT_EQ(data.value(QStringLiteral("text/plain")).toString().toStdString(),
            fileOf("P2/L0/001") + "\n" + fileOf("P1/L0/001"));
}

}  // namespace
}  // namespace nimbrel::shell
