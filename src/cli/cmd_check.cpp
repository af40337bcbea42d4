#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>

#include "check/check_program.h"
#include "cli/cli.h"
#include "cli/commands.h"
#include "store/user_file.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva::cli {

namespace {

// A program named on the command line: a file as given, else a member of the source folder
// (".txt" added when the name has no extension).
std::string resolve_program(const std::string& program) {
  if (Esiste_file(program)) return program;
  std::string name = program;
  if (std::filesystem::path(name).extension().empty()) name += ".txt";
  std::optional<std::string> folder = read_source_directory(false);
  return folder ? *folder + name : name;
}

}  // namespace

int run_check(Cli& cli, const std::string& program, bool compile) {
  std::optional<std::string> current = current_program_file();
  std::string path;
  if (program.empty()) {
    if (!current) {
      cli.ui.show_message(bilingual(
          "No current program: set the source folder (quorva user set) and the program name "
          "(quorva program set name=...), or name the program to check.",
          "Nessun programma corrente: impostare la cartella dei sorgenti (quorva user set) e il "
          "nome del programma (quorva program set name=...), o indicare il programma da "
          "controllare."));
      return kUsage;
    }
    path = *current;
  } else {
    path = resolve_program(program);
  }
  std::optional<CheckLanguage> language;
  if (current && std::filesystem::path(path) == std::filesystem::path(*current))
    language = recorded_language();
  CheckOptions options;
  options.compile = compile;
  options.folders.resource_folder = "Resource";
  CheckReport report = check_program_file(path, language, options);
  if (!report.read) {
    cli.ui.show_message(bilingual("The program file cannot be read: ",
                                  "Impossibile leggere il file del programma: ") +
                        path);
    return kFailed;
  }
  std::cout << format_findings(report);
  for (const std::string& note : report.notes) std::cerr << "note: " << note << '\n';
  if (!report.findings.empty()) {
    std::cout << bilingual("Findings: ", "Segnalazioni: ") << report.findings.size() << " (" << path
              << ")\n";
    return kFailed;
  }
  std::cout << bilingual("Program checked, no finding: ",
                         "Programma controllato, nessuna "
                         "segnalazione: ")
            << path << '\n';
  return kOk;
}

void add_check_command(CLI::App& app, Cli& cli) {
  auto* cmd = app.add_subcommand(
      "check",
      "Check a generated program: layout, leftover placeholders, JCL, Easytrieve structure and "
      "COBOL syntax (with cobc when installed); exit 1 on any finding");
  auto program = std::make_shared<std::string>();
  auto no_compile = std::make_shared<bool>(false);
  cmd->add_option("PROGRAM", *program,
                  "Program file, or a program name in the source folder (default: the current "
                  "program)");
  cmd->add_flag("--no-compile", *no_compile, "Skip the COBOL syntax check with cobc");
  cmd->callback([&cli, program, no_compile] {
    // A file named from the shell is found before moving into the working folder.
    std::error_code ec;
    if (!program->empty() && std::filesystem::is_regular_file(*program, ec))
      *program = std::filesystem::absolute(*program, ec).lexically_normal().string();
    cli.run_in_working_folder(
        [&cli, program, no_compile] { return run_check(cli, *program, !*no_compile); });
  });
}

}  // namespace quorva::cli
