#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "engine/column_file.h"
#include "port/status.h"
#include "store/tag_edit.h"

namespace quorva {

/// One row of the Db2 Accesses Detail panel.
struct Db2Row {
  std::string owner;        ///< at most 20 characters
  std::string table;        ///< at most 128, as DB2 allows
  std::string cursor;       ///< at most 20
  std::string description;  ///< at most 47
  std::string include;      ///< DCLGEN member, at most 8
};

/// The `MydetailDb2` writer: prefix + row + kind letter set to `text` in temp/key2value.dat,
/// or removed when the field is blank. "Filled" with no text is logged and writes nothing.
/// The form with an edit adds its change to it, for the panel's OK to make in one write;
/// the other writes at once.
Status MydetailDb2(TagEdit& edit, AccessKind kind, bool filled, const std::string& prefix,
                   const std::optional<std::string>& text, int row);
Status MydetailDb2(AccessKind kind, bool filled, const std::string& prefix,
                   const std::optional<std::string>& text, int row);

/// The Db2 Accesses Detail panel (WindowDetDB2) for one kind, rows 1 to count enabled.
class Db2Details {
 public:
  /// Reads the rows' keys, the panel options and, when ENABLE_SAVE_DESCR_DB2 is on, the
  /// descriptions kept in the members for rows that have none.
  static Db2Details open(bool easytrieve, AccessKind kind, int count);

  AccessKind kind() const { return kind_; }
  int count() const { return count_; }
  bool row_enabled(int row) const { return row >= 1 && row <= count_; }
  const Db2Row& row(int row) const { return rows_[row - 1]; }
  /// "Insert informations about SELECT for your Cobol program." and the like.
  std::string heading() const;

  /// Field setters for an enabled row; false, with a message, for a disabled row or a text
  /// over the field's limit (the field keeps its value), or a text with a line break or a
  /// NUL (the field is emptied). A new INCLUDE brings back the description kept in its
  /// member; a TABLE NAME that came from the old member follows the new one (emptied when
  /// the new one cannot be read), and OK drops the column selections made on the old one.
  bool set_owner(int row, const std::string& text);
  bool set_table(int row, const std::string& text);
  bool set_cursor(int row, const std::string& text);
  bool set_description(int row, const std::string& text);
  bool set_include(int row, const std::string& text);

  bool autofill() const { return autofill_; }
  bool auto_owner() const { return auto_owner_; }
  const std::string& dclgen_library() const { return dclgen_library_; }
  void set_autofill(bool on) { autofill_ = on; }
  void set_auto_owner(bool on) { auto_owner_ = on; }
  /// False, with the message shown and the field emptied, for a line break or a NUL.
  bool set_dclgen_library(const std::string& library);

  /// OK: the FTP check and the duplicate-cursor questions, then the options (one write of
  /// the configuration), every row (one write of temp/key2value.dat) and the descriptions
  /// kept in the members; the rows whose member changed lose their column selections. Then
  /// each TABLE NAME that is not the table its member declares is shown as a warning.
  /// False when a question keeps the panel open (nothing written); a failure when a write
  /// failed.
  Result<bool> confirm();
  /// The warnings of the rows whose TABLE NAME differs from their member's declaration.
  std::vector<std::string> table_warnings() const;
  /// Cancel: the FTP check only; false keeps the panel open. Writes nothing.
  bool cancel() const;

  /// "Enable DCLGEN": reads the INCLUDE member of every row; with their boxes checked,
  /// fills OWNER and TABLE NAME and copies the first OWNER, so the rows show what OK will
  /// write. Says how many members were read and names each missing or unreadable one.
  /// The number of members read.
  int enable_dclgens();
  /// The members "Download DCLGEN via FTP" fetches: those of the saved accesses of every
  /// kind and those of this panel's rows, each once.
  std::vector<std::string> download_members() const;
  /// "Fields Select." on a row: the file of its INCLUDE member; nullopt, with the message
  /// shown, when the row names none or its file is not there.
  std::optional<std::string> fields_member(int row) const;

  /// Fills empty OWNER and TABLE NAME fields from the INCLUDE members' table declarations.
  void fill_from_dclgen();
  /// Copies the first row's OWNER into every empty OWNER below it.
  void copy_first_owner();

  /// The DCLGEN member file of an INCLUDE name: source folder + name + ".DCL".
  static std::string member_path(const std::string& include);
  static std::string quick_help();

 private:
  // Shows `problem` for an enabled row; true when there is one.
  bool refused(int row, const std::string& text, const std::string& problem) const;
  bool set_field(std::string Db2Row::*field, int row, const std::string& text, std::size_t limit,
                 const char* label);
  bool has_duplicate_cursor() const;
  Status write_rows() const;
  Status keep_descriptions() const;
  Status drop_old_member_columns() const;

  bool easytrieve_ = false;
  AccessKind kind_ = AccessKind::kSelect;
  int count_ = 0;
  std::array<Db2Row, 9> rows_{};
  std::array<std::string, 9> saved_include_{};  // as temp/key2value.dat holds it
  bool autofill_ = false;
  bool auto_owner_ = false;
  std::string dclgen_library_;
};

}  // namespace quorva
