#include "shell/Snapshot.h"

#include <QVariantList>

#include <algorithm>

#include "app/kit/CheckmarkView.h"
#include "app/viewers/PlayerView.h"
#include "platform/ads/MANativeAdView.h"
#include "platform/libs/DYPieChartView.h"
#include "platform/libs/LottieAnimationView.h"
#include "platform/libs/MGCollapsingHeaderView.h"
#include "platform/photos/PHLivePhoto.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UISlider.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIGestureRecognizer.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UITextField.h"
#include "shell/ImageStore.h"

namespace nimbrel::shell {

QColor toQColor(const UIColor& c) {
  return QColor::fromRgbF(static_cast<float>(c.red), static_cast<float>(c.green), static_cast<float>(c.blue),
                          static_cast<float>(c.alpha));
}

namespace {

QString qs(const std::optional<std::string>& text) {
  return text ? QString::fromStdString(*text) : QString();
}

QVariantMap rect(const CGRect& r) {
  return {{"x", r.minX()}, {"y", r.minY()}, {"width", r.width()}, {"height", r.height()}};
}

QVariantList describeRuns(const NSAttributedString& text) {
  QVariantList runs;
  for (const auto& run : text.runs) {
    runs.push_back(QVariantMap{{"text", QString::fromStdString(run.text)},
                               {"size", run.font.pointSize},
                               {"bold", run.font.bold},
                               {"color", toQColor(run.color)}});
  }
  return runs;
}

void describeNativeAds(const UIView& view, QVariantMap& out) {
  QVariantList ads;
  for (const auto& sub : view.subviews()) {
    auto ad = std::dynamic_pointer_cast<MANativeAdView>(sub);
    if (!ad || !ad->renderedAd()) continue;
    const MAAd& creative = *ad->renderedAd();
    ads.push_back(QVariantMap{{"title", QString::fromStdString(creative.title)},
                              {"body", QString::fromStdString(creative.body)},
                              {"cta", QString::fromStdString(creative.callToAction)},
                              {"network", QString::fromStdString(creative.networkName)}});
  }
  out["nativeAds"] = ads;
}

}  // namespace

QVariantMap snapshotOf(const std::shared_ptr<NSObject>& object) {
  QVariantMap out;
  if (!object) return out;
  if (auto constraint = std::dynamic_pointer_cast<NSLayoutConstraint>(object)) {
    out["type"] = QStringLiteral("NSLayoutConstraint");
    out["constant"] = constraint->constant();
    out["active"] = constraint->isActive();
    return out;
  }
  if (auto recognizer = std::dynamic_pointer_cast<UIGestureRecognizer>(object)) {
    out["type"] = QString::fromLatin1(recognizer->className());
    out["enabled"] = recognizer->isEnabled();
    out["attached"] = recognizer->view() != nullptr;
    if (auto tap = std::dynamic_pointer_cast<UITapGestureRecognizer>(recognizer)) out["taps"] = tap->numberOfTapsRequired;
    return out;
  }
  if (auto item = std::dynamic_pointer_cast<UIBarButtonItem>(object)) {
    out["type"] = QStringLiteral("UIBarButtonItem");
    out["systemItem"] = item->systemItem();
    // The system items this program uses, drawn from the shell's own assets.
    out["image"] = item->systemItem() == UIBarButtonItem::play    ? QStringLiteral("image://nimbrel/asset/play")
                   : item->systemItem() == UIBarButtonItem::pause ? QStringLiteral("image://nimbrel/asset/pause")
                                                                  : QString();
    return out;
  }
  auto view = std::dynamic_pointer_cast<UIView>(object);
  if (!view) {
    out["type"] = QStringLiteral("NSObject");
    return out;
  }
  out["type"] = QString::fromLatin1(view->className());
  out["hidden"] = view->isHidden();
  out["alpha"] = view->alpha();
  out["tag"] = static_cast<qlonglong>(view->tag());
  out["background"] = view->backgroundColor() ? QVariant(toQColor(*view->backgroundColor())) : QVariant();
  out["cornerRadius"] = view->layer().cornerRadius;
  out["borderWidth"] = view->layer().borderWidth;
  out["borderColor"] = view->layer().borderColor ? QVariant(toQColor(*view->layer().borderColor)) : QVariant();
  out["frame"] = rect(view->frame());
  if (auto label = std::dynamic_pointer_cast<UILabel>(view)) {
    out["text"] = qs(label->text());
    out["hasText"] = label->text().has_value();
    out["textColor"] = toQColor(label->textColor());
    out["fontSize"] = label->font().pointSize;
    out["bold"] = label->font().bold;
    out["align"] = static_cast<int>(label->textAlignment());
    out["lines"] = label->numberOfLines();
    out["runs"] = label->attributedText() ? describeRuns(*label->attributedText()) : QVariantList();
  }
  if (auto button = std::dynamic_pointer_cast<UIButton>(view)) {
    out["title"] = qs(button->currentTitle());
    auto color = button->currentTitleColor();
    out["titleColor"] = color ? QVariant(toQColor(*color)) : QVariant();
    out["image"] = ImageStore::shared().urlFor(button->currentImage());
    out["selected"] = button->isSelected();
    out["enabled"] = button->isEnabled();
    out["fontSize"] = button->titleFont().pointSize;
    out["bold"] = button->titleFont().bold;
  } else if (auto control = std::dynamic_pointer_cast<UIControl>(view)) {
    out["selected"] = control->isSelected();
    out["enabled"] = control->isEnabled();
  }
  if (auto slider = std::dynamic_pointer_cast<UISlider>(view)) {
    out["value"] = slider->value();
    out["minimum"] = slider->minimumValue();
    out["maximum"] = slider->maximumValue();
  }
  if (auto field = std::dynamic_pointer_cast<UITextField>(view)) {
    out["text"] = qs(field->text());
    out["placeholder"] = qs(field->placeholder());
  }
  if (auto imageView = std::dynamic_pointer_cast<UIImageView>(view)) {
    out["image"] = ImageStore::shared().urlFor(imageView->image());
    out["contentMode"] = static_cast<int>(imageView->contentMode());
  }
  if (auto scroll = std::dynamic_pointer_cast<UIScrollView>(view)) {
    out["contentY"] = scroll->contentOffset().y;
    out["contentX"] = scroll->contentOffset().x;
    out["zoomScale"] = scroll->zoomScale();
    out["minimumZoomScale"] = scroll->minimumZoomScale();
    out["maximumZoomScale"] = scroll->maximumZoomScale();
    const UIEdgeInsets inset = scroll->contentInset();
    out["contentInset"] = QVariantMap{{"top", inset.top}, {"left", inset.left}, {"bottom", inset.bottom}, {"right", inset.right}};
    out["contentSize"] = QVariantMap{{"width", scroll->contentSize().width}, {"height", scroll->contentSize().height}};
    const CGPoint shown = shownContentOffset(*scroll);
    out["shownX"] = shown.x;
    out["shownY"] = shown.y;
    out["interactive"] = scroll->isUserInteractionEnabled();
  }
  if (auto live = std::dynamic_pointer_cast<PHLivePhotoView>(view)) {
    const auto& photo = live->livePhoto();
    out["image"] = photo ? ImageStore::shared().urlForFile(photo->source(), int(photo->size().width), int(photo->size().height))
                         : QString();
    out["pictureWidth"] = photo ? photo->size().width : 0.0;
    out["pictureHeight"] = photo ? photo->size().height : 0.0;
  }
  if (auto player = std::dynamic_pointer_cast<nimbrel::PlayerView>(view)) {
    out["hasPlayer"] = player->player() != nullptr;
  }
  if (auto checkmark = std::dynamic_pointer_cast<CheckmarkView>(view)) {
    auto d = checkmark->drawing();
    out["selected"] = checkmark->isSelected();
    QVariantList check;
    for (const auto& p : d.check) check.push_back(QVariantMap{{"x", p.x}, {"y", p.y}});
    out["drawing"] = QVariantMap{{"oval", rect(d.oval)},
                                 {"fill", toQColor(d.fillColor)},
                                 {"stroke", toQColor(d.strokeColor)},
                                 {"shadow", toQColor(d.shadowColor)},
                                 {"shadowBlur", d.shadowBlur},
                                 {"shadowX", d.shadowOffset.width},
                                 {"shadowY", d.shadowOffset.height},
                                 {"lineWidth", d.lineWidth},
                                 {"check", check},
                                 {"width", view->bounds().width()},
                                 {"height", view->bounds().height()}};
  }
  if (auto pie = std::dynamic_pointer_cast<DYPieChartView>(view)) {
    QVariantList colors, values;
    for (const auto& c : pie->sectorColors()) colors.push_back(toQColor(c));
    for (double v : pie->scaleValues()) values.push_back(v);
    out["sectorColors"] = colors;
    out["scaleValues"] = values;
    out["duration"] = pie->animations().empty() ? 0.0 : pie->animations().back().duration;
    out["animationCount"] = static_cast<int>(pie->animations().size());
    out["lineWidth"] = pie->lineWidth;
    out["startAngle"] = pie->startAngle;
    out["clockwise"] = pie->clockwise;
  }
  if (auto lottie = std::dynamic_pointer_cast<LottieAnimationView>(view)) {
    out["animation"] = QString::fromStdString(lottie->animationName());
    out["playing"] = lottie->isAnimationPlaying();
    out["loop"] = lottie->loopMode() != LottieLoopMode::playOnce;
    out["speed"] = lottie->animationSpeed();
  }
  if (auto header = std::dynamic_pointer_cast<MGCollapsingHeaderView>(view)) {
    out["progress"] = header->progress();
    out["minimumHeight"] = header->minimumHeaderHeight();
  }
  QVariantList animations;
  for (const auto& a : view->layerAnimations()) {
    animations.push_back(QVariantMap{{"key", QString::fromStdString(a.key)},
                                     {"keyPath", QString::fromStdString(a.keyPath)},
                                     {"from", a.from},
                                     {"to", a.to},
                                     {"duration", a.duration},
                                     {"kind", QString::fromStdString(a.kind)}});
  }
  out["layerAnimations"] = animations;
  describeNativeAds(*view, out);
  return out;
}

CGPoint shownContentOffset(const UIScrollView& scroll) {
  return clampContentOffset(scroll, scroll.contentOffset());
}

CGPoint clampContentOffset(const UIScrollView& scroll, CGPoint offset) {
  // An inset below zero narrows the range, which is how a zoomed picture is kept centred.
  const UIEdgeInsets inset = scroll.contentInset();
  const CGSize content = scroll.contentSize();
  const CGSize bounds = scroll.bounds().size;
  auto clampAxis = [](double offset, double before, double length, double after, double visible) {
    double low = -before;
    double high = length + after - visible;
    if (high < low) return low;
    return std::clamp(offset, low, high);
  };
  return {clampAxis(offset.x, inset.left, content.width, inset.right, bounds.width),
          clampAxis(offset.y, inset.top, content.height, inset.bottom, bounds.height)};
}

}  // namespace nimbrel::shell
