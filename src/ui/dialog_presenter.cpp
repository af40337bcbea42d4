#include "ui/dialog_presenter.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QMessageBox>
#include <QUrl>

#include "ui/error_popup.h"
#include "ui/qt_text.h"

namespace quorva::gui {

QWidget* DialogPresenter::parent() const {
  if (QWidget* active = QApplication::activeModalWidget()) return active;
  if (parent_) return parent_;
  return QApplication::activeWindow();
}

void DialogPresenter::show_message(const std::string& text) {
  ErrorPopup popup(to_qt(text), parent());
  popup.exec();
}

bool DialogPresenter::ask_yes_no(const std::string& title, const std::string& text) {
  return QMessageBox::question(parent(), to_qt(title), to_qt(text),
                               QMessageBox::Yes | QMessageBox::No,
                               QMessageBox::No) == QMessageBox::Yes;
}

void DialogPresenter::open_file(const std::string& path) {
  // Relative names are the working folder's; the desktop needs the whole path.
  QDesktopServices::openUrl(QUrl::fromLocalFile(QDir::current().absoluteFilePath(to_qt(path))));
}

}  // namespace quorva::gui
