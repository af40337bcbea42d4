#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "port/status.h"
#include "store/detfiles_file.h"
#include "store/key2value_file.h"
#include "store/tag_edit.h"

namespace quorva {

constexpr int kDetailRows = 9;
/// Characters a FILE NAME, a REPORT NAME and a FILE DESCRIPTION hold.
constexpr std::size_t kFileNameLimit = 8;
constexpr std::size_t kReportNameLimit = 10;
constexpr std::size_t kFileDescriptionLimit = 44;

enum class FileKind { kInput, kOutput, kReport };

/// One row of the File Details panel.
struct FileRow {
  std::string name;         ///< FILE NAME, at most 8 characters
  std::string report_name;  ///< REPORT NAME, at most 10
  std::string description;  ///< FILE DESCRIPTION, at most 44
  bool excel = false;
  bool excel_enabled = false;
};

/// The `MydetailFile` writers: set the row's key(s) in temp/key2value.dat when the field is
/// filled, remove them when blank. "Filled" with no text is logged and writes nothing. The
/// forms with an edit add their changes to it, for the panel's OK to make in one write;
/// the others write at once.
namespace MydetailFile {
Status scrivi_nomefile(TagEdit& edit, FileKind kind, bool filled,
                       const std::optional<std::string>& text, int row);
Status scrivi_nometab(TagEdit& edit, bool filled, const std::optional<std::string>& text, int row);
Status scrivi_descfile(TagEdit& edit, FileKind kind, bool filled,
                       const std::optional<std::string>& text, int row);
Status scrivi_nomefile(FileKind kind, bool filled, const std::optional<std::string>& text, int row);
Status scrivi_nometab(bool filled, const std::optional<std::string>& text, int row);
Status scrivi_descfile(FileKind kind, bool filled, const std::optional<std::string>& text, int row);
}  // namespace MydetailFile

/// The File Details panel (WindowDetFile) for one kind, with rows 1 to count enabled.
class FileDetails {
 public:
  /// Reads the rows' keys and, for output files, the Excel boxes of temp/Detfiles.dat.
  static FileDetails open(FileKind kind, int count);

  FileKind kind() const { return kind_; }
  int count() const { return count_; }
  /// "Complete the informations for INPUT FILE" and the like, by language.
  std::string heading() const;
  bool row_enabled(int row) const { return row >= 1 && row <= count_; }
  /// Row 1 to 9.
  const FileRow& row(int row) const { return rows_[row - 1]; }

  /// Field setters for an enabled row; false, with a message, for a disabled row or a text
  /// over the field's limit (the field keeps its value), or a text with a line break or a
  /// NUL (the field is emptied).
  bool set_name(int row, const std::string& text);
  bool set_report_name(int row, const std::string& text);
  bool set_description(int row, const std::string& text);
  /// A click on the row's Excel box, leaving it `checked`; false, with a message, when the box
  /// is disabled (the Excel outputs must be the first output files).
  bool click_excel(int row, bool checked);
  /// Enables the Excel boxes up to row k (capped at the count), unchecks and disables the rest.
  void allow(int k);

  /// OK: writes every enabled row into temp/key2value.dat in one write and, for output
  /// files, fileout_excel into temp/Detfiles.dat, both under one hold of the folder lock.
  Status confirm() const;
  /// The highest row whose Excel box is checked, 0 if none.
  int excel_rows() const;

  static std::string quick_help();

 private:
  bool set_field(std::string FileRow::*field, int row, const std::string& text, std::size_t limit,
                 const char* label);

  FileKind kind_ = FileKind::kInput;
  int count_ = 0;
  std::array<FileRow, kDetailRows> rows_{};
};

}  // namespace quorva
