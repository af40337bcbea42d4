#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dclgen/dclgen_column.h"
#include "dclgen/dclgen_parser.h"
#include "engine/column_file.h"
#include "port/status.h"

namespace quorva {

/// The DCLGEN member file of `member`: source folder (Resource/User.dat) + member + ".DCL".
std::string dclgen_member_path(const std::string& member);

/// "SELECT1", "FETCH2", ...: the master tag of an access in its column file.
std::string master_tag(AccessKind kind, int access);

/// The key of the level-01 structure name of an access in temp/key2value.dat.
std::string level01_key(AccessKind kind, int access);

/// The column selection dialog without its widgets (window WindowTreeDb2): the columns of
/// one access's DCLGEN member, which of them take part in the QUERY or the WHERE selection,
/// the details of the current column, search, and what OK writes.
class ColumnSelection {
 public:
  ColumnSelection(AccessKind kind, int access, std::string member, Selection selection);

  /// The window title, in the person's language.
  std::string title() const;

  /// Parses the member file; on failure shows the parser's message and offers no columns.
  bool open(const std::string& member_path);
  /// As open, from the member's text (compression as the configuration says).
  bool open_text(std::string_view text);

  const std::vector<DclgenColumn>& columns() const { return columns_; }
  /// The tree: the root standing for the whole table, then one item per column.
  std::vector<std::string> tree_items() const;
  const std::string& status() const { return status_; }          ///< status line
  const std::string& problem_detail() const { return detail_; }  ///< text under the tree

  /// A click on a column item: marks (or clears) it and makes it the current column.
  void select(int ordinal, bool selected = true);
  /// A click on the root: marks (or clears) every column.
  void select_all(bool selected = true);
  bool is_selected(int ordinal) const;
  int selected_count() const;
  std::string selected_count_text() const;  ///< "Tot. Selected:" + count

  /// 0-based index of the column whose details are shown; nullopt before any click.
  std::optional<int> current() const { return current_; }
  /// "Name      :", "Type        :" and "Value       :" lines of the current column.
  std::string details() const;
  /// State of the "Null" box for the current column (checked when nullable).
  bool null_box() const;
  /// The person toggled the "Null" box of the 1-based column `index`; false (the view
  /// undoes the toggle) when no such column exists.
  bool set_null_box(int index, bool checked);

  /// Re-marks the columns of the stored selection, takes its not-null values and restores
  /// the structure name and the variables prefix. False when the column file cannot be read.
  bool load_previous_selection();

  /// Looks for `text` inside the column names, after the last hit when the same text is
  /// searched again; the hit becomes the current column. Nullopt, with the message shown,
  /// when nothing more matches (the next search starts again from the first column).
  std::optional<int> search(const std::string& text);

  /// "Struct Name ( level 01 ) :"
  const std::string& structure_name() const { return structure_name_; }
  /// "Variables Prefix (optional) :"
  const std::string& prefix() const { return prefix_; }
  /// False, with the message shown and the field emptied, for a line break or a NUL.
  bool set_structure_name(const std::string& text);
  bool set_prefix(const std::string& text);
  /// True when the member numbers its host variables (NAMES without COLSUFFIX(YES)).
  bool numbered() const { return numbered_; }

  /// OK: writes the marked columns into the kind's column file and the structure name
  /// under its LEV01- key (not for DELETE). A failure, with the message shown, when writing
  /// failed.
  Status ok();

 private:
  void take_parse(const DclgenParser& parser);

  AccessKind kind_;
  int access_;
  std::string member_;
  Selection selection_;
  std::vector<DclgenColumn> columns_;
  std::vector<bool> selected_;
  std::optional<int> current_;
  std::string status_;
  std::string detail_;
  bool numbered_ = false;
  std::string last_search_;
  int last_hit_ = -1;
  std::string structure_name_;
  std::string prefix_;
};

}  // namespace quorva
