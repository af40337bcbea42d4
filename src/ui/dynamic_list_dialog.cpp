#include "ui/dynamic_list_dialog.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "ui/labels.h"
#include "ui/qt_text.h"

namespace quorva::gui {

DynamicListDialog::DynamicListDialog(DynamicList list, QWidget* parent)
    : FrameDialog("WindowDynamicList", parent), list_(std::move(list)) {
  setWindowTitle(to_qt(list_.title()));
  table_ = new QTableWidget(this);
  table_->setColumnCount(static_cast<int>(list_.columns().size()));
  QStringList headings;
  for (const std::string& column : list_.columns()) headings << to_qt(column);
  table_->setHorizontalHeaderLabels(headings);
  table_->verticalHeader()->hide();
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  const int character = QFontMetrics(table_->font()).horizontalAdvance('M');
  for (std::size_t c = 0; c < list_.widths().size(); ++c)
    table_->setColumnWidth(static_cast<int>(c), (list_.widths()[c] + 3) * character);
  // The list sorts itself, so the checks follow their rows.
  connect(table_->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
    take_checks();
    if (list_.sort_by(static_cast<std::size_t>(column))) fill();
  });

  auto* buttons = new QHBoxLayout;
  auto add = [this, buttons](Label label, void (DynamicList::*action)()) {
    auto* button = new QPushButton(text(label), this);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, action] {
      take_checks();
      (list_.*action)();
      fill();
    });
    buttons->addWidget(button);
  };
  add(Label::kSelectAll, &DynamicList::select_all);
  add(Label::kDeselectAll, &DynamicList::deselect_all);
  add(Label::kInvert, &DynamicList::invert_selection);
  buttons->addStretch();
  auto* ok = new QPushButton(text(Label::kOk), this);
  auto* cancel = new QPushButton(text(Label::kCancel), this);
  connect(ok, &QPushButton::clicked, this, [this] {
    take_checks();
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  buttons->addWidget(ok);
  buttons->addWidget(cancel);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(table_);
  layout->addLayout(buttons);
  fill();
  resize(std::max(420, table_->horizontalHeader()->length() + 40), 360);
}

void DynamicListDialog::fill() {
  table_->setRowCount(static_cast<int>(list_.size()));
  for (std::size_t r = 0; r < list_.size(); ++r) {
    for (std::size_t c = 0; c < list_.columns().size(); ++c) {
      auto* item = new QTableWidgetItem(to_qt(list_.cell(r, c)));
      if (c == 0) {
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(list_.checked(r) ? Qt::Checked : Qt::Unchecked);
      }
      table_->setItem(static_cast<int>(r), static_cast<int>(c), item);
    }
  }
}

void DynamicListDialog::take_checks() {
  for (std::size_t r = 0; r < list_.size(); ++r)
    if (QTableWidgetItem* item = table_->item(static_cast<int>(r), 0))
      list_.set_checked(r, item->checkState() == Qt::Checked);
}

std::optional<std::vector<std::size_t>> DynamicListDialog::pick(const DynamicListSetup& setup,
                                                                QWidget* parent) {
  Result<DynamicList> list = DynamicList::open(&setup);
  if (!list) return std::nullopt;
  DynamicListDialog dialog(std::move(*list), parent);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.list().checked_rows();
}

}  // namespace quorva::gui
