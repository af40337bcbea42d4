#pragma once

#include <map>
#include <string>

#include "panels/advanced_options.h"
#include "ui/frame_dialog.h"

class QCheckBox;
class QLineEdit;
class QTabWidget;

namespace quorva::gui {

/// "Advanced Options" (WindowAdvancedOpt) over AdvancedOptions: Main Options, FTP Options,
/// Detail Db2.
class AdvancedOptionsDialog : public FrameDialog {
  Q_OBJECT
 public:
  explicit AdvancedOptionsDialog(QWidget* parent);

  QTabWidget* pages() const { return pages_; }
  QLineEdit* descr_break() const { return descr_; }
  QLineEdit* easytrieve_break() const { return easytrieve_; }
  QLineEdit* cobol_break() const { return cobol_; }
  QLineEdit* alternative_template() const { return template_; }
  QCheckBox* tips() const { return tips_; }
  QCheckBox* decimal_comma() const { return decimal_comma_; }
  QCheckBox* password_alert() const { return password_alert_; }
  QLineEdit* host_option(const std::string& key) const { return host_.at(key); }

  /// OK: the sheet's checks and one write of the configuration; closes when written.
  void apply();
  /// The template chooser, limited to Resource/ by the sheet's rule.
  void choose_template(const QString& path);

 private:
  QWidget* main_page();
  QWidget* ftp_page();
  QWidget* db2_page();
  void show_options();
  bool take_fields();

  AdvancedOptions options_;
  QTabWidget* pages_;
  QLineEdit* descr_ = nullptr;
  QLineEdit* easytrieve_ = nullptr;
  QLineEdit* cobol_ = nullptr;
  QLineEdit* template_ = nullptr;
  QCheckBox* tips_ = nullptr;
  QCheckBox* decimal_comma_ = nullptr;
  QCheckBox* password_alert_ = nullptr;
  QCheckBox* save_descr_ = nullptr;
  QCheckBox* compression_ = nullptr;
  std::map<std::string, QLineEdit*> host_;
};

}  // namespace quorva::gui
