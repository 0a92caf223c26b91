#include "shell/AppBridgeSingleton.h"

#include <QJSEngine>

#include "platform/foundation/FatalError.h"

namespace nimbrel::shell {

AppBridge* AppBridgeSingleton::create(QQmlEngine*, QJSEngine*) {
  AppBridge* bridge = AppBridge::instance();
  if (!bridge) fatalError("QML asked for the bridge before main made it");
  // The engine must not take the bridge: main owns it.
  QJSEngine::setObjectOwnership(bridge, QJSEngine::CppOwnership);
  return bridge;
}

}  // namespace nimbrel::shell
