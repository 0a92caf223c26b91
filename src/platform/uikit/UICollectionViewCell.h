#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/uikit/UIView.h"

// A cell of a collection. Its layout (the nib) names its outlets so that a shell or a script can
// show them.
class UICollectionViewCell : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "UICollectionViewCell"; }

  const std::string& reuseIdentifier() const { return reuseIdentifier_; }
  void setReuseIdentifier(std::string id) { reuseIdentifier_ = std::move(id); }
  bool isSelected() const { return selected_; }
  // Subclasses act on it, calling this first.
  virtual void setSelected(bool selected);
  // The platform clears the selection of a cell it hands out again.
  virtual void prepareForReuse() { setSelected(false); }
  virtual void awakeFromNib() {}

  void registerOutlet(std::string name, std::shared_ptr<UIView> view) {
    outlets_.emplace_back(std::move(name), std::move(view));
  }
  const std::vector<std::pair<std::string, std::shared_ptr<UIView>>>& outlets() const { return outlets_; }

 private:
  std::string reuseIdentifier_;
  bool selected_ = false;
  std::vector<std::pair<std::string, std::shared_ptr<UIView>>> outlets_;
};
