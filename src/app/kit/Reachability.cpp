#include "app/kit/Reachability.h"

#include <memory>

#include "platform/foundation/FatalError.h"
#include "platform/services/NetworkReachability.h"
#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"

namespace nimbrel {

bool Reachability::isConnected() {
  auto flags = NetworkReachability::current()->flags();
  if (!flags || *flags == 0) return false;
  bool reachable = (*flags & NetworkReachability::reachable) != 0;
  bool needsConnection = (*flags & NetworkReachability::connectionRequired) != 0;
  return reachable && !needsConnection;
}

void Reachability::showNoConnectionAlert() {
  auto alert = std::make_shared<UIAlertController>("Alert!", "Please connet to internet",
                                                   UIAlertControllerStyle::alert);
  alert->addAction({"OK", UIAlertActionStyle::defaultStyle, nullptr});
  auto window = UIApplication::sharedApplication().keyWindow();
  if (!window) fatalError("Unexpectedly found nil while unwrapping an Optional value");
  if (auto root = window->rootViewController()) root->presentViewController(alert, true, nullptr);
}

}  // namespace nimbrel
