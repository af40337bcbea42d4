#include "ui/advanced_options_dialog.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "ui/labels.h"
#include "ui/qt_text.h"

namespace quorva::gui {
namespace {

QLabel* warning_label(const std::string& warning, QWidget* parent) {
  auto* label = new QLabel(to_qt(warning), parent);
  label->setWordWrap(true);
  label->setStyleSheet("color: #a00000; font-weight: bold;");
  return label;
}

QPushButton* small_button(Label label, QWidget* parent) {
  auto* button = new QPushButton(text(label), parent);
  button->setAutoDefault(false);
  return button;
}

}  // namespace

AdvancedOptionsDialog::AdvancedOptionsDialog(QWidget* parent)
    : FrameDialog("WindowAdvancedOpt", parent), options_(AdvancedOptions::open()) {
  setWindowTitle(text(Label::kAdvancedOptions));
  pages_ = new QTabWidget(this);
  pages_->addTab(main_page(), text(Label::kMainOptions));
  pages_->addTab(ftp_page(), text(Label::kFtpOptions));
  pages_->addTab(db2_page(), text(Label::kDetailDb2));
  show_options();

  auto* ok = new QPushButton(text(Label::kOk), this);
  auto* cancel = small_button(Label::kCancel, this);
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &AdvancedOptionsDialog::apply);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(make_help_button(text(Label::kHelpSpaced)));
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(pages_);
  layout->addLayout(buttons);
  resize(680, sizeHint().height());
}

QWidget* AdvancedOptionsDialog::main_page() {
  auto* page = new QWidget(this);
  auto* grid = new QGridLayout(page);
  int row = 0;
  auto number = [&](Label label, QLineEdit*& edit, void (AdvancedOptions::*reset)()) {
    edit = new QLineEdit(page);
    edit->setMaximumWidth(80);
    auto* reset_button = small_button(Label::kDefault, page);
    connect(reset_button, &QPushButton::clicked, this, [this, reset] {
      take_fields();
      (options_.*reset)();
      show_options();
    });
    auto* caption = new QLabel(text(label), page);
    caption->setWordWrap(true);
    grid->addWidget(caption, row, 0);
    grid->addWidget(edit, row, 1);
    grid->addWidget(reset_button, row, 2);
    ++row;
  };
  number(Label::kDescrBreak, descr_, &AdvancedOptions::default_descr_break_point);
  number(Label::kEasytrieveBreak, easytrieve_, &AdvancedOptions::default_easytrieve_break_point);
  number(Label::kCobolBreak, cobol_, &AdvancedOptions::default_cobol_break_point);
  tips_ = new QCheckBox(text(Label::kTips), page);
  grid->addWidget(tips_, row++, 0, 1, 3);
  decimal_comma_ = new QCheckBox(text(Label::kDecimalComma), page);
  grid->addWidget(decimal_comma_, row++, 0, 1, 3);

  auto* caption = new QLabel(text(Label::kAlternativeTemplate), page);
  caption->setWordWrap(true);
  grid->addWidget(caption, row++, 0, 1, 3);
  template_ = new QLineEdit(page);
  auto* choose = small_button(Label::kChooseTemplate, page);
  auto* reset = small_button(Label::kDefault, page);
  auto* edit = small_button(Label::kEditQuormem, page);
  connect(choose, &QPushButton::clicked, this, [this] {
    const QString path = QFileDialog::getOpenFileName(this, text(Label::kAlternativeTemplate),
                                                      QDir::current().absoluteFilePath("Resource"),
                                                      text(Label::kQuormemFilter));
    if (!path.isEmpty()) choose_template(path);
  });
  connect(reset, &QPushButton::clicked, this, [this] {
    take_fields();
    options_.default_alternative_template();
    show_options();
  });
  connect(edit, &QPushButton::clicked, this, [this] {
    take_fields();
    options_.edit_current_template();
  });
  auto* template_row = new QHBoxLayout;
  template_row->addWidget(template_, 1);
  template_row->addWidget(choose);
  template_row->addWidget(reset);
  grid->addLayout(template_row, row++, 0, 1, 3);
  grid->addWidget(edit, row++, 0, 1, 1, Qt::AlignLeft);
  grid->addWidget(warning_label(AdvancedOptions::main_page_warning(), page), row++, 0, 1, 3);
  grid->setRowStretch(row, 1);
  grid->setColumnStretch(0, 1);
  return page;
}

QWidget* AdvancedOptionsDialog::ftp_page() {
  auto* page = new QWidget(this);
  auto* layout = new QVBoxLayout(page);
  password_alert_ = new QCheckBox(text(Label::kPasswordAlert), page);
  connect(password_alert_, &QCheckBox::clicked, this, [this](bool on) {
    // Turning it on records this month; a clock that cannot be read changes nothing.
    if (!options_.set_password_alert(on, current_month())) password_alert_->setChecked(!on);
  });
  layout->addWidget(password_alert_);
  auto* form = new QFormLayout;
  for (const auto& [key, value] : options_.host) {
    auto* edit = new QLineEdit(page);
    host_[key] = edit;
    form->addRow(to_qt(key) + " :", edit);
  }
  layout->addLayout(form);
  layout->addWidget(warning_label(AdvancedOptions::ftp_page_warning(), page));
  layout->addStretch();
  return page;
}

QWidget* AdvancedOptionsDialog::db2_page() {
  auto* page = new QWidget(this);
  auto* layout = new QVBoxLayout(page);
  save_descr_ = new QCheckBox(text(Label::kSaveDescr), page);
  compression_ = new QCheckBox(text(Label::kCompression), page);
  layout->addWidget(save_descr_);
  layout->addWidget(compression_);
  layout->addStretch();
  return page;
}

void AdvancedOptionsDialog::show_options() {
  descr_->setText(to_qt(options_.descr_break_point));
  easytrieve_->setText(to_qt(options_.easytrieve_break_point));
  cobol_->setText(to_qt(options_.cobol_break_point));
  template_->setText(to_qt(options_.alternative_template));
  tips_->setChecked(options_.tips_and_tricks);
  decimal_comma_->setChecked(options_.decimal_comma);
  password_alert_->setChecked(options_.password_alert);
  for (const auto& [key, value] : options_.host) host_[key]->setText(to_qt(value));
  save_descr_->setChecked(options_.save_descr_db2);
  compression_->setChecked(options_.cobol_vars_compression);
}

bool AdvancedOptionsDialog::take_fields() {
  const std::pair<QLineEdit*, std::string*> texts[] = {
      {descr_, &options_.descr_break_point},
      {easytrieve_, &options_.easytrieve_break_point},
      {cobol_, &options_.cobol_break_point},
      {template_, &options_.alternative_template}};
  for (const auto& [edit, value] : texts) {
    std::optional<std::string> typed = from_qt(edit->text());
    if (!typed) return false;
    *value = *typed;
  }
  for (auto& [key, value] : options_.host) {
    std::optional<std::string> typed = from_qt(host_[key]->text());
    if (!typed) return false;
    value = *typed;
  }
  options_.tips_and_tricks = tips_->isChecked();
  options_.decimal_comma = decimal_comma_->isChecked();
  options_.save_descr_db2 = save_descr_->isChecked();
  options_.cobol_vars_compression = compression_->isChecked();
  return true;
}

void AdvancedOptionsDialog::choose_template(const QString& path) {
  take_fields();
  const std::optional<std::string> chosen = from_qt(QDir::toNativeSeparators(path));
  if (chosen && options_.choose_template_file(*chosen)) show_options();
}

void AdvancedOptionsDialog::apply() {
  if (!take_fields()) return;
  const Result<bool> applied = options_.apply();
  show_options();
  if (applied) accept();
}

}  // namespace quorva::gui
