#include "automation/TreeWriter.h"

#include "platform/quicklook/QLPreviewController.h"
#include "platform/uikit/DocumentPickerSource.h"
#include "platform/uikit/UIDocumentPickerViewController.h"

#include "platform/ads/FullScreenAdStage.h"
#include "app/VC/PopupMenu.h"
#include "app/kit/CheckmarkView.h"
#include "platform/ads/MANativeAdView.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIGestureRecognizer.h"
#include "platform/libs/DYPieChartView.h"
#include "platform/libs/LottieAnimationView.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIActivityViewController.h"
#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UserNotice.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UISlider.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIScrollView.h"

namespace nimbrel {

using json = nlohmann::json;

namespace {

void addStack(std::vector<TreeWriter::ScreenEntry>& out, const std::shared_ptr<UIViewController>& vc,
              const std::string& firstPresentation, int style) {
  if (auto nav = std::dynamic_pointer_cast<UINavigationController>(vc)) {
    bool first = true;
    for (const auto& child : nav->viewControllers()) {
      out.push_back({child, first ? firstPresentation : "push", first ? style : 0});
      first = false;
    }
    return;
  }
  out.push_back({vc, firstPresentation, style});
}

json imageValue(const std::optional<UIImage>& image) {
  return image ? json(image->describe()) : json(nullptr);
}

const char* hudKind(SVProgressHUD::Kind kind) {
  switch (kind) {
    case SVProgressHUD::Kind::none: return nullptr;
    case SVProgressHUD::Kind::status: return "status";
    case SVProgressHUD::Kind::progress: return "progress";
    case SVProgressHUD::Kind::info: return "info";
    case SVProgressHUD::Kind::success: return "success";
    case SVProgressHUD::Kind::error: return "error";
    case SVProgressHUD::Kind::image: return "image";
  }
  return nullptr;
}

}  // namespace

std::vector<TreeWriter::ScreenEntry> TreeWriter::screens() {
  std::vector<ScreenEntry> out;
  auto window = UIApplication::sharedApplication().keyWindow();
  if (!window || !window->rootViewController()) return out;
  auto root = window->rootViewController();
  addStack(out, root, "root", 0);
  for (auto presented = root->presentedViewController(); presented;
       presented = presented->presentedViewController()) {
    if (std::dynamic_pointer_cast<UIAlertController>(presented) ||
        std::dynamic_pointer_cast<UIActivityViewController>(presented) ||
        std::dynamic_pointer_cast<UIDocumentPickerViewController>(presented)) {
      continue;
    }
    addStack(out, presented, "modal", static_cast<int>(presented->modalPresentationStyle()));
  }
  return out;
}

std::shared_ptr<UIViewController> TreeWriter::topScreen() {
  auto all = screens();
  return all.empty() ? nullptr : all.back().controller;
}

std::shared_ptr<UIViewController> TreeWriter::screenWithId(const std::string& id) {
  auto all = screens();
  for (auto it = all.rbegin(); it != all.rend(); ++it) {
    if (screenId(*it->controller) == id) return it->controller;
  }
  return nullptr;
}

namespace {
template <class T>
std::shared_ptr<T> presentedOfType() {
  auto window = UIApplication::sharedApplication().keyWindow();
  if (!window || !window->rootViewController()) return nullptr;
  std::shared_ptr<T> found;
  for (auto p = window->rootViewController()->presentedViewController(); p; p = p->presentedViewController()) {
    if (auto t = std::dynamic_pointer_cast<T>(p)) found = t;
  }
  return found;
}
}  // namespace

std::shared_ptr<UIAlertController> TreeWriter::currentAlert() {
  return presentedOfType<UIAlertController>();
}

std::shared_ptr<UIActivityViewController> TreeWriter::currentSheet() {
  return presentedOfType<UIActivityViewController>();
}

std::shared_ptr<UIDocumentPickerViewController> TreeWriter::currentPicker() {
  return presentedOfType<UIDocumentPickerViewController>();
}

std::string TreeWriter::screenId(const UIViewController& controller) {
  return controller.storyboardIdentifier().empty() ? controller.className()
                                                   : controller.storyboardIdentifier();
}

json TreeWriter::describeOutlet(const std::shared_ptr<NSObject>& object, const UIViewController* screen) {
  json out = json::object();
  if (auto constraint = std::dynamic_pointer_cast<NSLayoutConstraint>(object)) {
    out["type"] = "NSLayoutConstraint";
    out["constant"] = constraint->constant();
    return out;
  }
  if (auto recognizer = std::dynamic_pointer_cast<UIGestureRecognizer>(object)) {
    out["type"] = recognizer->className();
    out["enabled"] = recognizer->isEnabled();
    out["attached"] = recognizer->view() != nullptr;
    return out;
  }
  auto view = std::dynamic_pointer_cast<UIView>(object);
  if (!view) {
    out["type"] = "NSObject";
    return out;
  }
  out["type"] = view->className();
  out["hidden"] = view->isHidden();
  if (view->alpha() != 1.0) out["alpha"] = view->alpha();
  if (auto label = std::dynamic_pointer_cast<UILabel>(view)) {
    out["text"] = label->text() ? json(*label->text()) : json(nullptr);
    out["textColor"] = label->textColor().hexString();
  }
  if (auto button = std::dynamic_pointer_cast<UIButton>(view)) {
    auto title = button->currentTitle();
    out["title"] = title ? json(*title) : json(nullptr);
    out["image"] = imageValue(button->currentImage());
    out["selected"] = button->isSelected();
    out["enabled"] = button->isEnabled();
  }
  if (auto imageView = std::dynamic_pointer_cast<UIImageView>(view)) {
    out["image"] = imageValue(imageView->image());
  }
  if (auto slider = std::dynamic_pointer_cast<UISlider>(view)) {
    out["value"] = slider->value();
    out["minimum"] = slider->minimumValue();
    out["maximum"] = slider->maximumValue();
  }
  if (auto scroll = std::dynamic_pointer_cast<UIScrollView>(view)) {
    out["contentOffset"] = {scroll->contentOffset().x, scroll->contentOffset().y};
    if (scroll->zoomScale() != 1.0) out["zoomScale"] = scroll->zoomScale();
  }
  if (auto checkmark = std::dynamic_pointer_cast<CheckmarkView>(view)) {
    out["selected"] = checkmark->isSelected();
  }
  if (auto collection = std::dynamic_pointer_cast<UICollectionView>(view)) {
    json described = describeCollection(*collection, screen);
    for (auto& [k, v] : described.items()) out[k] = v;
  }
  if (auto chart = std::dynamic_pointer_cast<DYPieChartView>(view)) {
    json colors = json::array();
    for (const auto& c : chart->sectorColors()) colors.push_back(c.hexString());
    out["sectorColors"] = colors;
    out["scaleValues"] = chart->scaleValues();
    out["startAngle"] = chart->startAngle;
    out["clockwise"] = chart->clockwise;
    out["lineWidth"] = chart->lineWidth;
    if (!chart->animations().empty()) out["animationDuration"] = chart->animations().back().duration;
  }
  if (auto lottie = std::dynamic_pointer_cast<LottieAnimationView>(view)) {
    out["animation"] = lottie->animationName();
    out["playing"] = lottie->isAnimationPlaying();
    out["loop"] = lottie->loopMode() == LottieLoopMode::loop;
    out["speed"] = lottie->animationSpeed();
  }
  // Native ads rendered into this view, oldest first.
  json ads = json::array();
  for (const auto& sub : view->subviews()) {
    if (auto ad = std::dynamic_pointer_cast<MANativeAdView>(sub); ad && ad->renderedAd()) {
      ads.push_back(ad->renderedAd()->title);
    }
  }
  if (!ads.empty()) out["nativeAds"] = ads;
  return out;
}

json TreeWriter::describeCollection(UICollectionView& collection, const UIViewController* screen) {
  json out = json::object();
  out["tag"] = collection.tag();
  long count = collection.numberOfSections() > 0 ? collection.numberOfItemsInSection(0) : 0;
  out["count"] = count;
  json selected = json::array();
  for (const auto& path : collection.indexPathsForSelectedItems()) {
    if (path.section == 0) selected.push_back(path.item);
  }
  out["selected"] = selected;
  // The screen's tap recogniser, attached or not.
  std::shared_ptr<UIGestureRecognizer> tap;
  for (const auto& g : collection.gestureRecognizers()) {
    if (std::dynamic_pointer_cast<UITapGestureRecognizer>(g)) tap = g;
  }
  if (!tap && screen) tap = std::dynamic_pointer_cast<UITapGestureRecognizer>(screen->outlet("tap"));
  out["tapAttached"] = tap && tap->view().get() == &collection;
  out["tapEnabled"] = tap && tap->isEnabled();
  json cells = json::array();
  auto describeCell = [&](long row, UICollectionViewCell& c) {
    json cell = json::object();
    cell["row"] = row;
    cell["reuse"] = c.reuseIdentifier();
    cell["selected"] = c.isSelected();
    json outlets = json::object();
    for (const auto& [name, v] : c.outlets()) outlets[name] = describeOutlet(v, screen);
    cell["outlets"] = outlets;
    cells.push_back(cell);
  };
  bool showing = !screen || screen->appearance() == UIViewController::Appearance::appeared ||
                 screen->appearance() == UIViewController::Appearance::appearing;
  if (showing) {
    for (long row = 0; row < count; ++row) {
      collection.withCellForRow({0, row}, [&](UICollectionViewCell& c) { describeCell(row, c); });
    }
  } else {
    for (const auto& path : collection.indexPathsForVisibleItems()) {
      if (auto c = collection.cellForItemAtIndexPath(path); c && path.section == 0) describeCell(path.item, *c);
    }
  }
  out["cells"] = cells;
  return out;
}

json TreeWriter::describeScreen(const ScreenEntry& entry) {
  json out = json::object();
  out["id"] = screenId(*entry.controller);
  out["presentation"] = entry.presentation;
  if (entry.presentation == "modal") out["style"] = entry.style;
  json outlets = json::object();
  if (entry.controller->isViewLoaded()) {
    for (const auto& [name, object] : entry.controller->outlets()) {
      outlets[name] = describeOutlet(object, entry.controller.get());
    }
  }
  out["outlets"] = outlets;
  if (auto preview = std::dynamic_pointer_cast<QLPreviewController>(entry.controller)) {
    auto item = preview->currentPreviewItem();
    out["previewItem"] = item ? json(item->absoluteString()) : json(nullptr);
  }
  if (entry.controller->isViewLoaded()) {
    const auto& background = entry.controller->view()->backgroundColor();
    if (background) out["background"] = background->hexString();
  }
  if (const auto& item = entry.controller->navigationItem().rightBarButtonItem()) {
    out["rightBarButton"] = item->systemItem() == UIBarButtonItem::play    ? "play"
                            : item->systemItem() == UIBarButtonItem::pause ? "pause"
                                                                           : "item";
  }
  if (entry.controller->prefersStatusBarHidden()) out["statusBarHidden"] = true;
  if (auto nav = entry.controller->navigationController()) out["navigationBarHidden"] = nav->isNavigationBarHidden();
  return out;
}

json TreeWriter::tree(double now) {
  json out = json::object();
  out["ok"] = true;
  out["now"] = now;
  json list = json::array();
  for (const auto& entry : screens()) list.push_back(describeScreen(entry));
  out["screens"] = list;

  auto hud = SVProgressHUD::state();
  const char* kind = hudKind(hud.kind);
  out["hud"] = {{"visible", hud.visible},
                {"kind", kind ? json(kind) : json(nullptr)},
                {"status", hud.status ? json(*hud.status) : json(nullptr)}};

  if (auto alert = currentAlert()) {
    json actions = json::array();
    for (const auto& a : alert->actions()) actions.push_back(a.title);
    out["alert"] = {{"title", alert->alertTitle() ? json(*alert->alertTitle()) : json(nullptr)},
                    {"message", alert->message() ? json(*alert->message()) : json(nullptr)},
                    {"actions", actions}};
  } else {
    out["alert"] = nullptr;
  }
  auto entries = popupMenuEntries();
  out["menu"] = entries.empty() ? json(nullptr) : json{{"entries", entries}};
  if (auto sheet = currentSheet()) {
    out["sheet"] = {{"items", sheet->itemDescriptions()}};
    // Only a platform with activities lists them: the sim's sheet reads as it always has.
    if (auto activities = sheet->activityNames(); !activities.empty()) out["sheet"]["activities"] = activities;
  } else {
    out["sheet"] = nullptr;
  }
  if (auto picker = currentPicker()) {
    auto source = DocumentPickerSource::current();
    out["picker"] = {{"documentTypes", picker->documentTypes()},
                     {"mode", static_cast<int>(picker->documentPickerMode())},
                     {"offered", source ? source->offeredNames() : std::vector<std::string>{}}};
  } else {
    out["picker"] = nullptr;
  }
  json opened = json::array();
  for (const auto& url : UIApplication::sharedApplication().openedURLs()) opened.push_back(url.absoluteString());
  out["opened"] = opened;
  if (const auto& ad = FullScreenAdStage::shared().showing()) {
    out["ad"] = {{"network", ad->network}, {"format", ad->format}, {"adUnit", ad->adUnit}};
  } else {
    out["ad"] = nullptr;
  }
  const auto& notice = UserNotice::current();
  out["notice"] = notice ? json(*notice) : json(nullptr);
  return out;
}

}  // namespace nimbrel
