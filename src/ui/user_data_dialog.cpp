#include "ui/user_data_dialog.h"

#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/advanced_options_dialog.h"
#include "ui/labels.h"
#include "ui/qt_text.h"

namespace quorva::gui {
namespace {

QGroupBox* group(Label title, QWidget* parent) {
  return new QGroupBox(text(title), parent);
}

}  // namespace

UserDataDialog::UserDataDialog(QWidget* parent)
    : FrameDialog("WindowFtpData", parent), panel_(UserDataPanel::open()) {
  setWindowTitle(text(Label::kUserDataButton));
  for (QLineEdit*& edit : fields_) edit = new QLineEdit(this);
  fields_[kPassword]->setEchoMode(QLineEdit::Password);
  show_data();
  for (int f = 0; f < kFieldCount; ++f) {
    // Each rule runs when the person leaves the field, as the panel asks.
    connect(fields_[f], &QLineEdit::editingFinished, this, [this, f] {
      if (!fields_[f]->isModified()) return;
      fields_[f]->setModified(false);
      apply(static_cast<Field>(f));
    });
  }

  auto* host = group(Label::kHostGroup, this);
  auto* host_form = new QFormLayout(host);
  host_form->addRow(text(Label::kIpAddress), fields_[kIp]);
  host_form->addRow(text(Label::kTsoUser), fields_[kUser]);
  host_form->addRow(text(Label::kPassword), fields_[kPassword]);

  auto* library = group(Label::kLibraryGroup, this);
  (new QVBoxLayout(library))->addWidget(fields_[kLibrary]);

  auto* folder = group(Label::kFolderGroup, this);
  auto* folder_row = new QHBoxLayout(folder);
  auto* browse = new QPushButton(text(Label::kBrowse), this);
  browse->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, this, [this] {
    const QString chosen = QFileDialog::getExistingDirectory(this, text(Label::kChooseArchive),
                                                             fields_[kFolder]->text());
    if (chosen.isEmpty()) return;
    fields_[kFolder]->setText(chosen);
    apply(kFolder);
  });
  folder_row->addWidget(fields_[kFolder], 1);
  folder_row->addWidget(browse);

  auto* person = group(Label::kNameGroup, this);
  auto* person_form = new QFormLayout(person);
  person_form->addRow(text(Label::kName), fields_[kName]);
  person_form->addRow(text(Label::kCompany), fields_[kCompany]);

  auto* save_button = new QPushButton(text(Label::kSaveConfiguration), this);
  auto* cancel = new QPushButton(text(Label::kCancelUpper), this);
  auto* advanced = new QPushButton(text(Label::kAdvancedOptions), this);
  save_button->setDefault(true);
  cancel->setAutoDefault(false);
  advanced->setAutoDefault(false);
  connect(save_button, &QPushButton::clicked, this, &UserDataDialog::save);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(advanced, &QPushButton::clicked, this, &UserDataDialog::open_advanced_options);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(advanced);
  buttons->addWidget(make_help_button(text(Label::kAdvancedHelp)));
  buttons->addStretch();
  buttons->addWidget(save_button);
  buttons->addWidget(cancel);

  auto* layout = new QVBoxLayout(this);
  for (QWidget* box : {static_cast<QWidget*>(host), static_cast<QWidget*>(library),
                       static_cast<QWidget*>(folder), static_cast<QWidget*>(person)})
    layout->addWidget(box);
  layout->addLayout(buttons);
  resize(560, sizeHint().height());
}

void UserDataDialog::show_data() {
  const UserData& data = panel_.data();
  const std::string* values[kFieldCount] = {
      &data.ipaddress,       &data.tsouser,     &data.pswtso, &data.tsolibrary,
      &data.sourcedirectory, &data.nomecognome, &data.societa};
  for (int f = 0; f < kFieldCount; ++f) {
    fields_[f]->setText(to_qt(*values[f]));
    fields_[f]->setModified(false);
  }
}

bool UserDataDialog::apply(Field which) {
  const std::optional<std::string> typed = from_qt(fields_[which]->text());
  if (!typed) return false;
  take(which, *typed);
  if (which == kFolder) panel_.check_source_directory();
  show_data();
  return true;
}

void UserDataDialog::take(Field which, const std::string& typed) {
  switch (which) {
    case kIp:
      panel_.set_ip_address(typed);
      break;
    case kUser:
      panel_.set_tso_user(typed);
      break;
    case kPassword:
      panel_.set_password(typed);
      break;
    case kLibrary:
      panel_.set_library(typed);
      break;
    case kFolder:
      panel_.set_source_directory(typed);
      break;
    case kName:
      panel_.set_name(typed);
      break;
    case kCompany:
      panel_.set_company(typed);
      break;
    case kFieldCount:
      break;
  }
}

void UserDataDialog::save() {
  // Every text is taken before any is shown again; the folder's check is the save's own.
  std::optional<std::string> typed[kFieldCount];
  for (int f = 0; f < kFieldCount; ++f) {
    if (!fields_[f]->isModified() && f != kFolder) continue;
    typed[f] = from_qt(fields_[f]->text());
    if (!typed[f]) return;
  }
  for (int f = 0; f < kFieldCount; ++f)
    if (typed[f]) take(static_cast<Field>(f), *typed[f]);
  const Status saved = panel_.save();
  show_data();
  if (saved) accept();
}

void UserDataDialog::open_advanced_options() {
  AdvancedOptionsDialog options(this);
  options.exec();
}

}  // namespace quorva::gui
