#include "ui/column_selection_dialog.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "store/key2value_file.h"
#include "ui/labels.h"
#include "ui/qt_text.h"

namespace quorva::gui {
namespace {

constexpr int kOrdinalRole = Qt::UserRole;
constexpr int kRootKey = -1;

int ordinal_of(const QTreeWidgetItem* item) {
  return item->data(0, kOrdinalRole).toInt();
}

}  // namespace

ColumnSelectionDialog::ColumnSelectionDialog(AccessKind kind, int access, const std::string& member,
                                             Selection selection, const std::string& member_path,
                                             QWidget* parent)
    : FrameDialog("WindowTreeDb2", parent), model_(kind, access, member, selection) {
  setWindowTitle(to_qt(model_.title()));
  model_.open(member_path);

  tree_ = new QTreeWidget(this);
  tree_->setColumnCount(4);
  tree_->setHeaderLabels({text(Label::kTreeColumn), text(Label::kTreeType), text(Label::kTreeValue),
                          text(Label::kNullBox)});
  tree_->setUniformRowHeights(true);  // keeps a 750-column table quick to fill and scroll
  tree_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  const std::vector<std::string> items = model_.tree_items();
  root_ = new QTreeWidgetItem(tree_, {to_qt(items.front())});
  root_->setData(0, kOrdinalRole, kRootKey);
  root_->setFlags(root_->flags() | Qt::ItemIsUserCheckable);
  QList<QTreeWidgetItem*> children;
  children.reserve(static_cast<int>(model_.columns().size()));
  for (const DclgenColumn& column : model_.columns()) {
    auto* item = new QTreeWidgetItem(
        {to_qt(column.name), to_qt(db2type::display_name(column.type_code) + column.length_text),
         to_qt(column.cobol_picture), column.not_null ? QString() : text(Label::kNullBox)});
    item->setData(0, kOrdinalRole, column.ordinal);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(0, Qt::Unchecked);
    children.append(item);
  }
  root_->addChildren(children);
  root_->setCheckState(0, Qt::Unchecked);
  root_->setExpanded(true);
  connect(tree_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item, int column) {
    if (column == 0 && !showing_) checked(item);
  });
  connect(tree_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
    if (showing_ || !item || item == root_) return;
    // Showing a column's data leaves its mark as it is.
    const int ordinal = ordinal_of(item);
    model_.select(ordinal, model_.is_selected(ordinal));
    show_details();
  });

  auto* data = new QGroupBox(text(Label::kSelectedFieldData), this);
  details_ = new QLabel(data);
  details_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  details_->setFont(QFont("Monospace"));
  null_ = new QCheckBox(text(Label::kNullBox), data);
  connect(null_, &QCheckBox::clicked, this, [this](bool on) {
    const std::optional<int> current = model_.current();
    if (!current || !model_.set_null_box(*current + 1, on)) {
      QSignalBlocker quiet(null_);
      null_->setChecked(model_.null_box());
      return;
    }
    show_state();
  });
  auto* data_layout = new QVBoxLayout(data);
  data_layout->addWidget(details_);
  data_layout->addWidget(null_);

  auto* cobol = new QGroupBox(text(Label::kCobolVariableDetail), this);
  structure_ = new QLineEdit(cobol);
  prefix_ = new QLineEdit(cobol);
  auto* cobol_form = new QFormLayout(cobol);
  cobol_form->addRow(text(Label::kStructName), structure_);
  cobol_form->addRow(text(Label::kVariablesPrefix), prefix_);
  // The structure the access already has stays unless the person names another.
  if (kind != AccessKind::kDelete)
    if (std::optional<std::string> kept = read_key2value(level01_key(kind, access)))
      if (model_.set_structure_name(*kept)) structure_->setText(to_qt(*kept));

  search_ = new QLineEdit(this);
  auto* find = new QPushButton(text(Label::kSearchColumn), this);
  connect(find, &QPushButton::clicked, this, &ColumnSelectionDialog::search);
  connect(search_, &QLineEdit::returnPressed, this, &ColumnSelectionDialog::search);
  auto* previous = new QPushButton(text(Label::kLoadPrevious), this);
  connect(previous, &QPushButton::clicked, this, &ColumnSelectionDialog::load_previous);
  auto* search_row = new QHBoxLayout;
  search_row->addWidget(search_, 1);
  search_row->addWidget(find);
  search_row->addWidget(previous);

  total_ = new QLabel(this);
  status_ = new QLabel(this);
  problem_ = new QLabel(this);
  problem_->setWordWrap(true);
  for (QPushButton* button : {find, previous}) button->setAutoDefault(false);
  QHBoxLayout* buttons = make_ok_cancel_row({total_}, [this] { apply(); }).layout;

  auto* side = new QVBoxLayout;
  side->addWidget(data);
  side->addWidget(cobol);
  side->addStretch();
  auto* body = new QHBoxLayout;
  body->addWidget(tree_, 3);
  body->addLayout(side, 2);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(search_row);
  layout->addLayout(body, 1);
  layout->addWidget(status_);
  layout->addWidget(problem_);
  layout->addLayout(buttons);
  resize(900, 560);
  show_state();
}

void ColumnSelectionDialog::checked(QTreeWidgetItem* item) {
  const bool on = item->checkState(0) == Qt::Checked;
  if (item == root_)
    model_.select_all(on);
  else
    model_.select(ordinal_of(item), on);
  show_state();
}

void ColumnSelectionDialog::show_state() {
  showing_ = true;
  {
    // One repaint for the whole table, not one per column.
    tree_->setUpdatesEnabled(false);
    QSignalBlocker quiet(tree_);
    for (int i = 0; i < root_->childCount(); ++i) {
      QTreeWidgetItem* item = root_->child(i);
      const int ordinal = ordinal_of(item);
      const Qt::CheckState wanted = model_.is_selected(ordinal) ? Qt::Checked : Qt::Unchecked;
      if (item->checkState(0) != wanted) item->setCheckState(0, wanted);
      const bool nullable = model_.columns()[static_cast<std::size_t>(ordinal)].not_null == 0;
      item->setText(3, nullable ? text(Label::kNullBox) : QString());
    }
    const int selected = model_.selected_count();
    const int all = root_->childCount();
    root_->setCheckState(0, selected == 0     ? Qt::Unchecked
                            : selected == all ? Qt::Checked
                                              : Qt::PartiallyChecked);
    if (std::optional<int> current = model_.current())
      tree_->setCurrentItem(root_->child(*current));
    tree_->setUpdatesEnabled(true);
  }
  showing_ = false;
  total_->setText(to_qt(model_.selected_count_text()));
  status_->setText(to_qt(model_.status()));
  problem_->setText(to_qt(model_.problem_detail()));
  problem_->setVisible(!model_.problem_detail().empty());
  show_details();
}

void ColumnSelectionDialog::show_details() {
  details_->setText(to_qt(model_.details()));
  null_->setEnabled(model_.current().has_value());
  QSignalBlocker quiet(null_);
  null_->setChecked(model_.null_box());
}

void ColumnSelectionDialog::load_previous() {
  if (!model_.load_previous_selection()) return;
  structure_->setText(to_qt(model_.structure_name()));
  prefix_->setText(to_qt(model_.prefix()));
  structure_->setModified(false);
  prefix_->setModified(false);
  show_state();
}

void ColumnSelectionDialog::search() {
  const std::optional<std::string> wanted = from_qt(search_->text());
  if (!wanted) return;
  const std::optional<int> hit = model_.search(*wanted);
  if (!hit) return;
  show_state();
  tree_->scrollToItem(root_->child(*hit));
}

bool ColumnSelectionDialog::take_names() {
  const std::optional<std::string> structure = from_qt(structure_->text());
  const std::optional<std::string> prefix = from_qt(prefix_->text());
  if (!structure || !prefix) return false;
  const bool taken = model_.set_structure_name(*structure) && model_.set_prefix(*prefix);
  structure_->setText(to_qt(model_.structure_name()));
  prefix_->setText(to_qt(model_.prefix()));
  return taken;
}

void ColumnSelectionDialog::apply() {
  if (!take_names()) return;
  if (model_.ok()) accept();
}

}  // namespace quorva::gui
