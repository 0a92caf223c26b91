#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/foundation/ChangeSignal.h"
#include "platform/uikit/CALayer.h"
#include "platform/uikit/CGGeometry.h"
#include "platform/uikit/UIColor.h"
#include "platform/uikit/UIResponder.h"

class UIGestureRecognizer;
class NSLayoutConstraint;

enum class UIViewContentMode {
  scaleToFill = 0, scaleAspectFit = 1, scaleAspectFill = 2, redraw = 3, center = 4,
  top = 5, bottom = 6, left = 7, right = 8
};

// A retained view state object: what a person could see of it, no pixels. Setters that change
// something visible emit `changed` so that a shell can redraw.
class UIView : public UIResponder {
 public:
  UIView() = default;
  explicit UIView(CGRect frame) : frame_(frame) {}
  template <class T = UIView, class... Args>
  static std::shared_ptr<T> make(Args&&... args) {
    return std::make_shared<T>(std::forward<Args>(args)...);
  }
  // The kind shown to a script ("UIView", "UILabel", ...).
  virtual const char* className() const { return "UIView"; }

  const CGRect& frame() const { return frame_; }
  void setFrame(CGRect frame);
  CGRect bounds() const { return CGRect{{0, 0}, frame_.size}; }
  void setBoundsSize(CGSize size);

  bool isHidden() const { return hidden_; }
  void setHidden(bool hidden);
  double alpha() const { return alpha_; }
  void setAlpha(double alpha);
  const std::optional<UIColor>& backgroundColor() const { return backgroundColor_; }
  void setBackgroundColor(std::optional<UIColor> color);
  std::optional<UIColor> tintColor() const { return tintColor_; }
  void setTintColor(std::optional<UIColor> color);
  long tag() const { return tag_; }
  void setTag(long tag);
  bool isUserInteractionEnabled() const { return userInteractionEnabled_; }
  void setUserInteractionEnabled(bool enabled);
  bool clipsToBounds() const { return layer_.masksToBounds; }
  void setClipsToBounds(bool clips);
  UIViewContentMode contentMode() const { return contentMode_; }
  void setContentMode(UIViewContentMode mode);
  bool translatesAutoresizingMaskIntoConstraints() const { return translatesMask_; }
  void setTranslatesAutoresizingMaskIntoConstraints(bool v) { translatesMask_ = v; }
  // A rotation/scale of the view as one number pair, enough for the animations the screens run.
  double transformScale() const { return transformScale_; }
  void setTransformScale(double scale);

  const CALayer& layer() const { return layer_; }
  // Changes the layer and tells observers.
  template <class F>
  void updateLayer(F&& change) {
    change(layer_);
    setNeedsDisplay();
  }

  // Hierarchy.
  const std::vector<std::shared_ptr<UIView>>& subviews() const { return subviews_; }
  std::shared_ptr<UIView> superview() const { return superview_.lock(); }
  void addSubview(const std::shared_ptr<UIView>& view);
  void insertSubviewAtIndex(const std::shared_ptr<UIView>& view, size_t index);
  void removeFromSuperview();
  bool isDescendantOfView(const UIView* view) const;
  // The first descendant (depth first, this view included) with the tag.
  std::shared_ptr<UIView> viewWithTag(long tag);
  // Hidden when this view or an ancestor is hidden.
  bool isEffectivelyHidden() const;
  // `convertRect:toView:`: a rect in this view's coordinates expressed in the target's; a null
  // target means the coordinates of this view's topmost ancestor. Scroll views on the way count
  // their content offset, as the platform's bounds origin does.
  CGRect convertRectToView(CGRect rect, const UIView* target) const;

  // Gestures and constraints.
  const std::vector<std::shared_ptr<UIGestureRecognizer>>& gestureRecognizers() const {
    return gestures_;
  }
  void addGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer);
  void removeGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer);
  const std::vector<std::shared_ptr<NSLayoutConstraint>>& constraints() const { return constraints_; }
  void addConstraint(const std::shared_ptr<NSLayoutConstraint>& constraint);

  // Layout passes are counted, not computed: the shell lays out; rules only ask for a pass.
  void layoutIfNeeded();
  void setNeedsLayout();
  int layoutCount() const { return layoutCount_; }
  virtual CGSize intrinsicContentSize() const { return {-1, -1}; }
  // Told after the frame (and so the bounds) changed; containers lay out again.
  virtual void frameDidChange() {}
  void setNeedsDisplay();

  ChangeSignal& changed() { return changed_; }

  // Animations as records: the changes in `animations` happen at once (a shell animates them over
  // the duration); the completion runs once the duration has passed.
  static void animateWithDuration(double duration, const std::function<void()>& animations,
                                  std::function<void(bool)> completion = nullptr);
  struct LayerAnimation {
    std::string key;
    std::string keyPath;
    double from = 0, to = 0, duration = 0;
    bool autoreverses = false;
    std::string kind = "basic";  // "basic" or "spring"
  };
  void addLayerAnimation(LayerAnimation animation);
  const std::vector<LayerAnimation>& layerAnimations() const { return layerAnimations_; }

 protected:
  void didChange() { setNeedsDisplay(); }

 private:
  CGRect frame_;
  bool hidden_ = false;
  double alpha_ = 1;
  std::optional<UIColor> backgroundColor_;
  std::optional<UIColor> tintColor_;
  long tag_ = 0;
  bool userInteractionEnabled_ = true;
  bool translatesMask_ = true;
  double transformScale_ = 1;
  UIViewContentMode contentMode_ = UIViewContentMode::scaleToFill;
  CALayer layer_;
  std::vector<std::shared_ptr<UIView>> subviews_;
  std::weak_ptr<UIView> superview_;
  std::vector<std::shared_ptr<UIGestureRecognizer>> gestures_;
  std::vector<std::shared_ptr<NSLayoutConstraint>> constraints_;
  int layoutCount_ = 0;
  ChangeSignal changed_;
  std::vector<LayerAnimation> layerAnimations_;
};
