#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class QFileDialog;
class UIDocumentPickerViewController;

namespace nimbrel::shell {

// The desktop's own file chooser in place of the system's document picker: opened when a picker
// is presented, it answers that picker with the chosen file or a cancel. It goes through the
// platform's native dialog, so through xdg-desktop-portal where one runs.
class DocumentPickerDialog : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;
  ~DocumentPickerDialog() override;
  // The picker on screen now (or none): a new one gets a dialog, a gone one closes its dialog.
  void follow(const std::shared_ptr<UIDocumentPickerViewController>& picker);

 private:
  void answer(const QString& path);

  std::weak_ptr<UIDocumentPickerViewController> picker_;
  QPointer<QFileDialog> dialog_;
};

}  // namespace nimbrel::shell
