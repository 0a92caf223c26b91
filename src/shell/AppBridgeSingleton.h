#pragma once

#include <QObject>
#include <QtQml/qqml.h>

#include "shell/AppBridge.h"

class QQmlEngine;
class QJSEngine;

namespace nimbrel::shell {

// Gives QML the bridge main made, as the singleton `AppBridge`. Registered through this foreign
// type because, for a type that can be built without arguments, the engine would build a second
// bridge of its own rather than ask a factory on the type itself.
struct AppBridgeSingleton {
  Q_GADGET
  QML_FOREIGN(nimbrel::shell::AppBridge)
  QML_NAMED_ELEMENT(AppBridge)
  QML_SINGLETON

 public:
  static AppBridge* create(QQmlEngine*, QJSEngine*);
};

}  // namespace nimbrel::shell
