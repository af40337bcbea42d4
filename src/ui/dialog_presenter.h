#pragma once

#include <QPointer>
#include <QWidget>

#include "port/user_interface.h"

namespace quorva::gui {

/// What the person sees of the port: the error popup, a Yes/No box, the desktop's open
/// action. Bars and status texts are drawn by the dialogs that show them.
class DialogPresenter : public UserInterface {
 public:
  /// The window the popups stand over (the active one when null).
  void set_parent(QWidget* parent) { parent_ = parent; }

  void show_message(const std::string& text) override;
  bool ask_yes_no(const std::string& title, const std::string& text) override;
  void open_file(const std::string& path) override;
  void set_progress(const std::string&, int, int) override {}
  void set_status(const std::string&) override {}

 private:
  QWidget* parent() const;

  QPointer<QWidget> parent_;
};

}  // namespace quorva::gui
