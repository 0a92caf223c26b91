#pragma once

#include <memory>
#include <optional>

#include "app/media/PhotoModel.h"
#include "platform/foundation/URL.h"
#include "platform/mediaplayer/MPMediaItem.h"
#include "platform/photos/PHAsset.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// The panel that describes one item: a library asset, a list record without asset, or a document.
class InfoViewController : public UIViewController {
 public:
  static inline constexpr const char* kTypeName = "InfoVC";
  const char* className() const override { return "InfoViewController"; }
  InfoViewController();

  std::shared_ptr<UIView> popUpView;
  std::shared_ptr<UILabel> lblDate, lblDimension, lblSize, lblFilePath, lblFileName;
  std::optional<URL> assetURL;
  std::shared_ptr<PHAsset> asset;
  std::shared_ptr<MPMediaItem> mediaItem;
  PhotoModel model = PhotoModel::empty();
  bool isDocumentURL = false;
  std::optional<URL> documentURL;

  void viewDidLoad() override;
  void onExitBtn(const std::shared_ptr<NSObject>& sender);

  // "h :m :s" of a duration, each as the default text of a double.
  static std::string durationText(double seconds);
  static std::string megabytesText(std::int64_t bytes);

 private:
  void showAsset();
  void showModel();
  void showDocument();
};

}  // namespace nimbrel
