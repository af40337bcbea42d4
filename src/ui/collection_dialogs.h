#pragma once

#include <QString>
#include <optional>
#include <string>

#include "panels/collections.h"
#include "ui/frame_dialog.h"

class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QStackedWidget;
class QTableWidget;

namespace quorva::gui {

class ProgramView;

/// A manager window for one kind of collection over the core's Collections: the list with
/// its in-use check boxes, New / Copy as / Rename as / Delete, and the selected collection's
/// content (rows in a table, or custom code under a column ruler). Nothing is written
/// before OK; Cancel keeps only the window's position.
class CollectionManagerDialog : public FrameDialog {
  Q_OBJECT
 public:
  CollectionManagerDialog(Collections collections, QWidget* parent);

  /// Opens the manager, after saying which collections in use are missing; nullptr when
  /// the source folder is not set (said by the core).
  static CollectionManagerDialog* open(CollectionKind kind, QWidget* parent);

  const Collections& collections() const { return collections_; }
  QListWidget* list() const { return list_; }
  QLineEdit* name_field() const { return name_; }
  QLineEdit* description() const { return description_; }
  QTableWidget* rows() const { return rows_; }
  ProgramView* code() const { return code_; }

  /// Selects a collection by name; false when its edits were refused or it is not there.
  bool select(const QString& name);
  void create();
  void copy();
  void rename();
  void remove();
  void add_row();
  void remove_row();
  /// Takes the editor's content and writes everything; closes only when it was written.
  void save();

 private:
  void fill_list(const std::string& selected);
  void show_content();
  /// Hands the editor's content to the model; false (said) when refused.
  bool take_content();
  void item_checked(QListWidgetItem* item);
  std::optional<std::string> typed_name();

  Collections collections_;
  std::string current_;
  bool filling_ = false;
  QListWidget* list_;
  QLineEdit* name_;
  QLineEdit* description_;
  QTableWidget* rows_ = nullptr;
  ProgramView* code_ = nullptr;
};

/// The window name under which each manager keeps its position.
const char* collection_window_name(CollectionKind kind);

/// Opens the manager of `kind` modally.
void open_collection_manager(CollectionKind kind, QWidget* parent);

}  // namespace quorva::gui
