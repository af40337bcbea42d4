#pragma once

#include <QDialog>
#include <functional>
#include <initializer_list>
#include <string>

class QHBoxLayout;
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
  /// The row a definition window ends with: the advanced help and `left` on the left, OK
  /// (the default button, running `on_ok`) and Cancel (reject) on the right.
  struct OkCancelRow {
    QHBoxLayout* layout;
    QPushButton* ok;
    QPushButton* cancel;
  };
  OkCancelRow make_ok_cancel_row(std::initializer_list<QWidget*> left, std::function<void()> on_ok);

 private:
  std::string window_name_;
  bool restored_ = false;
};

/// Opens the advanced help page, or says why it cannot.
void open_advanced_help();

}  // namespace quorva::gui
