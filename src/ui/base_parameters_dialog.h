#pragma once

#include <map>

#include "panels/base_parameters.h"
#include "panels/base_parameters_help.h"
#include "ui/frame_dialog.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace quorva::gui {

/// "Base Parameters Selection" (WindowParBase) over BaseParameters.
class BaseParametersDialog : public FrameDialog {
  Q_OBJECT
 public:
  /// The result after "NEW Program" restored the defaults: the caller opens the panel afresh.
  static constexpr int kRenewed = 2;

  explicit BaseParametersDialog(QWidget* parent);

  const BaseParameters& panel() const { return panel_; }
  QLineEdit* name() const { return name_; }
  QComboBox* language() const { return language_; }
  QRadioButton* kind(ProgramKind which) const { return kinds_[static_cast<int>(which)]; }
  QCheckBox* switch_box(Switch which) const { return switches_[static_cast<int>(which)]; }
  QComboBox* count(Count which) const { return counts_[static_cast<int>(which)]; }
  /// The DETAILS button of a file or DB2 count (not of the parameter cards).
  QPushButton* details(Count which) const { return details_[static_cast<int>(which)]; }
  QPlainTextEdit* description() const { return description_; }
  QLabel* help_area() const { return help_; }
  QLabel* information() const { return information_; }
  QPushButton* new_program_button() const { return new_program_; }
  QPushButton* save_default_button() const { return save_default_; }
  QPushButton* key_to_value_button() const { return key_to_value_; }
  QPushButton* custom_flags_button() const { return custom_flags_; }
  QPushButton* custom_code_button() const { return custom_code_; }

  /// OK: the description taken, then the panel's checks and write; closes when written.
  void confirm();
  /// "NEW Program": the panel's question and reset; closes with kRenewed after a Yes.
  void renew();
  /// "Save as Default" on the current choices.
  void save_default();
  /// Opens File Details or the DB2 access details for `which` with the count shown.
  void open_details(Count which);
  /// Reads the information fields again (collections chosen elsewhere).
  void show_information();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* main_group();
  QWidget* description_group();
  QWidget* counts_group();
  /// Follows the help area to `widget`, when it is one of the fields.
  void watch(QWidget* widget, BaseField field);
  /// Every control from the panel's state, the language rules' enabling included.
  void show_state();
  bool take_description();

  BaseParameters panel_;
  QLineEdit* name_ = nullptr;
  QComboBox* language_ = nullptr;
  QButtonGroup* kind_group_ = nullptr;
  QRadioButton* kinds_[3] = {};
  QCheckBox* switches_[kSwitchCount] = {};
  QComboBox* counts_[kCountCount] = {};
  QPushButton* details_[kCountCount] = {};
  QPlainTextEdit* description_ = nullptr;
  QLabel* help_ = nullptr;
  QLabel* information_ = nullptr;
  QPushButton* new_program_ = nullptr;
  QPushButton* save_default_ = nullptr;
  QPushButton* key_to_value_ = nullptr;
  QPushButton* custom_flags_ = nullptr;
  QPushButton* custom_code_ = nullptr;
  std::map<QObject*, BaseField> help_fields_;
};

}  // namespace quorva::gui
