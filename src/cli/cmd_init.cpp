#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>

#include "cli/cli.h"
#include "cli/commands.h"
#include "shell/working_folder.h"

namespace quorva::cli {

void add_init_command(CLI::App& app, Cli& cli) {
  auto* cmd = app.add_subcommand("init", "Create a working folder from the shipped skeleton");
  auto folder = std::make_shared<std::string>();
  auto force = std::make_shared<bool>(false);
  cmd->add_option("DIR", *folder, "Folder to create")->required();
  cmd->add_flag("--force", *force,
                "Restore the shipped Resource files of an existing working folder");
  cmd->callback([&cli, folder, force] {
    FolderResult made = init_working_folder(*folder, *force);
    if (!made.ok) {
      cli.ui.show_message(made.message);
      cli.exit_code = kFailed;
      return;
    }
    std::cout << "Working folder ready: "
              << std::filesystem::absolute(*folder).lexically_normal().string() << '\n';
  });
}

}  // namespace quorva::cli
