#pragma once

#include <string>

namespace quorva::test {

struct CommandResult {
  int status = -1;     ///< exit status, -1 when the command did not end normally
  std::string output;  ///< stdout and stderr together
};

/// Runs a shell command line with no terminal on stdin and returns its status and output.
CommandResult run_command(const std::string& command_line);

/// Quotes `text` for the shell.
std::string shell_quote(const std::string& text);

}  // namespace quorva::test
