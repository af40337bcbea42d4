#include <CLI/CLI.hpp>

#include <iostream>

#include "cli/cli.h"
#include "cli/commands.h"
#include "shell/working_folder.h"
#include "tagfile/latin1.h"
#include "tagfile/messages.h"

namespace quorva::cli {

void Cli::run_in_working_folder(const std::function<int()>& command) {
  FolderResult entered = enter_working_folder(choose_home(home_option));
  if (!entered.ok) {
    ui.show_message(entered.message);
    exit_code = kUsage;
    return;
  }
  if (answer_yes) ui.set_answer(true);
  if (answer_no) ui.set_answer(false);
  ScopedUserInterface port(ui);
  exit_code = command();
}

std::optional<std::string> typed_text(const std::string& utf8) {
  Latin1Result converted = utf8_to_latin1(utf8);
  if (!converted.text) Mostra_popup(converted.message);
  return converted.text;
}

bool to_latin1(std::optional<std::string>& text) {
  if (!text) return true;
  text = typed_text(*text);
  return text.has_value();
}

}  // namespace quorva::cli

int main(int argc, char** argv) {
  using namespace quorva::cli;
  Cli cli;
  CLI::App app{
      "Quorva - generator of mainframe source programs (COBOL, Easytrieve, JCL).\n"
      "Every command works in the working folder: --home DIR, else $QUORVA_HOME,\n"
      "else the per-user folder, created on first start."};
  app.set_version_flag("--version", "quorva " QUORVA_VERSION);
  app.require_subcommand(1);
  app.fallthrough();
  app.add_option("--home", cli.home_option, "Working folder to use")->type_name("DIR");
  auto* yes_flag = app.add_flag("--yes", cli.answer_yes, "Answer Yes to every question");
  app.add_flag("--no", cli.answer_no, "Answer No to every question")->excludes(yes_flag);

  add_init_command(app, cli);
  add_check_command(app, cli);
  add_generate_commands(app, cli);
  add_dclgen_command(app, cli);
  add_columns_command(app, cli);
  add_program_commands(app, cli);
  add_files_commands(app, cli);
  add_db2_commands(app, cli);
  add_user_commands(app, cli);
  add_options_commands(app, cli);

  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    app.exit(e);
    return kUsage;
  }
  return cli.exit_code;
}
