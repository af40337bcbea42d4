#pragma once

namespace CLI {
class App;
}

namespace quorva::cli {

/// Ends the --help of `root` and of every subcommand under it with an example of its use.
void add_help_examples(CLI::App& root);

}  // namespace quorva::cli
