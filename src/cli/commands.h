#pragma once

namespace CLI {
class App;
}

namespace quorva::cli {

struct Cli;

// Each group of subcommands registers itself on the application.
void add_init_command(CLI::App& app, Cli& cli);

}  // namespace quorva::cli
