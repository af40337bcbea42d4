#pragma once

#include <array>

#include "panels/db2_details.h"
#include "ui/frame_dialog.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QThread;

namespace quorva::gui {

/// "Db2 Accesses Detail" (WindowDetDB2) over Db2Details, for one kind of access: nine rows
/// of OWNER, TABLE NAME, CURSOR, DESCRIPTION and INCLUDE, the DCLGEN options, the download
/// and the way to the column selection of the row last worked on.
class Db2DetailsDialog : public FrameDialog {
  Q_OBJECT
 public:
  Db2DetailsDialog(bool easytrieve, AccessKind kind, int count, QWidget* parent);
  ~Db2DetailsDialog() override;

  enum Column { kOwner, kTable, kCursor, kDescription, kInclude, kColumnCount };
  /// The field of `row` (1 to 9).
  QLineEdit* field(int row, Column column) const { return fields_[row - 1][column]; }
  QLineEdit* library() const { return library_; }
  QCheckBox* autofill() const { return autofill_; }
  QCheckBox* auto_owner() const { return auto_owner_; }
  QPushButton* download_button() const { return download_; }
  const Db2Details& panel() const { return panel_; }
  /// The row "Fields Select." works on: the one whose field last had the focus.
  int current_row() const { return current_row_; }
  void set_current_row(int row);

  /// OK: every field typed is taken, then the panel's questions and one write.
  void apply();
  /// Cancel: the panel's FTP check, then only the position is kept.
  void reject() override;
  /// "Enable DCLGEN": the members read, OWNER and TABLE NAME filled as the boxes say.
  void enable_dclgen();
  /// "Download DCLGEN via FTP": the members not yet in the source folder, fetched by the
  /// core's transfer on a worker thread while the window keeps repainting.
  void download_dclgen();
  bool downloading() const { return worker_ != nullptr; }
  /// "Fields Select." for the current row's member: the column selection, QUERY or WHERE.
  void select_fields(Selection selection);

 signals:
  void download_ended(bool done);

 private:
  /// Hands the typed text to the panel's rule; false when refused or not Latin-1.
  bool take(int row, Column column);
  /// Takes every field typed since it was last taken, the member first.
  bool take_typed();
  void show_rows();

  Db2Details panel_;
  std::array<std::array<QLineEdit*, kColumnCount>, 9> fields_{};
  QLineEdit* library_;
  QCheckBox* autofill_;
  QCheckBox* auto_owner_;
  QLabel* access_;
  QPushButton* fields_select_;
  QPushButton* download_;
  QPushButton* enable_;
  QPushButton* ok_;
  QPushButton* cancel_;
  int current_row_ = 1;
  QThread* worker_ = nullptr;
};

/// Opens the access details of `kind` with `count` rows, modal, from Base Parameters.
void open_db2_details(bool easytrieve, AccessKind kind, int count, QWidget* parent);

}  // namespace quorva::gui
