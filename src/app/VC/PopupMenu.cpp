#include "app/VC/PopupMenu.h"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include "platform/foundation/SharedInstance.h"
#include "platform/uikit/TextMeasurer.h"
#include "platform/uikit/UIButton.h"

namespace nimbrel {

namespace {

constexpr const char* kPressSelector = "didPress:";
constexpr const char* kDismissSelector = "dissmissViewAction";
constexpr double kRowHeight = 40;
constexpr double kMargin = 44;

struct PopupMenuState {
  std::shared_ptr<UIView> overlay = std::make_shared<UIView>();
  std::function<void(long)> handler;
  std::weak_ptr<UIButton> dismissButton;
  std::weak_ptr<UIView> menu;
  std::vector<std::weak_ptr<UIButton>> rows;
};

std::shared_ptr<PopupMenuState> state() {
  return SharedInstance<PopupMenuState>::get();
}

// Characters as a person counts them: extended grapheme clusters.
size_t characterCount(const std::string& utf8) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::BreakIterator> it(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  icu::UnicodeString text = icu::UnicodeString::fromUTF8(utf8);
  if (U_FAILURE(status)) return static_cast<size_t>(text.countChar32());
  it->setText(text);
  size_t count = 0;
  for (int32_t p = it->next(); p != icu::BreakIterator::DONE; p = it->next()) ++count;
  return count;
}

void close() {
  auto overlay = state()->overlay;
  auto subviews = overlay->subviews();
  for (const auto& v : subviews) v->removeFromSuperview();
  overlay->setHidden(true);
}

bool isShowing() {
  auto s = state();
  auto menu = s->menu.lock();
  return menu && menu->superview() == s->overlay && !s->overlay->isHidden() && s->overlay->superview();
}

void registerActions(UIViewController& controller) {
  controller.registerAction(kPressSelector, [](const std::shared_ptr<NSObject>& sender) {
    auto button = as<UIView>(sender);
    close();
    // A handler that opens another menu replaces the slot while it runs.
    auto handler = state()->handler;
    if (handler && button) handler(button->tag());
  });
  controller.registerAction(kDismissSelector, [](const std::shared_ptr<NSObject>&) { close(); });
}

}  // namespace

std::shared_ptr<UIView> popupMenuOverlay() {
  return state()->overlay;
}

void showPopupMenu(UIViewController& controller, const std::shared_ptr<UIView>& anchor,
                   const std::vector<std::string>& entries, bool belowAnchor, bool matchAnchorWidth,
                   std::function<void(long index)> handler) {
  auto s = state();
  s->handler = std::move(handler);
  registerActions(controller);
  auto target = controller.weakSelf<UIViewController>();
  auto view = controller.view();
  const CGSize viewSize = view->frame().size;

  const std::string* longest = nullptr;
  size_t longestCount = 0;
  for (const auto& entry : entries) {
    size_t count = characterCount(entry);
    if (!longest || count > longestCount) {
      longest = &entry;
      longestCount = count;
    }
  }
  double width = longest ? TextMeasurer::current().measure(*longest, UIFont::systemFontOfSize(18)).width : 0;
  if (viewSize.width <= width) width = viewSize.width - kMargin;
  if (matchAnchorWidth && anchor) width = anchor->frame().width();

  // A menu shown over another replaces it.
  close();
  auto overlay = s->overlay;
  overlay->setFrame(CGRectMake(-kMargin, -15, viewSize.width, viewSize.height));
  auto dismiss = std::make_shared<UIButton>(CGRectMake(0, 0, viewSize.width, viewSize.height));
  dismiss->setBackgroundColor(UIColor::clearColor());
  dismiss->addTarget(target, kDismissSelector, UIControlEvents::touchUpInside);
  overlay->addSubview(dismiss);
  s->dismissButton = dismiss;

  CGRect place = anchor ? anchor->convertRectToView(anchor->bounds(), view.get()) : CGRect{};
  auto menu = std::make_shared<UIView>(CGRectMake(place.maxX() - width,
                                                  belowAnchor ? place.maxY() : place.minY() + place.height() / 2,
                                                  width, kRowHeight * static_cast<double>(entries.size())));
  menu->updateLayer([](CALayer& layer) {
    layer.cornerRadius = 15;
    layer.shadowColor = UIColor::blackColor();
    layer.shadowOffset = {0, 0};
    layer.shadowOpacity = 0.2;
    layer.masksToBounds = false;
  });
  menu->setBackgroundColor(UIColor::whiteColor());

  s->rows.clear();
  for (size_t i = 0; i < entries.size(); ++i) {
    auto row = std::make_shared<UIButton>(
        CGRectMake(10, kRowHeight * static_cast<double>(i), width + 10, kRowHeight));
    row->setTitle(entries[i]);
    row->setTitleColor(UIColor::blackColor());
    row->setTitleFont(UIFont::systemFontOfSize(15));
    row->setContentHorizontalAlignment(UIControlContentHorizontalAlignment::left);
    row->setTag(static_cast<long>(i));
    row->addTarget(target, kPressSelector, UIControlEvents::touchUpInside);
    menu->addSubview(row);
    s->rows.push_back(row);
  }
  s->menu = menu;

  overlay->addSubview(menu);
  view->addSubview(overlay);
  overlay->setHidden(false);
}

std::vector<std::string> popupMenuEntries() {
  std::vector<std::string> out;
  if (!isShowing()) return out;
  for (const auto& weak : state()->rows) {
    if (auto row = weak.lock()) out.push_back(row->titleForState(UIControlState::normal).value_or(""));
  }
  return out;
}

bool pressPopupMenuEntry(long index) {
  auto s = state();
  if (!isShowing() || index < 0 || index >= static_cast<long>(s->rows.size())) return false;
  auto row = s->rows[static_cast<size_t>(index)].lock();
  if (!row) return false;
  row->sendActionsForControlEvents(UIControlEvents::touchUpInside);
  return true;
}

bool dismissPopupMenu() {
  if (!isShowing()) return false;
  auto button = state()->dismissButton.lock();
  if (!button) return false;
  button->sendActionsForControlEvents(UIControlEvents::touchUpInside);
  return true;
}

}  // namespace nimbrel
