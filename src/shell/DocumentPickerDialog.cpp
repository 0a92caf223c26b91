#include "shell/DocumentPickerDialog.h"

#include <QFileDialog>
#include <QStandardPaths>

#include "platform/uikit/UIDocumentPickerViewController.h"

namespace nimbrel::shell {

DocumentPickerDialog::~DocumentPickerDialog() {
  if (dialog_) dialog_->deleteLater();
}

void DocumentPickerDialog::follow(const std::shared_ptr<UIDocumentPickerViewController>& picker) {
  if (picker == picker_.lock()) return;
  if (dialog_) {
    // The picker went away without the dialog: close it without answering.
    QFileDialog* old = dialog_;
    dialog_ = nullptr;
    old->disconnect(this);
    old->close();
  }
  picker_ = picker;
  if (!picker) return;
  auto* dialog = new QFileDialog(nullptr, QStringLiteral("Import a document"),
                                 QStandardPaths::writableLocation(QStandardPaths::HomeLocation));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::ExistingFile);
  dialog->setAcceptMode(QFileDialog::AcceptOpen);
  connect(dialog, &QFileDialog::fileSelected, this, &DocumentPickerDialog::answer);
  connect(dialog, &QFileDialog::rejected, this, [this] { answer(QString()); });
  dialog_ = dialog;
  dialog->open();
}

void DocumentPickerDialog::answer(const QString& path) {
  auto picker = picker_.lock();
  dialog_ = nullptr;
  if (!picker) return;
  // The move into the documents folder follows in the screen; on another volume it is a copy,
  // and the original is removed only once the copy is whole.
  if (path.isEmpty()) {
    picker->cancel();
  } else {
    picker->pick(URL::fileURLWithPath(path.toStdString()));
  }
}

}  // namespace nimbrel::shell
