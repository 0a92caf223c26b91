#pragma once

#include <memory>
#include <vector>

#include "app/media/AlbumModel.h"
#include "app/media/AlbumsViewModel.h"
#include "app/media/BrowseScreen.h"
#include "platform/mediaplayer/MPMediaItem.h"
#include "platform/mediaplayer/MPMediaItemCollection.h"

namespace nimbrel {

// Browses the music library: its albums, then one album's songs, which play in MusicPlayerVC.
// Nothing in the library is changed from here.
class AudioVC : public BrowseScreen<AlbumsViewModel> {
 public:
  static inline constexpr const char* kTypeName = "AudioVC";
  const char* className() const override { return kTypeName; }
  AudioVC();

  std::vector<std::shared_ptr<MPMediaItemCollection>> audioAlbums;
  std::vector<AlbumModel> albumModelsArr;
  std::vector<std::shared_ptr<MPMediaItem>> songList;

  void onFavBtn(const std::shared_ptr<NSObject>& sender);
  // Back to the albums as they were loaded: the library is read once per screen object.
  void onMainFolderBtnKeepingAlbums(const std::shared_ptr<NSObject>& sender);
  // The albums query becomes the album level, and the collection comes to life.
  void loadAlbums();
  // The songs of `albums` become the item level.
  void loadSongs(const std::vector<std::shared_ptr<MPMediaItemCollection>>& albums);

 protected:
  void requestAccess(std::function<void()> granted) override;
  void firstLoad() override { loadAlbums(); }
  void loadItemsOfAlbum(long row) override;
  std::string albumNameAtRow(long row) const override;
  void openItemLevelRow(long row) override;
  void configureAlbumCell(albumsCollectionViewCell& cell, long row) override;
  void configureItemCell(albumsCollectionViewCell& cell, long row) override;
  bool detachesTapInSelectionMode() const override { return false; }
  bool setsUpCollectionAtLoad() const override { return false; }
  void gatherShareItems(const std::shared_ptr<NSObject>& sender,
                        std::function<void(std::vector<UIActivityViewController::Item>)> share) override;
  void showInfoForSelection() override;
  void logPrefetch(long row) override;
};

}  // namespace nimbrel
