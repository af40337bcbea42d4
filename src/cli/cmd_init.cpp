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
  auto sample = std::make_shared<bool>(false);
  cmd->add_option("DIR", *folder, "Folder to create")->required();
  cmd->add_flag("--force", *force,
                "Restore the shipped Resource files of an existing working folder");
  cmd->add_flag("--sample", *sample,
                "Also write the demo program CUSTMOV (a batch COBOL program with a SELECT and "
                "a FETCH) and its DCLGEN members CUSTOMER and ORDERS; without it no program "
                "is defined");
  cmd->callback([&cli, folder, force, sample] {
    FolderResult made =
        init_working_folder(*folder, *force, *sample ? InitContent::kSample : InitContent::kEmpty);
    if (!made.ok) {
      cli.ui.show_message(made.message);
      cli.exit_code = kFailed;
      return;
    }
    if (!made.message.empty()) cli.ui.show_message(made.message);
    std::cout << "Working folder ready: "
              << std::filesystem::absolute(*folder).lexically_normal().string() << '\n';
  });
}

}  // namespace quorva::cli
