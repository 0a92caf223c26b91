#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <vector>

#include "app/ads/AppLovinNativeAdManual.h"
#include "platform/libs/DYPieChartView.h"
#include "platform/libs/MGCollapsingHeaderView.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// How the volume is divided: a five-sector ring (video, images, audio, other, free) that grows
// while the staged accounting run goes on, and shows the final figures on a later visit.
class StorageAnalysisVC : public UIViewController, public UIScrollViewDelegate, public MGCollapsingHeaderDelegate {
 public:
  static inline constexpr const char* kTypeName = "StorageAnalysisVC";
  const char* className() const override { return kTypeName; }
  StorageAnalysisVC();

  std::shared_ptr<UILabel> lblInternalStorage, valueLabel, lblVideo, lblImages, lblAudio, lblOther, lblFreeSpace;
  std::shared_ptr<DYPieChartView> pieChartView;
  std::shared_ptr<UIScrollView> mainScrollView;
  std::shared_ptr<MGCollapsingHeaderView> HEADERView;
  std::shared_ptr<NSLayoutConstraint> heightOfHeaderViewConstant;
  std::shared_ptr<UIView> TitleView, nativeAdview, expandableTitleView;
  std::shared_ptr<UIButton> btnMenu;
  std::shared_ptr<NSLayoutConstraint> heightOfNativrAdView;

  std::array<float, 5> valueArr{0, 0, 0, 0, 0};
  std::array<float, 5> defaultArr{0.2f, 0.2f, 0.2f, 0.2f, 0.2f};
  UIColor videoColor, imageColor, audioColor, otherColor, defaultColor;
  float freePR = 0, videoPR = 0, imagePR = 0, audioPR = 0, otherPR = 0;
  double availableWidth, availableHeight;
  double timeDelta = 0, velocity = 0;
  long acceleration = 0;
  double WspeedValue = 0;
  std::shared_ptr<AppLovinNativeAdManual> appLovinNativeAd = std::make_shared<AppLovinNativeAdManual>();

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void scrollViewDidScroll(UIScrollView& scrollView) override;
  void headerDidCollapseToOffset(double) override {}
  void headerDidFinishCollapsing() override;
  void headerDidExpandToOffset(double) override {}
  void headerDidFinishExpanding() override;

  void onMenuBtn(const std::shared_ptr<NSObject>& sender);
  void onBackBtn(const std::shared_ptr<NSObject>& sender);

 private:
  // One run's running sums, shared by the closures of its steps.
  struct Run {
    std::atomic<std::int64_t> video{0}, image{0}, audio{0};
    std::vector<long> kilobytes;  // gathered and never read
  };
  enum class Sector { video = 0, images = 1, audio = 2, other = 3, free = 4 };

  void showVolume();
  void setUpChart();
  void fastPath();
  void startRun();
  void videoStep(const std::shared_ptr<Run>& run);
  void imageStep(const std::shared_ptr<Run>& run);
  void audioStep(const std::shared_ptr<Run>& run);
  void audioItems(const std::shared_ptr<Run>& run);
  void closingStep(const std::shared_ptr<Run>& run);
  void update(Sector sector, std::int64_t sum);
  void showMusicAlert();
  void animate(double duration);
  const UIColor& colorOf(Sector sector) const;
};

}  // namespace nimbrel
