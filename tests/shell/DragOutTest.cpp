#include "shell/DragOut.h"

#include <QQmlContext>
#include <QQmlProperty>

#include <fstream>

#include "SceneTest.h"
#include "app/audio/AudioVC.h"
#include "app/audio/SongRecords.h"
#include "app/core/AppData.h"
#include "app/core/HomeViewController.h"
#include "app/documents/DocumentVC.h"
#include "app/history/FavouriteFilesVC.h"
#include "app/media/ImagesVC.h"
#include "app/media/PhotoLibraryAccess.h"
#include "automation/CollectionTouch.h"
#include "backends/desktop/DesktopShareActivities.h"
#include "platform/mediaplayer/MediaLibrarySource.h"
#include "platform/photos/PhotoLibrarySource.h"

namespace nimbrel::shell {
namespace {

// Two pictures in one album, a video, a picture the library hands over only as pixels, a song.
constexpr const char* kLibrary = R"({"now": "2026-11-22T10:00:00Z",
  "photos": {"assets": [{"id": "P1/L0/001", "created": "2026-03-01T10:00:00Z"}, {"id": "V1/L0/001", "mediaType": 2},
                        {"id": "P2/L0/001", "created": "2026-03-02T10:00:00Z"},
                        {"id": "X1/L0/001", "filename": "IMG_3.JPG", "editingInput": false}],
             "albums": [{"id": "LIB", "title": "Recents", "type": 2, "subtype": 209, "assets": ["P1/L0/001", "P2/L0/001"]}]},
  "music": {"songs": [{"persistentID": "7"}]}})";

void installDesktopActivities(const std::string& folder) {
  desktop::DesktopShareActivities::Options options{folder, {}, {}};
  ShareActivities::install(std::make_shared<desktop::DesktopShareActivities>(nullptr, options));
}
std::string fileOf(const std::string& asset) { return PhotoLibrarySource::current()->asset(asset)->backingPath; }

// Each kind of screen, on the sim's libraries with the desktop's activities.
TEST(DragOutTest, EachScreenHandsOverTheFilesBehindItsRows) {
  sim::SimPlatform platform(sim::Fixture::parse(kLibrary).value());
  installDesktopActivities(platform.home());
  registerMainStoryboard();  // the screens' nibs
  std::string document = platform.home() + "/my notes.txt";
  std::ofstream(document) << "notes";
  std::vector<PhotoModel> assets;
  for (auto id : {"P1/L0/001", "V1/L0/001", "X1/L0/001"}) {
    assets.push_back(PhotoModel::fromAsset(PHAsset::fetchAssetsWithLocalIdentifiers({id}, nullptr)[0]));
  }
  auto pictures = std::make_shared<ImagesVC>(), albums = std::make_shared<ImagesVC>();
  pictures->isAlBumsDisplay = false;
  pictures->photoViewModel = PhotosViewModel::withModels(assets);
  albums->viewModel = AlbumsViewModel::withModels({AlbumModel()});
  auto songs = std::make_shared<AudioVC>();
  songs->isAlBumsDisplay = false;
  songs->photoViewModel = PhotosViewModel::withModels({songRecord(MPMediaItem(MediaLibrarySource::current()->songs()[0]))});
  auto documents = std::make_shared<DocumentVC>();
  documents->viewModel = AlbumsViewModel::withModels({DocumentVC::documentModel(URL::fileURLWithPath(document)),
                                                      DocumentVC::documentModel(URL::fileURLWithPath(document + "~"))});
  AppData::shared()->recentFiles = {{*URL::withString(assetAddress("P1/L0/001", FileType::photo)), Date::now(), FileType::photo}};
  auto favourites = std::make_shared<FavouriteFilesVC>();
  PhotoModel favourite, ad;
  favourite.identifier = URL::fileURLWithPath(document).absoluteString();
  favourite.fileType = FileType::docs;
  ad.name = "nativeAd";
  favourites->viewModel = PhotosViewModel::withModels({favourite, ad});

  // Each row, and the drag's plain text ("*name": a picture written out under that name).
  auto collection = std::make_shared<UICollectionView>();
  using Case = std::tuple<std::shared_ptr<UICollectionViewDataSource>, long, std::string>;
  for (const auto& [screen, row, files] : std::vector<Case>{
           {pictures, 0, fileOf("P1/L0/001")}, {pictures, 1, fileOf("V1/L0/001")}, {pictures, 2, "*IMG_3.jpg"},
           {albums, 0, ""},
           {songs, 0, MediaLibrarySource::current()->songs()[0]->backingPath},
           {documents, 0, document}, {documents, 1, ""},  // the second file went
           {std::make_shared<HomeViewController>(), 0, fileOf("P1/L0/001")},
           {favourites, 0, document}, {favourites, 1, ""}}) {
    collection->setDataSource(screen);
    auto text = dragMimeData(*collection, row).value(QStringLiteral("text/plain")).toString().toStdString();
    if (files.starts_with('*')) {
      EXPECT_TRUE(text.starts_with(platform.home() + "/nimbrel-share-") && text.ends_with("/" + files.substr(1))) << text;
    } else {
      EXPECT_EQ(text, files);
    }
    EXPECT_EQ(mayDrag(*collection, row), screen != albums && !(screen == favourites && row == 1)) << files;
  }
  // Outside selection mode the collection holds every row selected; in it, a cell outside goes alone.
  collection->setDataSource(pictures);
  collection->setAllowsMultipleSelection(true);
  collection->selectItemAtIndexPath({0, 0}, false), collection->selectItemAtIndexPath({0, 2}, false);
  EXPECT_EQ(draggedRows(*collection, 0), std::vector<long>{0});
  pictures->photoViewModel->isMultipleSelectionEnabled = true;
  EXPECT_EQ(draggedRows(*collection, 1), std::vector<long>{1});
  ShareActivities::install(nullptr);
  EXPECT_TRUE(dragMimeData(*collection, 0).isEmpty() && !mayDrag(*collection, 0)) << "the sim hands out no files";
  AppData::shared()->recentFiles.clear();
}

class DragOutSceneTest : public SceneTest {};

// What the grid's cell hands its Drag when a mouse drag starts on it, in selection mode.
TEST_F(DragOutSceneTest, ADragFromTheSelectionCarriesItsFilesAsAUriListForACopy) {
  start({390, 844}, kLibrary);
  installDesktopActivities(platform_->home());
  auto screen = std::dynamic_pointer_cast<ImagesVC>(
      UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("ImagesVC"));
  screen->albums = albumsForMediaType(MediaTypes::image);
  nav()->pushViewController(screen, true);
  wait(0.6);
  screen->openAlbumAtRow(0);
  wait(0.3);
  ASSERT_FALSE(touchCollection(*screen->albumsCollectionView, 0, true));  // selection mode, with the first row
  ASSERT_FALSE(touchCollection(*screen->albumsCollectionView, 1, false));
  wait(0.3);
  QQuickItem* cell = item("cellTouch1");
  QVariant ready;
  ASSERT_TRUE(cell && QMetaObject::invokeMethod(cell, "prepareDrag", Q_RETURN_ARG(QVariant, ready)) && ready.toBool());
  auto uri = [](const char* asset) {
    return QUrl::fromLocalFile(QString::fromStdString(fileOf(asset))).toString(QUrl::FullyEncoded);
  };
  QVariantMap data = QQmlProperty(cell, QStringLiteral("Drag.mimeData"), qmlContext(cell)).read().toMap();
  EXPECT_EQ(data.value("text/uri-list").toString(), uri("P2/L0/001") + "\r\n" + uri("P1/L0/001") + "\r\n") << "newest first";
}

}  // namespace
}  // namespace nimbrel::shell
