#pragma once

#include <string>

#include "ui/frame_dialog.h"

class QLabel;
class QLineEdit;

namespace quorva::gui {

class ProgramView;

/// "Program Preview" (WindowPreview): the generated program in a ProgramView, with search
/// and a button that hands the file to the desktop's editor.
class PreviewDialog : public FrameDialog {
  Q_OBJECT
 public:
  /// `path`: the generated program; `text` its bytes.
  PreviewDialog(const std::string& path, const std::string& text, QWidget* parent);

  /// The preview of the current program; null when there is none (said by the panel).
  static PreviewDialog* open_current(QWidget* parent);

  ProgramView* view() const { return view_; }
  void find_next();

 private:
  std::string path_;
  ProgramView* view_;
  QLineEdit* search_;
  QLabel* summary_;
};

}  // namespace quorva::gui
