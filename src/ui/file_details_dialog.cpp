#include "ui/file_details_dialog.h"

#include <QCheckBox>
#include <QFont>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/labels.h"
#include "ui/qt_text.h"

namespace quorva::gui {

FileDetailsDialog::FileDetailsDialog(FileKind kind, int count, QWidget* parent)
    : FrameDialog("WindowDetFile", parent), panel_(FileDetails::open(kind, count)) {
  setWindowTitle(text(Label::kFileDetailsTitle));
  heading_ = new QLabel(to_qt(panel_.heading()), this);
  QFont bold = heading_->font();
  bold.setBold(true);
  heading_->setFont(bold);

  auto* grid = new QGridLayout;
  const Label columns[] = {Label::kFileName, Label::kReportName, Label::kFileDescription,
                           Label::kExcel};
  for (int c = 0; c < 4; ++c) grid->addWidget(new QLabel(text(columns[c]), this), 0, c + 1);
  const std::size_t limits[kFieldCount] = {kFileNameLimit, kReportNameLimit, kFileDescriptionLimit};
  const int widths[kFieldCount] = {90, 110, 340};
  for (int n = 1; n <= kDetailRows; ++n) {
    grid->addWidget(new QLabel(QString::number(n), this), n, 0);
    for (int f = 0; f < kFieldCount; ++f) {
      auto* edit = new QLineEdit(this);
      edit->setMaxLength(static_cast<int>(limits[f]));
      edit->setMinimumWidth(widths[f]);
      edit->setEnabled(panel_.row_enabled(n));
      fields_[n - 1][f] = edit;
      grid->addWidget(edit, n, f + 1);
      // Each check runs when the person leaves the field, so a name half typed is no error.
      connect(edit, &QLineEdit::editingFinished, this, [this, n, f] {
        QLineEdit* changed = fields_[n - 1][f];
        if (!changed->isModified()) return;
        changed->setModified(false);
        apply(n, static_cast<Field>(f));
      });
    }
    auto* box = new QCheckBox(this);
    excel_[n - 1] = box;
    grid->addWidget(box, n, 4, Qt::AlignCenter);
    connect(box, &QCheckBox::clicked, this, [this, n](bool checked) {
      panel_.click_excel(n, checked);
      show_rows();
    });
  }
  grid->setColumnStretch(3, 1);

  auto* quick = new QPushButton(text(Label::kQuickHelp), this);
  connect(quick, &QPushButton::clicked, this, [this] {
    QMessageBox::information(this, text(Label::kFileDetailsTitle),
                             to_qt(FileDetails::quick_help()));
  });
  QHBoxLayout* buttons = make_ok_cancel_row({quick}, [this] { confirm(); }).layout;

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(heading_);
  layout->addLayout(grid);
  layout->addLayout(buttons);
  show_rows();
}

void FileDetailsDialog::show_rows() {
  const bool output = panel_.kind() == FileKind::kOutput;
  for (int n = 1; n <= kDetailRows; ++n) {
    const FileRow& row = panel_.row(n);
    const std::string* values[kFieldCount] = {&row.name, &row.report_name, &row.description};
    for (int f = 0; f < kFieldCount; ++f) {
      fields_[n - 1][f]->setText(to_qt(*values[f]));
      fields_[n - 1][f]->setModified(false);
    }
    excel_[n - 1]->setChecked(output && row.excel);
    excel_[n - 1]->setEnabled(output && row.excel_enabled && panel_.row_enabled(n));
  }
}

bool FileDetailsDialog::apply(int row, Field which) {
  const std::optional<std::string> typed = from_qt(field(row, which)->text());
  bool kept = typed.has_value();
  if (kept) {
    switch (which) {
      case kName:
        kept = panel_.set_name(row, *typed);
        break;
      case kReportName:
        kept = panel_.set_report_name(row, *typed);
        break;
      case kDescription:
        kept = panel_.set_description(row, *typed);
        break;
      case kFieldCount:
        break;
    }
  }
  // The other rows' fields may hold typing not yet taken: only this one is shown again.
  const FileRow& shown = panel_.row(row);
  const std::string* values[kFieldCount] = {&shown.name, &shown.report_name, &shown.description};
  field(row, which)->setText(to_qt(*values[which]));
  field(row, which)->setModified(false);
  return kept;
}

void FileDetailsDialog::confirm() {
  for (int n = 1; n <= panel_.count(); ++n)
    for (int f = 0; f < kFieldCount; ++f)
      if (field(n, static_cast<Field>(f))->isModified()) {
        field(n, static_cast<Field>(f))->setModified(false);
        if (!apply(n, static_cast<Field>(f))) return;
      }
  if (panel_.confirm()) accept();
}

}  // namespace quorva::gui
