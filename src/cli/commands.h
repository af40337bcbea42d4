#pragma once

#include <string>

namespace CLI {
class App;
}

namespace quorva::cli {

struct Cli;

// Each group of subcommands registers itself on the application.
void add_init_command(CLI::App& app, Cli& cli);
void add_check_command(CLI::App& app, Cli& cli);
void add_generate_commands(CLI::App& app, Cli& cli);
void add_dclgen_command(CLI::App& app, Cli& cli);
void add_columns_command(CLI::App& app, Cli& cli);
void add_program_commands(CLI::App& app, Cli& cli);
void add_files_commands(CLI::App& app, Cli& cli);
void add_db2_commands(CLI::App& app, Cli& cli);
void add_user_commands(CLI::App& app, Cli& cli);
void add_options_commands(CLI::App& app, Cli& cli);
void add_collections_commands(CLI::App& app, Cli& cli);
/// send, ftp-run and "dclgen download" (after the dclgen command).
void add_host_commands(CLI::App& app, Cli& cli);

/// Checks a generated program (empty: the current one) and prints its findings; the exit
/// status is 0 when there is none, 1 with findings or an unreadable file, 2 with no program.
int run_check(Cli& cli, const std::string& program, bool compile);

}  // namespace quorva::cli
