#pragma once

#include "panels/user_data.h"
#include "ui/frame_dialog.h"

class QLineEdit;

namespace quorva::gui {

/// "User Data and FTP Settings" (WindowFtpData) over UserDataPanel.
class UserDataDialog : public FrameDialog {
  Q_OBJECT
 public:
  explicit UserDataDialog(QWidget* parent);

  enum Field { kIp, kUser, kPassword, kLibrary, kFolder, kName, kCompany, kFieldCount };
  QLineEdit* field(Field which) const { return fields_[which]; }

  /// "SAVE CONFIGURATION": the panel's checks and write; closes when written.
  void save();
  /// "Advanced Options".
  void open_advanced_options();

 private:
  /// Hands the field's text to the panel's rule and shows what the rule kept.
  bool apply(Field which);
  /// The field's rule on `typed`, without showing the result.
  void take(Field which, const std::string& typed);
  void show_data();

  UserDataPanel panel_;
  QLineEdit* fields_[kFieldCount] = {};
};

}  // namespace quorva::gui
