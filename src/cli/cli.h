#pragma once

#include <functional>
#include <optional>
#include <string>

#include "cli/cli_user_interface.h"
#include "cli/outcome.h"
#include "cli/switches.h"

namespace CLI {
class App;
}

namespace quorva::cli {

/// Exit statuses of every command.
constexpr int kOk = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

/// State shared by the commands of one run.
struct Cli {
  std::optional<std::string> home_option;
  bool answer_yes = false;
  bool answer_no = false;
  CliUserInterface ui;
  int exit_code = kOk;
  CLI::App* app = nullptr;  ///< the root of the command tree, once parsed

  /// Changes into the working folder, then runs `command` and keeps its exit status. A
  /// command that may write holds the working folder's lock for its whole run, so another
  /// process waits (and is told who holds it) instead of interleaving its writes. A folder
  /// that is not installed gives the installation message, how to make one, and status 2.
  void run_in_working_folder(const std::function<int()>& command);

  /// The subcommands of this run ("program set"), never their values.
  std::string command_path() const;
};

/// True for the commands that only read the working folder and need not wait for a writer.
bool read_only_command(const std::string& command_path);

/// The files' single-byte text for what the person typed (UTF-8); a character outside
/// ISO-8859-1 shows the refusal and gives nothing.
std::optional<std::string> typed_text(const std::string& utf8);

/// `typed_text` in place for an option that may be absent; false when refused.
bool to_latin1(std::optional<std::string>& text);

}  // namespace quorva::cli
