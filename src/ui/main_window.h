#pragma once

#include "ui/frame_dialog.h"

class QLabel;
class QPushButton;

namespace quorva::gui {

class ThreadedInterface;

/// The main window (WindowMain): the three main buttons, the level title, the credits.
class MainWindow : public FrameDialog {
  Q_OBJECT
 public:
  MainWindow(ThreadedInterface& port, QWidget* parent = nullptr);

  QPushButton* user_data_button() const { return user_data_; }
  QPushButton* base_parameters_button() const { return base_parameters_; }
  QPushButton* generate_button() const { return generate_; }
  QPushButton* tutorial_button() const { return tutorial_; }
  QLabel* level() const { return level_; }

  /// What follows the first showing: the tutorial on a working folder's first start, the
  /// password reminder, then the tip of the day.
  void greet();
  /// Reads the buttons' state and the level again from the files.
  void refresh();

  void open_user_data();
  void open_base_parameters();
  void open_generate();

 private:
  ThreadedInterface& port_;
  QPushButton* user_data_;
  QPushButton* base_parameters_;
  QPushButton* generate_;
  QPushButton* tutorial_;
  QLabel* level_;
};

}  // namespace quorva::gui
