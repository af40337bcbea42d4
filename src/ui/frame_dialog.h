#pragma once

#include <QDialog>
#include <string>

class QPushButton;

namespace quorva::gui {

/// The frame every dialog shares: it opens where the person last left it (kept under its
/// window name in the configuration) and keeps its place on every close, OK or Cancel.
class FrameDialog : public QDialog {
  Q_OBJECT
 public:
  FrameDialog(std::string window_name, QWidget* parent);

  const std::string& window_name() const { return window_name_; }
  /// Moves to the kept position, when there is one on a screen.
  void restore_position();
  /// Keeps the current position.
  void save_position() const;

  void done(int result) override;

 protected:
  void showEvent(QShowEvent* event) override;
  /// A button that opens the advanced help page.
  QPushButton* make_help_button(const QString& label);

 private:
  std::string window_name_;
  bool restored_ = false;
};

/// Opens the advanced help page, or says why it cannot.
void open_advanced_help();

}  // namespace quorva::gui
