#include "ui/error_popup.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "ui/labels.h"

namespace quorva::gui {

ErrorPopup::ErrorPopup(const QString& message, QWidget* parent)
    : FrameDialog("WindowErrorPopups", parent) {
  setWindowTitle(text(Label::kWarningTitle));
  auto* icon = new QLabel(this);
  icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(32, 32));
  auto* body = new QLabel(message, this);
  body->setTextInteractionFlags(Qt::TextSelectableByMouse);
  body->setWordWrap(message.size() > 120 && !message.contains('\t'));
  auto* top = new QHBoxLayout;
  top->addWidget(icon, 0, Qt::AlignTop);
  top->addWidget(body, 1);
  auto* ok = new QPushButton(text(Label::kOk), this);
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(make_help_button(text(Label::kAdvancedHelp)));
  buttons->addStretch();
  buttons->addWidget(ok);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addLayout(buttons);
}

}  // namespace quorva::gui
