#include "ui/frame_dialog.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>

#include "port/user_interface.h"
#include "shell/main_dialog.h"
#include "store/config_file.h"
#include "ui/labels.h"

namespace quorva::gui {

FrameDialog::FrameDialog(std::string window_name, QWidget* parent)
    : QDialog(parent), window_name_(std::move(window_name)) {}

void FrameDialog::restore_position() {
  const std::optional<WindowPosition> kept = read_window_position(window_name_);
  if (!kept) return;
  // A screen unplugged since would put the dialog where nobody can reach it.
  const QPoint corner(kept->x, kept->y);
  if (!QGuiApplication::screenAt(corner)) return;
  move(corner);
}

void FrameDialog::save_position() const {
  const QPoint corner = frameGeometry().topLeft();
  // A full disk costs only the place: the dialog still closes.
  (void)save_window_position(window_name_, {corner.x(), corner.y()});
}

void FrameDialog::done(int result) {
  save_position();
  QDialog::done(result);
}

void FrameDialog::showEvent(QShowEvent* event) {
  if (!restored_) {
    restored_ = true;
    restore_position();
  }
  QDialog::showEvent(event);
}

QPushButton* FrameDialog::make_help_button(const QString& label) {
  auto* button = new QPushButton(label, this);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [] { open_advanced_help(); });
  return button;
}

FrameDialog::OkCancelRow FrameDialog::make_ok_cancel_row(std::initializer_list<QWidget*> left,
                                                         std::function<void()> on_ok) {
  OkCancelRow row{new QHBoxLayout, new QPushButton(text(Label::kOk), this),
                  new QPushButton(text(Label::kCancel), this)};
  row.ok->setDefault(true);
  row.cancel->setAutoDefault(false);
  connect(row.ok, &QPushButton::clicked, this, std::move(on_ok));
  connect(row.cancel, &QPushButton::clicked, this, [this] { reject(); });
  row.layout->addWidget(make_help_button(text(Label::kAdvancedHelp)));
  for (QWidget* widget : left) {
    if (auto* button = qobject_cast<QPushButton*>(widget)) button->setAutoDefault(false);
    row.layout->addWidget(widget);
  }
  row.layout->addStretch();
  row.layout->addWidget(row.ok);
  row.layout->addWidget(row.cancel);
  return row;
}

void open_advanced_help() {
  Result<std::string> help = advanced_help_file();
  if (help) ui().open_file(*help);
}

}  // namespace quorva::gui
