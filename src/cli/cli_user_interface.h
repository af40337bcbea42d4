#pragma once

#include <optional>
#include <string>
#include <vector>

#include "port/user_interface.h"

namespace quorva::cli {

/// The command line's side of the port: messages on stderr, questions answered by
/// --yes/--no or at the terminal, progress drawn on a terminal and as plain lines elsewhere.
/// --yes means "go ahead" at every question: the few questions whose Yes holds the work
/// back (the duplicate-cursor check: "correct them now?") are answered No by it, and --no
/// or a run with no terminal answers every question so that nothing goes ahead.
class CliUserInterface : public UserInterface {
 public:
  /// Preset answer to every question (--yes or --no); nullopt asks.
  void set_answer(std::optional<bool> answer) { answer_ = answer; }

  void show_message(const std::string& text) override;
  bool ask_yes_no(const std::string& title, const std::string& text) override;
  void open_file(const std::string& path) override;
  void set_progress(const std::string& bar, int position, int range) override;
  void set_status(const std::string& text) override;

  /// True when `text` was shown as a message during this run, so a failure that returns
  /// it need not print it again.
  bool has_shown(const std::string& text) const;

 private:
  void end_progress_line();

  std::optional<bool> answer_;
  std::vector<std::string> shown_;
  std::string progress_bar_;
  int progress_percent_ = -1;
  bool progress_line_open_ = false;
};

/// Turns the panels' "\r\n" line ends into "\n" and drops trailing blank lines.
std::string plain_text(const std::string& text);

}  // namespace quorva::cli
