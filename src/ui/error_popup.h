#pragma once

#include "ui/frame_dialog.h"

namespace quorva::gui {

/// The error popup, "Warning !!!" (WindowErrorPopups): a message with an OK button and the
/// advanced help.
class ErrorPopup : public FrameDialog {
  Q_OBJECT
 public:
  ErrorPopup(const QString& message, QWidget* parent);
};

}  // namespace quorva::gui
