#include "app/ads/AppLovinNativeAdManual.h"

#include "app/ads/AdLog.h"
#include "app/ads/AppLovinAdId.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/SharedInstance.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UINib.h"

namespace nimbrel {

std::shared_ptr<AppLovinNativeAdManual> AppLovinNativeAdManual::shared() {
  return SharedInstance<AppLovinNativeAdManual>::get();
}

void AppLovinNativeAdManual::load(const std::string& adUnit,
                                  std::function<void(const MAAd&)> done) {
  completion = std::move(done);
  nativeAdLoader = std::make_shared<MANativeAdLoader>(adUnit);
  nativeAdLoader->setNativeAdDelegate(
      std::shared_ptr<MANativeAdDelegate>(strongSelf<AppLovinNativeAdManual>()));
  nativeAdLoader->loadAd();
}

void AppLovinNativeAdManual::render(size_t layoutIndex, const MAAd& ad,
                                    const std::shared_ptr<UIView>& host) {
  if (!host) return;
  host->setHidden(false);
  constexpr const char* kFile = "Nimbrel/AppLovinNativeAdManual";
  auto nib = UINib::nibWithNibName("AppLovinNativeAdView");
  if (!nib) fatalError("Could not load NIB in bundle: 'AppLovinNativeAdView'", kFile, 88);
  auto objects = nib->instantiateWithOwner(nullptr);
  if (layoutIndex >= objects.size()) fatalError("Index out of range", kFile, 89);
  auto view = std::dynamic_pointer_cast<MANativeAdView>(objects[layoutIndex]);
  if (!view) fatalError("Could not cast value to 'MANativeAdView'", kFile, 89);
  MANativeAdViewBinder binder;
  binder.titleLabelTag = 101;
  binder.bodyLabelTag = 102;
  binder.callToActionButtonTag = 103;
  binder.iconImageViewTag = 104;
  binder.mediaContentViewTag = 105;
  view->bindViewsWithAdViewBinder(binder);
  maNativeAdView = view;
  if (!nativeAdLoader) {
    fatalError("Unexpectedly found nil while unwrapping an Optional value", kFile, 104);
  }
  nativeAdLoader->renderNativeAdView(view, ad);
  host->addSubview(view);
  view->setTranslatesAutoresizingMaskIntoConstraints(false);
  for (auto attribute : {NSLayoutAttribute::width, NSLayoutAttribute::height,
                         NSLayoutAttribute::centerX, NSLayoutAttribute::centerY}) {
    host->addConstraint(std::make_shared<NSLayoutConstraint>(host, attribute, view, attribute, 1.0, 0.0));
  }
  view->setFrame(host->bounds());
}

void AppLovinNativeAdManual::didLoadNativeAd(const std::shared_ptr<MANativeAdView>&, const MAAd& ad) {
  debugPrintLine("didLoadNativeAd(_:for:)");
  if (completion) completion(ad);
}

void AppLovinNativeAdManual::didFailToLoadNativeAdForAdUnitIdentifier(const std::string&,
                                                                      const MAError&) {
  debugPrintLine("didFailToLoadNativeAd(forAdUnitIdentifier:withError:)");
}

void AppLovinNativeAdManual::didClickNativeAd(const MAAd&) {
  debugPrintLine("didClickNativeAd(_:)");
}

void loadScreenNativeAd(const std::shared_ptr<AppLovinNativeAdManual>& placement,
                        std::weak_ptr<NSObject> screen, std::weak_ptr<UIView> host) {
  std::weak_ptr<AppLovinNativeAdManual> weakPlacement = placement;
  placement->load(AppLovinAdId::nativeAdUnit, [screen, host, weakPlacement](const MAAd& ad) {
    auto alive = screen.lock();
    auto p = weakPlacement.lock();
    if (!alive || !p) return;
    p->render(2, ad, host.lock());
  });
}

}  // namespace nimbrel
