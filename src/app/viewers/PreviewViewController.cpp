#include "app/viewers/PreviewViewController.h"

#include <algorithm>
#include <cmath>

#include "app/media/Fetch.h"
#include "app/viewers/PreviewTitleBuilder.h"
#include "platform/uikit/UINavigationController.h"

namespace nimbrel {

std::shared_ptr<PreviewViewController> PreviewViewController::make() {
  return makeViewer<PreviewViewController>();
}

void PreviewViewController::construct() {
  // A viewer made in code reads presentation style 0 until someone presents it otherwise, so a
  // pushed one turns black in full screen.
  setModalPresentationStyle(UIModalPresentationStyle::fullScreen);
  registerAction("didSingleTap:", [this](const std::shared_ptr<NSObject>& s) { didSingleTap(s); });
  registerAction("didDoubleTap:", [this](const std::shared_ptr<NSObject>& s) { didDoubleTap(s); });
  auto self = weakSelf<UIResponder>();
  doubleTapRecognizer = std::make_shared<UITapGestureRecognizer>(self, "didDoubleTap:");
  doubleTapRecognizer->numberOfTapsRequired = 2;
  singleTapRecognizer = std::make_shared<UITapGestureRecognizer>(self, "didSingleTap:");
  singleTapRecognizer->numberOfTapsRequired = 1;
  auto root = view();  // loads the view: viewDidLoad runs here, as during the platform's init
  scrollView->setFrame(root->bounds());
  scrollView->setDelegate(std::shared_ptr<UIScrollViewDelegate>(strongSelf<PreviewViewController>()));
  scrollView->setMinimumZoomScale(1.0);
  scrollView->setMaximumZoomScale(3.0);
  scrollView->contentInsetAdjustmentBehavior = 2;
  scrollView->showsScrollIndicators = false;
  root->addSubview(scrollView);
  imageView->setFrame(scrollView->bounds());
  imageView->setContentMode(UIViewContentMode::scaleAspectFit);
  scrollView->addSubview(imageView);
  singleTapRecognizer->requireGestureRecognizerToFail(doubleTapRecognizer);
  root->addGestureRecognizer(singleTapRecognizer);
  root->addGestureRecognizer(doubleTapRecognizer);
  registerOutlet("scrollView", scrollView);
  registerOutlet("imageView", imageView);
  registerOutlet("titleLabel", titleLabel);
  registerOutlet("singleTapRecognizer", singleTapRecognizer);
  registerOutlet("doubleTapRecognizer", doubleTapRecognizer);
}

void PreviewViewController::viewDidLoad() {
  UIViewController::viewDidLoad();
  applyBackgroundRule();
  titleLabel->setNumberOfLines(0);
  titleLabel->setLineBreakMode(2);
  titleLabel->setTextAlignment(NSTextAlignment::center);
  navigationItem().setTitleView(titleLabel);
}

void PreviewViewController::applyBackgroundRule() {
  bool black = fullscreen() && modalPresentationStyle() == UIModalPresentationStyle::fullScreen;
  view()->setBackgroundColor(black ? UIColor::blackColor() : UIColor::whiteColor());
}

void PreviewViewController::setAsset(std::shared_ptr<PHAsset> asset) {
  asset_ = std::move(asset);
  imageLoad();
}

void PreviewViewController::imageLoad() {
  std::weak_ptr<PreviewViewController> weak = strongSelf<PreviewViewController>();
  auto current = asset();
  if (current) {
    PreviewTitleBuilder::build(current, [weak](NSAttributedString title) {
      if (auto self = weak.lock()) {
        self->titleLabel->setAttributedText(std::move(title));
        self->titleLabel->sizeToFit();
      }
    });
  }
  if (!current) {
    imageView->setImage(std::nullopt);
    return;
  }
  CGSize full{static_cast<double>(current->pixelWidth()), static_cast<double>(current->pixelHeight())};
  auto options = Fetch::shared()->preview()->photoOptions();
  imageManager->requestImageForAsset(current, full, PHImageContentMode::aspectFit, options.get(),
                                     [weak](std::optional<UIImage> image, const PHImageRequestInfo&) {
                                       auto self = weak.lock();
                                       if (self && image) self->imageView->setImage(image);
                                     });
}

void PreviewViewController::setFullscreen(bool value) {
  bool changed = value != fullscreen_;
  fullscreen_ = value;
  if (changed) UIView::animateWithDuration(0.3, [this] { chromeUpdate(); });
}

void PreviewViewController::chromeUpdate() {
  if (auto nav = navigationController()) nav->setNavigationBarHidden(fullscreen(), true);
  setNeedsStatusBarAppearanceUpdate();
  applyBackgroundRule();
}

void PreviewViewController::didSingleTap(const std::shared_ptr<NSObject>&) {
  setFullscreen(!fullscreen());
}

void PreviewViewController::didDoubleTap(const std::shared_ptr<NSObject>& sender) {
  if (scrollView->zoomScale() > 1.0) {
    scrollView->setZoomScale(1.0, true);
    return;
  }
  auto recognizer = std::dynamic_pointer_cast<UIGestureRecognizer>(sender);
  CGPoint location = recognizer ? recognizer->locationInView(recognizer->view().get()) : CGPoint{};
  auto zoom = viewForZoomingInScrollView(*scrollView);
  CGRect rect;
  if (zoom) {
    CGPoint p = scrollView->convertPointFromCoordinateSpace(location, zoom.get());
    double w = zoom->frame().width() / 2.0;
    double h = zoom->frame().height() / 2.0;
    rect = CGRectMake(p.x - w / 2, p.y - h / 2, w, h);
  }
  scrollView->zoomToRect(rect, true);
}

std::shared_ptr<UIView> PreviewViewController::viewForZoomingInScrollView(UIScrollView&) {
  return imageView;
}

void PreviewViewController::scrollViewDidZoom(UIScrollView& scroll) {
  if (scroll.zoomScale() <= 1.0) {
    scroll.setContentInset({});
    return;
  }
  setFullscreen(true);
  auto image = imageView->image();
  if (!image) return;
  auto zoom = viewForZoomingInScrollView(scroll);
  if (!zoom) return;
  CGSize picture = image->size();
  if (picture.width <= 0 || picture.height <= 0) return;
  double r = std::min(zoom->frame().width() / picture.width, zoom->frame().height() / picture.height);
  double w = picture.width * r, h = picture.height * r;
  double dx = zoom->frame().width() < w * scroll.zoomScale() ? w - zoom->frame().width()
                                                              : scroll.frame().width() - scroll.contentSize().width;
  double dy = zoom->frame().height() < h * scroll.zoomScale() ? h - zoom->frame().height()
                                                               : scroll.frame().height() - scroll.contentSize().height;
  double vertical = std::round(dy * 0.5), horizontal = std::round(dx * 0.5);
  scroll.setContentInset({vertical, horizontal, vertical, horizontal});
}

void PreviewViewController::viewWillDisappear(bool animated) {
  UIViewController::viewWillDisappear(animated);
  if (auto nav = navigationController()) nav->setNavigationBarHidden(true, false);
  setFullscreen(false);
}

}  // namespace nimbrel
