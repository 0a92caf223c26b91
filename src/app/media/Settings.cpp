#include "app/media/Settings.h"

#include <limits>

#include "platform/uikit/UIView.h"

namespace nimbrel {

namespace {

template <class T>
std::function<std::shared_ptr<T>()> makeShared() {
  return [] { return std::make_shared<T>(); };
}

}  // namespace

Settings::Theme::Theme()
    : backgroundColor_([] { return UIColor::whiteColor(); }),
      selectionFillColor_([] { return UIView().tintColor().value_or(UIColor::systemBlueColor()); }),
      selectionStrokeColor_([] { return UIColor::whiteColor(); }),
      selectionShadowColor_([] { return UIColor::blackColor(); }) {}

UIColor Settings::Theme::backgroundColor() { return backgroundColor_.get(); }
void Settings::Theme::setBackgroundColor(UIColor color) { backgroundColor_.set(color); }
UIColor Settings::Theme::selectionFillColor() { return selectionFillColor_.get(); }
void Settings::Theme::setSelectionFillColor(UIColor color) { selectionFillColor_.set(color); }
UIColor Settings::Theme::selectionStrokeColor() { return selectionStrokeColor_.get(); }
void Settings::Theme::setSelectionStrokeColor(UIColor color) { selectionStrokeColor_.set(color); }
UIColor Settings::Theme::selectionShadowColor() { return selectionShadowColor_.get(); }
void Settings::Theme::setSelectionShadowColor(UIColor color) { selectionShadowColor_.set(color); }

Settings::Selection::Selection()
    : max_([] { return std::numeric_limits<std::int64_t>::max(); }), min_([] { return std::int64_t{1}; }) {}

std::int64_t Settings::Selection::max() { return max_.get(); }
void Settings::Selection::setMax(std::int64_t value) { max_.set(value); }
std::int64_t Settings::Selection::min() { return min_.get(); }
void Settings::Selection::setMin(std::int64_t value) { min_.set(value); }

Settings::List::List()
    : spacing_([] { return CGFloat{2.0}; }),
      cellsPerRow_([] {
        return CellsPerRow([](UIUserInterfaceSizeClass vertical, UIUserInterfaceSizeClass horizontal) {
          using enum UIUserInterfaceSizeClass;
          if (vertical == regular && horizontal == regular) return 7;
          if (vertical == compact && horizontal == compact) return 5;
          return 3;
        });
      }) {}

CGFloat Settings::List::spacing() { return spacing_.get(); }
void Settings::List::setSpacing(CGFloat value) { spacing_.set(value); }
Settings::List::CellsPerRow Settings::List::cellsPerRow() { return cellsPerRow_.get(); }
void Settings::List::setCellsPerRow(CellsPerRow closure) { cellsPerRow_.set(std::move(closure)); }

Settings::Fetch::Preview::Preview()
    : photoOptions_([] {
        auto options = std::make_shared<PHImageRequestOptions>();
        options->networkAccessAllowed = true;
        return options;
      }),
      livePhotoOptions_([] {
        auto options = std::make_shared<PHLivePhotoRequestOptions>();
        options->networkAccessAllowed = true;
        return options;
      }),
      videoOptions_([] {
        auto options = std::make_shared<PHVideoRequestOptions>();
        options->networkAccessAllowed = true;
        return options;
      }) {}

std::shared_ptr<PHImageRequestOptions> Settings::Fetch::Preview::photoOptions() { return photoOptions_.get(); }
void Settings::Fetch::Preview::setPhotoOptions(std::shared_ptr<PHImageRequestOptions> options) {
  photoOptions_.set(std::move(options));
}
std::shared_ptr<PHLivePhotoRequestOptions> Settings::Fetch::Preview::livePhotoOptions() {
  return livePhotoOptions_.get();
}
void Settings::Fetch::Preview::setLivePhotoOptions(std::shared_ptr<PHLivePhotoRequestOptions> options) {
  livePhotoOptions_.set(std::move(options));
}
std::shared_ptr<PHVideoRequestOptions> Settings::Fetch::Preview::videoOptions() { return videoOptions_.get(); }
void Settings::Fetch::Preview::setVideoOptions(std::shared_ptr<PHVideoRequestOptions> options) {
  videoOptions_.set(std::move(options));
}

Settings::Fetch::Fetch() : album_(makeShared<Album>()), assets_(makeShared<Assets>()), preview_(makeShared<Preview>()) {}

std::shared_ptr<Settings::Fetch::Album> Settings::Fetch::album() { return album_.get(); }
void Settings::Fetch::setAlbum(std::shared_ptr<Album> album) { album_.set(std::move(album)); }
std::shared_ptr<Settings::Fetch::Assets> Settings::Fetch::assets() { return assets_.get(); }
void Settings::Fetch::setAssets(std::shared_ptr<Assets> assets) { assets_.set(std::move(assets)); }
std::shared_ptr<Settings::Fetch::Preview> Settings::Fetch::preview() { return preview_.get(); }
void Settings::Fetch::setPreview(std::shared_ptr<Preview> preview) { preview_.set(std::move(preview)); }

Settings::Dismiss::Dismiss() : enabled_([] { return true; }) {}
bool Settings::Dismiss::enabled() { return enabled_.get(); }
void Settings::Dismiss::setEnabled(bool value) { enabled_.set(value); }

Settings::Preview::Preview() : enabled_([] { return true; }) {}
bool Settings::Preview::enabled() { return enabled_.get(); }
void Settings::Preview::setEnabled(bool value) { enabled_.set(value); }

Settings::Settings()
    : theme_(makeShared<Theme>()),
      selection_(makeShared<Selection>()),
      list_(makeShared<List>()),
      fetch_(makeShared<Fetch>()),
      dismiss_(makeShared<Dismiss>()),
      preview_(makeShared<Preview>()) {}

std::shared_ptr<Settings::Theme> Settings::theme() { return theme_.get(); }
void Settings::setTheme(std::shared_ptr<Theme> theme) { theme_.set(std::move(theme)); }
std::shared_ptr<Settings::Selection> Settings::selection() { return selection_.get(); }
void Settings::setSelection(std::shared_ptr<Selection> selection) { selection_.set(std::move(selection)); }
std::shared_ptr<Settings::List> Settings::list() { return list_.get(); }
void Settings::setList(std::shared_ptr<List> list) { list_.set(std::move(list)); }
std::shared_ptr<Settings::Fetch> Settings::fetch() { return fetch_.get(); }
void Settings::setFetch(std::shared_ptr<Fetch> fetch) { fetch_.set(std::move(fetch)); }
std::shared_ptr<Settings::Dismiss> Settings::dismiss() { return dismiss_.get(); }
void Settings::setDismiss(std::shared_ptr<Dismiss> dismiss) { dismiss_.set(std::move(dismiss)); }
std::shared_ptr<Settings::Preview> Settings::preview() { return preview_.get(); }
void Settings::setPreview(std::shared_ptr<Preview> preview) { preview_.set(std::move(preview)); }

}  // namespace nimbrel
