#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace quorva::test {

struct CommandResult {
  int status = -1;     ///< exit status, -1 when the command did not end normally
  std::string output;  ///< stdout and stderr together
};

/// Runs a shell command line with no terminal on stdin and returns its status and output.
CommandResult run_command(const std::string& command_line);

/// Quotes `text` for the shell.
std::string shell_quote(const std::string& text);

/// Runs the quorva binary with `arguments` (shell words), and `input` on its stdin.
CommandResult quorva(const std::string& arguments, const std::string& input = "");

/// A working folder made by `quorva init` inside a temporary folder: empty, or holding the
/// sample program and its members (`init --sample`).
class QuorvaHome {
 public:
  enum Content { kEmpty, kSample };
  explicit QuorvaHome(Content content = kEmpty);
  /// quorva with this folder as --home.
  CommandResult run(const std::string& arguments, const std::string& input = "") const;
  /// Complete user data, the source folder being the folder's programs/.
  void set_user_data() const;

  TempWorkingFolder scratch;
  std::filesystem::path path;
};

/// One command of a session: its arguments, exit status, a text its output holds, and what
/// it reads on stdin.
struct CommandStep {
  std::string args;
  int status;
  std::string says;
  std::string input = "";
};

/// Runs and checks each step, with `home` as --home unless null; returns every output.
std::string expect_steps(const QuorvaHome* home, const std::vector<CommandStep>& steps);

}  // namespace quorva::test
