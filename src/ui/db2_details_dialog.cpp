#include "ui/db2_details_dialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>
#include <QVBoxLayout>
#include <memory>

#include "host/host_transfer.h"
#include "tagfile/messages.h"
#include "ui/column_selection_dialog.h"
#include "ui/generate_dialog.h"
#include "ui/labels.h"
#include "ui/qt_text.h"

namespace quorva::gui {
namespace {

constexpr Label kHeadings[] = {Label::kOwnerColumn, Label::kTableColumn, Label::kCursorColumn,
                               Label::kDb2DescriptionColumn, Label::kIncludeColumn};
// Wide enough for the longest text each field usually holds.
constexpr int kWidths[] = {9, 18, 12, 30, 9};

}  // namespace

Db2DetailsDialog::Db2DetailsDialog(bool easytrieve, AccessKind kind, int count, QWidget* parent)
    : FrameDialog("WindowDetDB2", parent), panel_(Db2Details::open(easytrieve, kind, count)) {
  setWindowTitle(text(Label::kDb2Title));
  auto* heading = new QLabel(to_qt(panel_.heading()), this);
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);

  auto* grid = new QGridLayout;
  const int char_width = fontMetrics().horizontalAdvance('M');
  for (int c = 0; c < kColumnCount; ++c)
    grid->addWidget(new QLabel(text(kHeadings[c]), this), 0, c + 1);
  for (int row = 1; row <= 9; ++row) {
    grid->addWidget(new QLabel(QString::number(row), this), row, 0);
    for (int c = 0; c < kColumnCount; ++c) {
      auto* edit = new QLineEdit(this);
      edit->setMinimumWidth(kWidths[c] * char_width);
      edit->setEnabled(panel_.row_enabled(row));
      fields_[row - 1][c] = edit;
      grid->addWidget(edit, row, c + 1);
      connect(edit, &QLineEdit::editingFinished, this, [this, row, c] {
        if (!field(row, static_cast<Column>(c))->isModified()) return;
        take(row, static_cast<Column>(c));
        show_rows();
      });
    }
  }
  grid->setColumnStretch(kDescription + 1, 1);
  // The row the person works on is the one "Fields Select." opens.
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    for (int row = 1; row <= 9; ++row)
      for (QLineEdit* edit : fields_[row - 1])
        if (edit == now) set_current_row(row);
  });

  autofill_ = new QCheckBox(text(Label::kAutofill), this);
  auto_owner_ = new QCheckBox(text(Label::kAutoOwner), this);
  autofill_->setChecked(panel_.autofill());
  auto_owner_->setChecked(panel_.auto_owner());
  connect(autofill_, &QCheckBox::toggled, this, [this](bool on) { panel_.set_autofill(on); });
  connect(auto_owner_, &QCheckBox::toggled, this, [this](bool on) { panel_.set_auto_owner(on); });

  library_ = new QLineEdit(to_qt(panel_.dclgen_library()), this);
  connect(library_, &QLineEdit::editingFinished, this, [this] {
    if (!library_->isModified()) return;
    library_->setModified(false);
    if (std::optional<std::string> typed = from_qt(library_->text()))
      panel_.set_dclgen_library(*typed);
    library_->setText(to_qt(panel_.dclgen_library()));
  });
  auto* library_row = new QHBoxLayout;
  library_row->addWidget(new QLabel(text(Label::kDclgenLibrary), this));
  library_row->addWidget(library_, 1);

  fields_select_ = new QPushButton(text(Label::kFieldsSelect), this);
  auto* choice = new QMenu(fields_select_);
  choice->addAction(text(Label::kQueryColumns), this, [this] { select_fields(Selection::kQuery); });
  choice->addAction(text(Label::kWhereColumns), this, [this] { select_fields(Selection::kWhere); });
  fields_select_->setMenu(choice);
  download_ = new QPushButton(text(Label::kDownloadDclgen), this);
  enable_ = new QPushButton(text(Label::kEnableDclgen), this);
  connect(download_, &QPushButton::clicked, this, &Db2DetailsDialog::download_dclgen);
  connect(enable_, &QPushButton::clicked, this, &Db2DetailsDialog::enable_dclgen);
  access_ = new QLabel(this);
  auto* hint = new QLabel(text(Label::kDclgenHint), this);
  hint->setWordWrap(true);
  auto* dclgen_row = new QHBoxLayout;
  dclgen_row->addWidget(download_);
  dclgen_row->addWidget(enable_);
  dclgen_row->addWidget(fields_select_);
  dclgen_row->addWidget(access_);
  dclgen_row->addWidget(hint, 1);

  auto* quick = new QPushButton(text(Label::kQuickHelp), this);
  connect(quick, &QPushButton::clicked, this, [] { Mostra_popup(Db2Details::quick_help()); });
  for (QPushButton* button : {download_, enable_, fields_select_}) button->setAutoDefault(false);
  const OkCancelRow row = make_ok_cancel_row({quick}, [this] { apply(); });
  ok_ = row.ok;
  cancel_ = row.cancel;
  QHBoxLayout* buttons = row.layout;

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(heading);
  layout->addLayout(grid);
  layout->addWidget(autofill_);
  layout->addWidget(auto_owner_);
  layout->addLayout(library_row);
  layout->addLayout(dclgen_row);
  layout->addLayout(buttons);
  show_rows();
  set_current_row(1);
}

Db2DetailsDialog::~Db2DetailsDialog() {
  if (worker_) worker_->wait();
}

void Db2DetailsDialog::set_current_row(int row) {
  if (!panel_.row_enabled(row)) return;
  current_row_ = row;
  access_->setText(text(Label::kAccessRow) + QString::fromLatin1(access_word(panel_.kind())) + " " +
                   QString::number(row));
}

void Db2DetailsDialog::show_rows() {
  for (int row = 1; row <= 9; ++row) {
    const Db2Row& values = panel_.row(row);
    const std::string* texts[] = {&values.owner, &values.table, &values.cursor, &values.description,
                                  &values.include};
    for (int c = 0; c < kColumnCount; ++c) {
      fields_[row - 1][c]->setText(to_qt(*texts[c]));
      fields_[row - 1][c]->setModified(false);
    }
  }
}

bool Db2DetailsDialog::take(int row, Column column) {
  QLineEdit* edit = field(row, column);
  edit->setModified(false);
  const std::optional<std::string> typed = from_qt(edit->text());
  if (!typed) return false;
  switch (column) {
    case kOwner:
      return panel_.set_owner(row, *typed);
    case kTable:
      return panel_.set_table(row, *typed);
    case kCursor:
      return panel_.set_cursor(row, *typed);
    case kDescription:
      return panel_.set_description(row, *typed);
    case kInclude:
      return panel_.set_include(row, *typed);
    case kColumnCount:
      break;
  }
  return false;
}

bool Db2DetailsDialog::take_typed() {
  bool taken = true;
  // The member first: a TABLE NAME typed with it is not taken for the old member's.
  for (Column column : {kInclude, kOwner, kTable, kCursor, kDescription})
    for (int row = 1; row <= panel_.count(); ++row)
      if (field(row, column)->isModified()) taken &= take(row, column);
  if (library_->isModified()) {
    library_->setModified(false);
    const std::optional<std::string> typed = from_qt(library_->text());
    taken &= typed && panel_.set_dclgen_library(*typed);
  }
  show_rows();
  library_->setText(to_qt(panel_.dclgen_library()));
  return taken;
}

void Db2DetailsDialog::apply() {
  if (worker_ || !take_typed()) return;
  const Result<bool> closed = panel_.confirm();
  show_rows();
  if (closed.ok() && *closed) accept();
}

void Db2DetailsDialog::reject() {
  // The download ends on its own; closing under it would leave its marker behind.
  if (worker_ || !panel_.cancel()) return;
  FrameDialog::reject();
}

void Db2DetailsDialog::enable_dclgen() {
  if (!take_typed()) return;
  panel_.enable_dclgens();
  show_rows();
}

void Db2DetailsDialog::download_dclgen() {
  if (worker_ || !take_typed()) return;
  std::optional<std::string> password;
  if (!transfer_password(this, text(Label::kDownloadDclgen), password)) return;
  const std::string library = panel_.dclgen_library();
  const std::vector<std::string> members = panel_.download_members();
  for (QPushButton* button : {download_, enable_, fields_select_, ok_, cancel_})
    button->setEnabled(false);
  access_->setText(text(Label::kDownloadRunning));
  auto done = std::make_shared<bool>(false);
  worker_ = QThread::create([library, members, password, done] {
    *done = download_dclgens(library, members, run_transfer_batch, password).ok();
  });
  connect(worker_, &QThread::finished, this, [this, done] {
    worker_->deleteLater();
    worker_ = nullptr;
    for (QPushButton* button : {download_, enable_, fields_select_, ok_, cancel_})
      button->setEnabled(true);
    set_current_row(current_row_);
    emit download_ended(*done);
  });
  worker_->start();
}

void Db2DetailsDialog::select_fields(Selection selection) {
  if (worker_ || !take_typed()) return;
  const int row = current_row_;
  const std::optional<std::string> path = panel_.fields_member(row);
  if (!path) return;
  ColumnSelectionDialog columns(panel_.kind(), row, panel_.row(row).include, selection, *path,
                                this);
  columns.exec();
}

void open_db2_details(bool easytrieve, AccessKind kind, int count, QWidget* parent) {
  Db2DetailsDialog dialog(easytrieve, kind, count, parent);
  dialog.exec();
}

}  // namespace quorva::gui
