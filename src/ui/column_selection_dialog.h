#pragma once

#include "panels/column_selection.h"
#include "ui/frame_dialog.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace quorva::gui {

/// "Selection of Db2 Table Columns" (WindowTreeDb2) over ColumnSelection: the member's
/// columns as a tree under a root that stands for the table, the current column's data with
/// its "Null" box, the level-01 structure and prefix, search and the previous selection.
class ColumnSelectionDialog : public FrameDialog {
  Q_OBJECT
 public:
  ColumnSelectionDialog(AccessKind kind, int access, const std::string& member, Selection selection,
                        const std::string& member_path, QWidget* parent);

  QTreeWidget* tree() const { return tree_; }
  QTreeWidgetItem* root() const { return root_; }
  QLineEdit* search_field() const { return search_; }
  QLineEdit* structure_field() const { return structure_; }
  QLineEdit* prefix_field() const { return prefix_; }
  QCheckBox* null_box() const { return null_; }
  QLabel* status_line() const { return status_; }
  QLabel* total() const { return total_; }
  const ColumnSelection& model() const { return model_; }

  /// "Load Previous Selection."
  void load_previous();
  /// "Search Column !!!" with the search field's text.
  void search();
  /// OK: the structure and prefix typed, then the selection written.
  void apply();

 private:
  /// A check box of the tree changed: the root marks every column, a column itself.
  void checked(QTreeWidgetItem* item);
  /// Shows the model's marks, current column, counts and status.
  void show_state();
  void show_details();
  bool take_names();

  ColumnSelection model_;
  QTreeWidget* tree_;
  QTreeWidgetItem* root_ = nullptr;
  QLabel* details_;
  QCheckBox* null_;
  QLineEdit* structure_;
  QLineEdit* prefix_;
  QLineEdit* search_;
  QLabel* status_;
  QLabel* problem_;
  QLabel* total_;
  bool showing_ = false;  // marks set by the view, not by the person
};

}  // namespace quorva::gui
