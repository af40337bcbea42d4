#pragma once

#include "panels/file_details.h"
#include "ui/frame_dialog.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace quorva::gui {

/// "File Details - Names and Descriptions" (WindowDetFile) over FileDetails, for one kind
/// with the count chosen in Base Parameters.
class FileDetailsDialog : public FrameDialog {
  Q_OBJECT
 public:
  FileDetailsDialog(FileKind kind, int count, QWidget* parent);

  enum Field { kName, kReportName, kDescription, kFieldCount };
  /// Row 1 to 9.
  QLineEdit* field(int row, Field which) const { return fields_[row - 1][which]; }
  QCheckBox* excel(int row) const { return excel_[row - 1]; }
  QLabel* heading() const { return heading_; }
  const FileDetails& panel() const { return panel_; }

  /// OK: every changed field through its check, then the panel's write; closes when written.
  void confirm();

 private:
  /// Hands the field's text to the panel's check and shows what the panel kept.
  bool apply(int row, Field which);
  void show_rows();

  FileDetails panel_;
  QLabel* heading_;
  QLineEdit* fields_[kDetailRows][kFieldCount] = {};
  QCheckBox* excel_[kDetailRows] = {};
};

}  // namespace quorva::gui
