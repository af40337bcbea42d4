#include "ui/collection_dialogs.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>

#include "port/user_interface.h"
#include "tagfile/messages.h"
#include "ui/labels.h"
#include "ui/program_view.h"
#include "ui/qt_text.h"

namespace quorva::gui {
namespace {

constexpr int kSlotRole = Qt::UserRole + 1;  // a slot whose file is no collection here

QPushButton* button(Label label, QWidget* parent) {
  auto* made = new QPushButton(text(label), parent);
  made->setAutoDefault(false);
  return made;
}

QString cell(const QTableWidget* table, int row, int column) {
  const QTableWidgetItem* item = table->item(row, column);
  return item ? item->text() : QString();
}

}  // namespace

const char* collection_window_name(CollectionKind kind) {
  static const char* const kNames[] = {"WindowCustomCode", "WindowFlagsColl", "WindowKey2Value"};
  return kNames[static_cast<int>(kind)];
}

CollectionManagerDialog::CollectionManagerDialog(Collections collections, QWidget* parent)
    : FrameDialog(collection_window_name(collections.kind()), parent),
      collections_(std::move(collections)) {
  const CollectionKind kind = collections_.kind();
  setWindowTitle(to_qt(collection_kind_title(kind)) + " - " + to_qt(collections_.folder()));

  list_ = new QListWidget(this);
  connect(list_, &QListWidget::currentItemChanged, this,
          [this](QListWidgetItem* now, QListWidgetItem* before) {
            if (filling_) return;
            if (!take_content()) {
              filling_ = true;
              list_->setCurrentItem(before);
              filling_ = false;
              return;
            }
            current_ = now && !now->data(kSlotRole).isValid()
                           ? *from_qt(now->data(Qt::UserRole).toString())
                           : std::string();
            show_content();
          });
  connect(list_, &QListWidget::itemChanged, this, &CollectionManagerDialog::item_checked);
  name_ = new QLineEdit(this);
  auto* names = new QVBoxLayout;
  names->addWidget(list_);
  auto* name_row = new QHBoxLayout;
  name_row->addWidget(new QLabel(text(Label::kCollectionName), this));
  name_row->addWidget(name_);
  names->addLayout(name_row);
  auto* actions = new QHBoxLayout;
  const std::pair<Label, void (CollectionManagerDialog::*)()> kActions[] = {
      {Label::kCollectionNew, &CollectionManagerDialog::create},
      {Label::kCollectionCopy, &CollectionManagerDialog::copy},
      {Label::kCollectionRename, &CollectionManagerDialog::rename},
      {Label::kCollectionDelete, &CollectionManagerDialog::remove}};
  for (const auto& [label, action] : kActions) {
    QPushButton* made = button(label, this);
    connect(made, &QPushButton::clicked, this, action);
    actions->addWidget(made);
  }
  names->addLayout(actions);

  auto* content = new QVBoxLayout;
  description_ = new QLineEdit(this);
  if (kind != CollectionKind::kSnippets) {
    auto* line = new QHBoxLayout;
    line->addWidget(new QLabel(text(Label::kCollectionDescription), this));
    line->addWidget(description_);
    content->addLayout(line);
    rows_ = new QTableWidget(this);
    QStringList headings;
    if (kind == CollectionKind::kFlags)
      headings << text(Label::kFlagColumn) << text(Label::kCountColumn);
    else
      headings << text(Label::kKeyColumn) << text(Label::kValueColumn) << text(Label::kOnColumn);
    rows_->setColumnCount(static_cast<int>(headings.size()));
    rows_->setHorizontalHeaderLabels(headings);
    rows_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    content->addWidget(rows_);
    auto* edit = new QHBoxLayout;
    QPushButton* add = button(Label::kAddRow, this);
    QPushButton* drop = button(Label::kRemoveRow, this);
    connect(add, &QPushButton::clicked, this, &CollectionManagerDialog::add_row);
    connect(drop, &QPushButton::clicked, this, &CollectionManagerDialog::remove_row);
    edit->addWidget(add);
    edit->addWidget(drop);
    edit->addStretch();
    content->addLayout(edit);
  } else {
    description_->hide();
    code_ = new ProgramView(this);
    code_->setReadOnly(false);
    code_->setTextInteractionFlags(Qt::TextEditorInteraction);
    content->addWidget(new ColumnRuler(code_));
    content->addWidget(code_);
  }

  auto* panes = new QHBoxLayout;
  panes->addLayout(names, 2);
  panes->addLayout(content, 5);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(make_help_button(text(Label::kAdvancedHelp)));
  bottom->addStretch();
  QPushButton* ok = button(Label::kOk, this);
  QPushButton* cancel = button(Label::kCancel, this);
  connect(ok, &QPushButton::clicked, this, &CollectionManagerDialog::save);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  bottom->addWidget(ok);
  bottom->addWidget(cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(panes);
  layout->addLayout(bottom);

  const std::vector<std::string> all = collections_.names();
  fill_list(all.empty() ? std::string() : all.front());
  resize(kind == CollectionKind::kSnippets ? 1000 : 820, 480);
}

void CollectionManagerDialog::fill_list(const std::string& selected) {
  filling_ = true;
  list_->clear();
  QListWidgetItem* chosen = nullptr;
  auto add = [this](const QString& label, int slot) {
    auto* item = new QListWidgetItem(label, list_);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(slot ? Qt::Checked : Qt::Unchecked);
    return item;
  };
  for (const std::string& name : collections_.names()) {
    const int slot = collections_.slot_of(name);
    QListWidgetItem* item = add(
        to_qt(name) + (slot ? "   (" + text(Label::kCollectionInUse) + QString::number(slot) + ")"
                            : QString()),
        slot);
    item->setData(Qt::UserRole, to_qt(name));
    if (name == selected) chosen = item;
  }
  const std::vector<int> missing = collections_.missing_chosen();
  for (int slot = 1; slot <= static_cast<int>(collections_.chosen().size()); ++slot) {
    const std::string label = collections_.slot_label(slot);
    if (label.empty() || collections_.exists(label)) continue;
    const bool gone = std::find(missing.begin(), missing.end(), slot) != missing.end();
    QListWidgetItem* item =
        add(to_qt(label) + "   (" + text(Label::kCollectionInUse) + QString::number(slot) +
                (gone ? ", " + text(Label::kCollectionMissing) : QString()) + ")",
            slot);
    item->setData(kSlotRole, slot);
  }
  list_->setCurrentItem(chosen);
  current_ = chosen ? selected : std::string();
  filling_ = false;
  show_content();
}

void CollectionManagerDialog::show_content() {
  std::optional<CollectionContent> content;
  if (!current_.empty()) content = collections_.content(current_);
  const bool shown = content.has_value();
  description_->setEnabled(shown);
  description_->setText(shown ? to_qt(content->description) : QString());
  if (code_) {
    code_->setEnabled(shown);
    code_->setPlainText(shown ? to_qt(content->text) : QString());
    return;
  }
  rows_->setEnabled(shown);
  rows_->setRowCount(0);
  if (!shown) return;
  if (collections_.kind() == CollectionKind::kFlags) {
    rows_->setRowCount(static_cast<int>(content->flags.size()));
    for (int r = 0; r < rows_->rowCount(); ++r) {
      rows_->setItem(r, 0, new QTableWidgetItem(to_qt(content->flags[r].code)));
      rows_->setItem(r, 1, new QTableWidgetItem(QString::number(content->flags[r].count)));
    }
    return;
  }
  rows_->setRowCount(static_cast<int>(content->pairs.size()));
  for (int r = 0; r < rows_->rowCount(); ++r) {
    const KeyValueRow& pair = content->pairs[r];
    rows_->setItem(r, 0, new QTableWidgetItem(to_qt(pair.key)));
    rows_->setItem(r, 1, new QTableWidgetItem(to_qt(pair.value)));
    auto* on = new QTableWidgetItem;
    on->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    on->setCheckState(pair.enabled ? Qt::Checked : Qt::Unchecked);
    rows_->setItem(r, 2, on);
  }
}

bool CollectionManagerDialog::take_content() {
  if (current_.empty() || !collections_.exists(current_)) return true;
  CollectionContent content;
  std::optional<std::string> description = from_qt(description_->text());
  if (!description) return false;
  content.description = *description;
  if (code_) {
    std::optional<std::string> typed = from_qt(code_->toPlainText());
    if (!typed) return false;
    content.text = *typed;
    if (!content.text.empty() && content.text.back() != '\n') content.text += '\n';
  } else {
    for (int r = 0; r < rows_->rowCount(); ++r) {
      std::optional<std::string> first = from_qt(cell(rows_, r, 0));
      std::optional<std::string> second = from_qt(cell(rows_, r, 1));
      if (!first || !second) return false;
      if (first->empty() && second->empty()) continue;  // a row added and left blank
      if (collections_.kind() == CollectionKind::kFlags) {
        bool number = false;
        const int count = cell(rows_, r, 1).trimmed().toInt(&number);
        content.flags.push_back({*first, number ? count : 0});
      } else {
        const QTableWidgetItem* on = rows_->item(r, 2);
        content.pairs.push_back({*first, *second, !on || on->checkState() == Qt::Checked});
      }
    }
  }
  // An unchanged content is not handed over, so a file's lines the editor does not show
  // stay as they are.
  if (collections_.content(current_) == content) return true;
  return collections_.set_content(current_, std::move(content));
}

void CollectionManagerDialog::item_checked(QListWidgetItem* item) {
  if (filling_) return;
  const bool checked = item->checkState() == Qt::Checked;
  bool in_use = !checked;
  if (item->data(kSlotRole).isValid()) {
    if (!checked) collections_.free_slot(item->data(kSlotRole).toInt());
    in_use = false;
  } else {
    // A refusal (all slots taken) is said by the model; the box goes back.
    const std::string name = *from_qt(item->data(Qt::UserRole).toString());
    if (checked ? collections_.use(name) : collections_.unuse(name)) in_use = checked;
  }
  // The list is rebuilt, and the editor with it, only once its edits are taken.
  if (take_content()) {
    fill_list(current_);
    return;
  }
  filling_ = true;
  item->setCheckState(in_use ? Qt::Checked : Qt::Unchecked);
  filling_ = false;
}

std::optional<std::string> CollectionManagerDialog::typed_name() {
  return from_qt(name_->text());
}

bool CollectionManagerDialog::select(const QString& name) {
  for (int i = 0; i < list_->count(); ++i)
    if (list_->item(i)->data(Qt::UserRole).toString() == name) {
      list_->setCurrentRow(i);
      return list_->currentRow() == i;
    }
  return false;
}

void CollectionManagerDialog::create() {
  std::optional<std::string> name = typed_name();
  if (!name || !take_content() || !collections_.create(*name)) return;
  fill_list(*name);
}

void CollectionManagerDialog::copy() {
  std::optional<std::string> name = typed_name();
  if (current_.empty() || !name || !take_content() || !collections_.copy(current_, *name)) return;
  fill_list(*name);
}

void CollectionManagerDialog::rename() {
  std::optional<std::string> name = typed_name();
  if (current_.empty() || !name || !take_content() || !collections_.rename(current_, *name)) return;
  fill_list(*name);
}

void CollectionManagerDialog::remove() {
  if (current_.empty() || !collections_.remove(current_)) return;
  current_.clear();
  const std::vector<std::string> all = collections_.names();
  fill_list(all.empty() ? std::string() : all.front());
}

void CollectionManagerDialog::add_row() {
  if (!rows_ || current_.empty()) return;
  rows_->insertRow(rows_->rowCount());
  const int row = rows_->rowCount() - 1;
  if (collections_.kind() == CollectionKind::kKeyToValue) {
    auto* on = new QTableWidgetItem;
    on->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    on->setCheckState(Qt::Checked);
    rows_->setItem(row, 2, on);
  }
  rows_->setCurrentCell(row, 0);
}

void CollectionManagerDialog::remove_row() {
  if (rows_ && rows_->currentRow() >= 0) rows_->removeRow(rows_->currentRow());
}

void CollectionManagerDialog::save() {
  if (!take_content()) return;
  if (collections_.confirm().ok()) accept();
}

CollectionManagerDialog* CollectionManagerDialog::open(CollectionKind kind, QWidget* parent) {
  Result<Collections> collections = Collections::open(kind);
  if (!collections) return nullptr;
  if (const std::string missing = collections->missing_message(); !missing.empty())
    Mostra_popup(missing);
  return new CollectionManagerDialog(std::move(*collections), parent);
}

void open_collection_manager(CollectionKind kind, QWidget* parent) {
  std::unique_ptr<CollectionManagerDialog> dialog{CollectionManagerDialog::open(kind, parent)};
  if (dialog) dialog->exec();
}

}  // namespace quorva::gui
