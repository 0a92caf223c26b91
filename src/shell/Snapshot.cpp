#include "shell/Snapshot.h"

#include <QVariantList>

#include "app/kit/CheckmarkView.h"
#include "platform/ads/MANativeAdView.h"
#include "platform/libs/DYPieChartView.h"
#include "platform/libs/LottieAnimationView.h"
#include "platform/libs/MGCollapsingHeaderView.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIButton.h"
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
  out["frame"] = rect(view->frame());
  if (auto label = std::dynamic_pointer_cast<UILabel>(view)) {
    out["text"] = qs(label->text());
    out["hasText"] = label->text().has_value();
    out["textColor"] = toQColor(label->textColor());
    out["fontSize"] = label->font().pointSize;
    out["bold"] = label->font().bold;
    out["align"] = static_cast<int>(label->textAlignment());
    out["lines"] = label->numberOfLines();
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
  describeNativeAds(*view, out);
  return out;
}

}  // namespace nimbrel::shell
