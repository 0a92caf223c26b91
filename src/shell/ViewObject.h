#pragma once

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <vector>

#include "platform/foundation/ChangeSignal.h"
#include "platform/foundation/NSObject.h"

namespace nimbrel::shell {

class CollectionModel;
class PlayerObject;

// One outlet of a screen as QML sees it: notifying properties read from the view object, a press
// that sends the control's wired actions, and the layout facts that flow back (size, scroll).
class ViewObject : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the screens")
  Q_PROPERTY(bool valid READ valid CONSTANT)
  Q_PROPERTY(QString type READ type NOTIFY changed)
  Q_PROPERTY(bool hidden READ hidden NOTIFY changed)
  Q_PROPERTY(double alpha READ alpha NOTIFY changed)
  Q_PROPERTY(QString text READ text NOTIFY changed)
  Q_PROPERTY(QColor textColor READ textColor NOTIFY changed)
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QColor titleColor READ titleColor NOTIFY changed)
  Q_PROPERTY(QString image READ image NOTIFY changed)
  Q_PROPERTY(bool selected READ selected NOTIFY changed)
  Q_PROPERTY(bool enabled READ enabled NOTIFY changed)
  Q_PROPERTY(double constant READ constant NOTIFY changed)
  Q_PROPERTY(double fontSize READ fontSize NOTIFY changed)
  Q_PROPERTY(bool bold READ bold NOTIFY changed)
  Q_PROPERTY(double contentY READ contentY NOTIFY changed)
  Q_PROPERTY(int tag READ tag NOTIFY changed)
  Q_PROPERTY(QVariantList nativeAds READ nativeAds NOTIFY changed)
  Q_PROPERTY(QVariantMap state READ state NOTIFY changed)
  // A slider's position and bounds.
  Q_PROPERTY(double value READ value NOTIFY changed)
  Q_PROPERTY(double minimum READ minimum NOTIFY changed)
  Q_PROPERTY(double maximum READ maximum NOTIFY changed)
  Q_PROPERTY(double borderWidth READ borderWidth NOTIFY changed)
  Q_PROPERTY(QColor borderColor READ borderColor NOTIFY changed)
  Q_PROPERTY(nimbrel::shell::CollectionModel* model READ model CONSTANT)
  // The player of a player view (null without one).
  Q_PROPERTY(nimbrel::shell::PlayerObject* player READ player NOTIFY changed)

 public:
  explicit ViewObject(std::shared_ptr<NSObject> object, QObject* parent = nullptr);
  ~ViewObject() override;

  bool valid() const { return object_ != nullptr; }
  QString type() const { return state_.value("type").toString(); }
  bool hidden() const { return !object_ || state_.value("hidden").toBool(); }
  double alpha() const { return state_.value("alpha", 1.0).toDouble(); }
  QString text() const { return state_.value("text").toString(); }
  QColor textColor() const { return state_.value("textColor", QColor(Qt::black)).value<QColor>(); }
  QString title() const { return state_.value("title").toString(); }
  QColor titleColor() const;
  QString image() const { return state_.value("image").toString(); }
  bool selected() const { return state_.value("selected").toBool(); }
  bool enabled() const { return state_.value("enabled", true).toBool(); }
  double constant() const { return state_.value("constant").toDouble(); }
  double fontSize() const { return state_.value("fontSize", 17.0).toDouble(); }
  bool bold() const { return state_.value("bold").toBool(); }
  double contentY() const { return state_.value("contentY").toDouble(); }
  int tag() const { return state_.value("tag").toInt(); }
  QVariantList nativeAds() const { return state_.value("nativeAds").toList(); }
  QVariantMap state() const { return state_; }
  double value() const { return state_.value("value").toDouble(); }
  double minimum() const { return state_.value("minimum").toDouble(); }
  double maximum() const { return state_.value("maximum", 1.0).toDouble(); }
  double borderWidth() const { return state_.value("borderWidth").toDouble(); }
  QColor borderColor() const { return state_.value("borderColor", QColor(Qt::transparent)).value<QColor>(); }
  CollectionModel* model();
  PlayerObject* player();

  // A person lifts a finger inside the control: its wired touch-up-inside actions run.
  Q_INVOKABLE bool press();
  // A person moved the slider to `value`: it takes the value (held within its bounds) and sends
  // its wired value-changed actions.
  Q_INVOKABLE bool slide(double value);
  // The content moved to `y` (a person's scroll), as the scroll view's offset.
  Q_INVOKABLE void setContentY(double y);
  // The size the shell gave the view; collections lay out again for it.
  Q_INVOKABLE void setViewSize(double width, double height);
  // A person's tap on the recogniser's view at (x, y) in that view's coordinates: the recogniser
  // recognises there (one waiting for another's failure decides later, on the platform's clock).
  Q_INVOKABLE bool recognize(double x, double y);
  // A pinch or ctrl+wheel on a scroll view: the zoom goes to `scale` (the scroll view keeps it in
  // its limits) and the content point under (anchorX, anchorY), in the scroll view's visible
  // coordinates, stays under it.
  Q_INVOKABLE void zoomAt(double scale, double anchorX, double anchorY);
  // A drag on a scroll view: the content goes to (x, y), held in the range the scroll view allows.
  Q_INVOKABLE void scrollTo(double x, double y);

  const std::shared_ptr<NSObject>& object() const { return object_; }
  // Reads the view again; emits `changed` when what a person sees differs.
  void refresh();

 Q_SIGNALS:
  void changed();

 private:
  std::shared_ptr<NSObject> object_;
  QVariantMap state_;
  std::vector<std::pair<ChangeSignal*, ChangeSignal::Token>> observed_;
  QPointer<CollectionModel> model_;
  QPointer<PlayerObject> player_;
};

}  // namespace nimbrel::shell
