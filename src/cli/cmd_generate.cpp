#include <CLI/CLI.hpp>

#include <fstream>
#include <iostream>

#include "cli/cli.h"
#include "cli/commands.h"
#include "panels/generate_panel.h"
#include "tagfile/latin1.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva::cli {
namespace {

bool print_file(const std::string& name) {
  std::ifstream in(name, std::ios::binary);
  if (!in) return false;
  std::cout << in.rdbuf();
  return true;
}

}  // namespace

void add_generate_commands(CLI::App& app, Cli& cli) {
  auto* generate =
      app.add_subcommand("generate", "Generate the program defined in the working folder (GO)");
  auto check = std::make_shared<bool>(false);
  generate->add_flag("--check", *check,
                     "Check the generated program afterwards, as quorva check does; exit 1 on "
                     "any finding");
  generate->callback([&cli, check] {
    cli.run_in_working_folder([&cli, check] {
      GenerationResult result;
      {
        const HeldReads reads;  // one read of each file for the questions and the run
        GeneratePanel generator;
        generator.open();
        result = generator.go();
      }
      // Declined at the overwrite question: the program asked for was not written.
      if (result.status != GenerationResult::kDone) return kFailed;
      for (const std::string& warning : result.warnings)
        std::cerr << latin1_to_utf8(bilingual("Warning: ", "Attenzione: ") + warning) << '\n';
      std::cout << result.output_name << '\n';
      return *check ? run_check(cli, result.output_name, true) : kOk;
    });
  });
  app.add_subcommand("preview", "Print the generated program")->callback([&cli] {
    cli.run_in_working_folder([] {
      const std::string name = GeneratePanel::output_name(false);
      if (name.empty() || !print_file(name)) {
        Mostra_popup("Cannot find the following file:\n" + name,
                     "Non trovo il seguente file :\n" + name);
        return kFailed;
      }
      return kOk;
    });
  });
  app.add_subcommand("warnings", "Print the warnings of the last generation")->callback([&cli] {
    cli.run_in_working_folder([] {
      if (!print_file(log_file_name(LogKind::kWarning))) return kFailed;
      std::cout << '\n';
      return kOk;
    });
  });
}

}  // namespace quorva::cli
