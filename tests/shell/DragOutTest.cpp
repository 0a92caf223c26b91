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
#include "app/history/RecentFilesVC.h"
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
  desktop::DesktopShareActivities::Options options;
  options.temporaryFolder = folder;
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
  for (auto id : {"P1/L0/001", "V1/L0/001", "X1/L0/001"}) assets.push_back(PhotoModel::fromAsset(PHAsset::fetchAssetsWithLocalIdentifiers({id}, nullptr)[0]));
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
  auto recents = std::make_shared<RecentFilesVC>();
  PhotoModel recentVideo;
  recentVideo.identifier = assetAddress("V1/L0/001", FileType::video);
  recents->viewModel = PhotosViewModel::withModels({recentVideo});
  AppData::shared()->recentFiles = {{*URL::withString(assetAddress("P1/L0/001", FileType::photo)), Date::now(), FileType::photo}};

  struct Case {
    std::shared_ptr<UICollectionViewDataSource> screen;
    long row;
    std::string files;  // the drag's plain text; "*name": a picture written out under that name
  } cases[] = {
      {pictures, 0, fileOf("P1/L0/001")}, {pictures, 1, fileOf("V1/L0/001")}, {pictures, 2, "*IMG_3.jpg"},
      {pictures, 3, ""},  // past the last row
      {albums, 0, ""},
      {songs, 0, MediaLibrarySource::current()->songs()[0]->backingPath},
      {documents, 0, document}, {documents, 1, ""},  // the second file went
      {recents, 0, fileOf("V1/L0/001")},
      {std::make_shared<HomeViewController>(), 0, fileOf("P1/L0/001")},
  };
  auto collection = std::make_shared<UICollectionView>();
  for (const auto& c : cases) {
    collection->setDataSource(c.screen);
    auto text = dragMimeData(*collection, c.row).value(QStringLiteral("text/plain")).toString().toStdString();
    if (c.files.starts_with('*')) {
      EXPECT_TRUE(text.starts_with(platform.home() + "/nimbrel-share-") && text.ends_with("/" + c.files.substr(1))) << text;
    } else {
      EXPECT_EQ(text, c.files) << "case " << &c - cases;
    }
    EXPECT_EQ(mayDrag(*collection, c.row), c.row < 3 && c.screen != albums) << "case " << &c - cases;
  }
  ShareActivities::install(nullptr);
  EXPECT_TRUE(dragMimeData(*collection, 0).isEmpty() && !mayDrag(*collection, 0)) << "the sim hands out no files";
  AppData::shared()->recentFiles.clear();
}

class DragOutSceneTest : public SceneTest {};

// What a mouse drag from the grid's second cell carries, alone and with the selection.
TEST_F(DragOutSceneTest, ADragFromTheSelectionCarriesItsFilesAsAUriListForACopy) {
  start({390, 844}, kLibrary);
  installDesktopActivities(platform_->home());
  auto screen = std::dynamic_pointer_cast<ImagesVC>(UIStoryboard::storyboardWithName("Main").instantiateViewControllerWithIdentifier("ImagesVC"));
  screen->albums = albumsForMediaType(MediaTypes::image);
  nav()->pushViewController(screen, true);
  wait(0.6);
  screen->openAlbumAtRow(0);
  wait(0.3);
  ASSERT_TRUE(item("cellTouch1")) << "the album's pictures, newest first";
  auto drag = [&](const char* property) {
    QVariant ready;
    EXPECT_TRUE(QMetaObject::invokeMethod(item("cellTouch1"), "prepareDrag", Q_RETURN_ARG(QVariant, ready)) && ready.toBool());
    return QQmlProperty(item("cellTouch1"), QString::fromLatin1(property), qmlContext(item("cellTouch1"))).read();
  };
  auto data = [&](const char* format) { return drag("Drag.mimeData").toMap().value(QString::fromLatin1(format)).toString(); };
  EXPECT_EQ(drag("Drag.supportedActions").toInt(), int(Qt::CopyAction));
  EXPECT_EQ(drag("Drag.dragType").toInt(), 1) << "Drag.Automatic: the session's own drag";
  ASSERT_FALSE(touchCollection(*screen->albumsCollectionView, 0, true));
  wait(0.2);
  EXPECT_EQ(data("text/plain").toStdString(), fileOf("P1/L0/001")) << "a cell outside the selection goes alone";
  ASSERT_FALSE(touchCollection(*screen->albumsCollectionView, 1, false));
  wait(0.2);
  auto uri = [](const char* asset) { return QUrl::fromLocalFile(QString::fromStdString(fileOf(asset))).toString(QUrl::FullyEncoded); };
  EXPECT_EQ(data("text/uri-list"), uri("P2/L0/001") + "\r\n" + uri("P1/L0/001") + "\r\n");
  EXPECT_EQ(data("x-special/gnome-copied-files"), "copy\n" + uri("P2/L0/001") + "\n" + uri("P1/L0/001"));
  EXPECT_EQ(data("text/plain").toStdString(), fileOf("P2/L0/001") + "\n" + fileOf("P1/L0/001"));
}

}  // namespace
}  // namespace nimbrel::shell
