#include "ui/preview_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "panels/generate_panel.h"
#include "port/user_interface.h"
#include "store/config_file.h"
#include "store/parbase_file.h"
#include "tagfile/tag_file.h"
#include "ui/labels.h"
#include "ui/program_view.h"
#include "ui/qt_text.h"

namespace quorva::gui {

PreviewDialog::PreviewDialog(const std::string& path, const std::string& text_bytes,
                             QWidget* parent)
    : FrameDialog("WindowPreview", parent), path_(path) {
  setWindowTitle(text(Label::kPreviewTitle) + " - " + to_qt(path));
  view_ = new ProgramView(this);
  view_->setPlainText(to_qt(text_bytes));
  view_->set_break_point(read_program_language() == ProgramLanguage::kEasytrieve
                             ? read_break_point(kEasytrieveBreak)
                             : read_break_point(kCobolBreak));
  auto* ruler = new ColumnRuler(view_);

  search_ = new QLineEdit(this);
  search_->setClearButtonEnabled(true);
  connect(search_, &QLineEdit::returnPressed, this, &PreviewDialog::find_next);
  auto* find = new QPushButton(text(Label::kFind).chopped(1), this);
  find->setAutoDefault(false);
  connect(find, &QPushButton::clicked, this, &PreviewDialog::find_next);
  auto* editor = new QPushButton(text(Label::kOpenInEditor), this);
  editor->setAutoDefault(false);
  connect(editor, &QPushButton::clicked, this, [this] { ui().open_file(path_); });
  auto* close = new QPushButton(text(Label::kExit), this);
  close->setAutoDefault(false);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);

  summary_ = new QLabel(this);
  summary_->setText(QString::number(view_->blockCount()) + text(Label::kLines) + "  -  " +
                    text(Label::kBreakPoint) + QString::number(view_->break_point()) +
                    (view_->lines_past_break_point() > 0
                         ? "  -  " + QString::number(view_->lines_past_break_point()) + " > " +
                               QString::number(view_->break_point())
                         : QString()));

  auto* bar = new QHBoxLayout;
  bar->addWidget(new QLabel(text(Label::kFind), this));
  bar->addWidget(search_, 1);
  bar->addWidget(find);
  bar->addStretch();
  bar->addWidget(editor);
  bar->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(0);
  layout->addWidget(ruler);
  layout->addWidget(view_, 1);
  layout->addSpacing(6);
  layout->addWidget(summary_);
  layout->addLayout(bar);
  const int columns = std::max(80, view_->break_point()) + 4;
  resize(view_->line_number_width() + static_cast<int>(columns * view_->character_width()) + 40,
         560);
}

void PreviewDialog::find_next() {
  if (!view_->find_next(search_->text()) && !search_->text().isEmpty())
    search_->setPlaceholderText(text(Label::kNotFound));
}

PreviewDialog* PreviewDialog::open_current(QWidget* parent) {
  const std::string path = GeneratePanel::output_name(false);
  std::optional<std::string> bytes = path.empty() ? std::nullopt : read_whole_file(path);
  if (!bytes) {
    // The panel says it cannot be found, with the name.
    GeneratePanel::preview();
    return nullptr;
  }
  return new PreviewDialog(path, *bytes, parent);
}

}  // namespace quorva::gui
