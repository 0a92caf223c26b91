#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "app/media/AlbumModel.h"
#include "app/media/AlbumsViewModel.h"
#include "app/media/BrowseScreen.h"
#include "platform/quicklook/QLPreviewController.h"
#include "platform/uikit/UIDocumentPickerViewController.h"

namespace nimbrel {

// The imported documents, one row per file of "importedFiles", on the browse frame with no item
// level. New files come in through the system's document picker and are moved, never copied or
// renamed; a row opens in the platform's preview.
class DocumentVC : public BrowseScreen<AlbumsViewModel>,
                   public UIDocumentPickerDelegate,
                   public QLPreviewControllerDataSource,
                   public QLPreviewControllerDelegate {
 public:
  static inline constexpr const char* kTypeName = "DocumentVC";
  const char* className() const override { return kTypeName; }
  DocumentVC();

  std::optional<URL> selectedUrl;
  std::vector<AlbumModel> albumModelsArr;

  void onOpenDocumentOicker(const std::shared_ptr<NSObject>& sender);
  void onFavBtn(const std::shared_ptr<NSObject>& sender);
  void onDocumentsDeletBtn(const std::shared_ptr<NSObject>& sender);
  void onDocumentsMainFolderBtn(const std::shared_ptr<NSObject>& sender);
  // Reads the folder anew; a folder that cannot be listed leaves the list as it was.
  void reloadDocuments();

  void documentPickerDidPickDocumentAtURL(UIDocumentPickerViewController& controller, const URL& url) override;
  void documentPickerWasCancelled(UIDocumentPickerViewController& controller) override;

  long numberOfPreviewItemsInPreviewController(QLPreviewController& controller) override { return 1; }
  URL previewControllerPreviewItemAtIndex(QLPreviewController& controller, long index) override;
  bool previewControllerShouldOpenURLForPreviewItem(QLPreviewController& controller, const URL& url,
                                                    const URL& item) override;
  void previewControllerWillDismiss(QLPreviewController& controller) override;

  // The row of one file.
  static AlbumModel documentModel(const URL& url);

 protected:
  BrowseSizes sizes() const override;
  void requestAccess(std::function<void()> granted) override;
  void firstLoad() override { reloadDocuments(); }
  void reloadAlbums() override { reloadDocuments(); }
  void openAlbumLevelRow(long row) override;
  void configureAlbumCell(albumsCollectionViewCell& cell, long row) override;
  bool isAdRow(long row) const override;
  std::vector<std::string> menuEntries() const override { return {"Edit", "Storage analysis", "Settings"}; }
  void menuChose(const std::string& entry) override;
  bool selectionAtAlbumLevel() const override { return true; }
  bool offersInterstitialAtLoad() const override { return true; }
  void gatherShareItems(const std::shared_ptr<NSObject>& sender,
                        std::function<void(std::vector<UIActivityViewController::Item>)> share) override;
  void showInfoForSelection() override;

 private:
  std::vector<std::string> selectedIdentifiers() const;
  void showListAfterChange();
  // The frame's closure, with the document rows kept unflagged outside selection mode: the flags
  // set there belong to the (empty) item list, as on any album list.
  void installSelectionClosure();
};

}  // namespace nimbrel
