#include <CLI/CLI.hpp>

#include <termios.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <memory>

#include "cli/cli.h"
#include "cli/commands.h"
#include "host/host_transfer.h"
#include "host/script_run.h"
#include "store/config_file.h"
#include "tagfile/messages.h"

namespace quorva::cli {
namespace {

// With FTP_ASK_PASSWORD on, the password is typed for this transfer (not echoed on a
// terminal, one line of standard input otherwise); nullopt when the option is off.
std::optional<std::string> typed_password() {
  if (!config_switch(kAskPasswordKey)) return std::nullopt;
  const bool terminal = ::isatty(STDIN_FILENO) == 1;
  termios saved{};
  if (terminal) {
    std::cerr << bilingual("TSO password: ", "Password TSO: ") << std::flush;
    ::tcgetattr(STDIN_FILENO, &saved);
    termios quiet = saved;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    ::tcsetattr(STDIN_FILENO, TCSANOW, &quiet);
  }
  std::string line;
  std::getline(std::cin, line);
  if (terminal) {
    ::tcsetattr(STDIN_FILENO, TCSANOW, &saved);
    std::cerr << '\n';
  }
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

}  // namespace

void add_host_commands(CLI::App& app, Cli& cli) {
  auto* send =
      app.add_subcommand("send",
                         "Send the current program to its member of the TSO library by FTP, after "
                         "fetching the member already there as a backup (NAME_n.BKP)");
  send->callback([&cli] {
    cli.run_in_working_folder(
        [] { return exit_status(send_program(run_transfer_batch, typed_password())); });
  });

  auto* run = app.add_subcommand(
      "ftp-run",
      "Run an FTP script (open, user, password, recv, send, bye), as the transfer "
      "batch does");
  auto script = std::make_shared<std::string>();
  run->add_option("SCRIPT", *script, "The script, e.g. temp/FtpQuorva.ini")->required();
  run->callback([&cli, script] {
    cli.run_in_working_folder([script] { return run_script_file(*script) ? kOk : kFailed; });
  });

  CLI::App* dclgen = nullptr;
  for (CLI::App* sub :
       app.get_subcommands([](CLI::App* one) { return one->get_name() == "dclgen"; }))
    dclgen = sub;
  if (dclgen) {
    auto* download = dclgen->add_subcommand(
        "download",
        "Fetch by FTP every INCLUDE member of the DB2 accesses not yet in the "
        "source folder (MEMBER.DCL)");
    auto library = std::make_shared<std::string>();
    download
        ->add_option("--library", *library,
                     "Host library of the DCLGEN members (kept for the next time)")
        ->type_name("LIB");
    download->callback([&cli, library] {
      cli.run_in_working_folder([library] {
        std::string chosen = *library;
        if (!chosen.empty()) {
          TagEdit edit = config_edit();
          edit.set(kDclgenLibraryKey, chosen);
          if (Status kept = edit.apply(true); !kept) return exit_status(kept);
        } else {
          chosen = read_config(kDclgenLibraryKey).value_or("");
        }
        return exit_status(download_dclgens(chosen, run_transfer_batch, typed_password()));
      });
    });
  }
}

}  // namespace quorva::cli
