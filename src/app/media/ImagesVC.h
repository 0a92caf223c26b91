#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "app/media/AlbumModel.h"
#include "app/media/AlbumsViewModel.h"
#include "app/media/BrowseScreen.h"
#include "platform/av/AVPlayerViewController.h"

namespace nimbrel {

// Browses the photo library's photos or its videos: albums first, then one album's assets.
class ImagesVC : public BrowseScreen<AlbumsViewModel>, public AVPlayerViewControllerDelegate {
 public:
  static inline constexpr const char* kTypeName = "ImagesVC";
  const char* className() const override { return kTypeName; }
  ImagesVC();

  std::shared_ptr<AppLovinNativeAdManual> appLovinNativeAdCollection = std::make_shared<AppLovinNativeAdManual>();
  std::vector<MAAd> nativeAdArr;
  std::vector<AlbumModel> albumModelsArr;

  void onFavBtn(const std::shared_ptr<NSObject>& sender);

 protected:
  void requestAccess(std::function<void()> granted) override;
  void firstLoad() override;
  void reloadAlbums() override;
  void loadItemsOfAlbum(long row) override;
  std::string albumNameAtRow(long row) const override;
  void openItemLevelRow(long row) override;
  void configureAlbumCell(albumsCollectionViewCell& cell, long row) override;
  void configureItemCell(albumsCollectionViewCell& cell, long row) override;
  bool isAdRow(long row) const override;
  std::shared_ptr<UICollectionViewCell> makeAdRowCell() override;
  bool offersInterstitialAtLoad() const override { return true; }
  size_t shareLimit() const override { return 10; }
  void gatherShareItems(const std::shared_ptr<NSObject>& sender,
                        std::function<void(std::vector<UIActivityViewController::Item>)> share) override;
  void deleteSelectedItems() override;
  void deleteFirstSelectedAlbum() override;
  void showInfoForSelection() override;
  void logPrefetch(long row) override;

  void openVideoInSystemPlayer(const std::shared_ptr<PHAsset>& asset);

 private:
  // Loads the album level; a reload differs at its step and its finish.
  void loadAlbumLevel(bool reload);
  std::mutex loadMutex_;
};

// The synthetic address of an asset from its identifier: no value when the identifier has no
// part before a "/" or the text is no URL. An identifier without any part ends the process.
std::optional<URL> assetURL(const std::string& identifier, FileType kind);

}  // namespace nimbrel
