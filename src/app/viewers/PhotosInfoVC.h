#pragma once

#include <memory>
#include <vector>

#include "app/media/PhotoModel.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// The panel that describes a selection of several items: how many, and their total size.
class PhotosInfoVC : public UIViewController {
 public:
  static inline constexpr const char* kTypeName = "PhotosInfoVC";
  const char* className() const override { return kTypeName; }
  PhotosInfoVC();

  std::shared_ptr<UIView> popUpView;
  std::shared_ptr<UILabel> lblContain, lblSize;
  std::vector<PhotoModel> models;

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void onExitBtn(const std::shared_ptr<NSObject>& sender);
};

}  // namespace nimbrel
