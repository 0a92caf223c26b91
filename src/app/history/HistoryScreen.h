#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/core/File.h"
#include "app/media/BrowseScreen.h"
#include "app/media/PhotosViewModel.h"
#include "platform/av/AVPlayerViewController.h"
#include "platform/quicklook/QLPreviewController.h"

namespace nimbrel {

// What the recent and favourite screens share: one mixed list of file records at the album flag,
// each row resolved afresh to its document, asset or song for its cell, its viewer, its share and
// its size. The item list stays empty; only "Edit" touches it.
class HistoryScreen : public BrowseScreen<PhotosViewModel>,
                      public QLPreviewControllerDataSource,
                      public QLPreviewControllerDelegate,
                      public AVPlayerViewControllerDelegate {
 public:
  HistoryScreen();

  std::optional<URL> selectedUrl;

  void onHistoryMainFolderBtn(const std::shared_ptr<NSObject>& sender);
  // Opens the record of `row` in the viewer of its kind, remembering it among the recents.
  void openEntry(long row);

  long numberOfPreviewItemsInPreviewController(QLPreviewController& controller) override { return 1; }
  URL previewControllerPreviewItemAtIndex(QLPreviewController& controller, long index) override;
  bool previewControllerShouldOpenURLForPreviewItem(QLPreviewController& controller, const URL& url,
                                                    const URL& item) override;
  void previewControllerWillDismiss(QLPreviewController& controller) override;
  // "Edit" works on the empty item list; the other rows are the frame's.
  void menuChose(const std::string& entry) override;

 protected:
  BrowseSizes sizes() const override;
  void requestAccess(std::function<void()> granted) override;
  void openAlbumLevelRow(long row) override { openEntry(row); }
  void configureAlbumCell(albumsCollectionViewCell& cell, long row) override;
  bool isAdRow(long row) const override;
  std::vector<std::string> menuEntries() const override { return {"Edit", "Storage analysis", "Settings"}; }
  bool selectionAtAlbumLevel() const override { return true; }
  bool closureMarksItemList() const override { return true; }
  bool detachesTapInSelectionMode() const override { return false; }
  bool albumLevelUsesItemLayouts() const override { return true; }
  void gatherShareItems(const std::shared_ptr<NSObject>& sender,
                        std::function<void(std::vector<UIActivityViewController::Item>)> share) override;
  void showInfoForSelection() override;
  void logPrefetch(long row) override {}

  // Keeps the first record of each address, in order.
  static std::vector<File> foldedInMemory(std::vector<File> records);
  // The frame's collection set-up, then the selection closure run once.
  void setUpListCollection();
  // Whether the open stops at once on an identifier that is no URL (else it stops after a second parse).
  virtual bool openStopsBeforeRecording() const { return false; }

 private:
  void openAsset(const URL& url, FileType kind);
};

}  // namespace nimbrel
