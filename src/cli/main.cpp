#include <CLI/CLI.hpp>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <filesystem>
#include <iostream>
#include <string_view>
#include <vector>

#include "cli/cli.h"
#include "cli/commands.h"
#include "cli/examples.h"
#include "cli/suggest.h"
#include "shell/working_folder.h"
#include "tagfile/folder_lock.h"
#include "tagfile/latin1.h"
#include "tagfile/messages.h"

namespace quorva::cli {
namespace {

// What the person can do about a folder that is no working folder, in the language of the
// installation message before it.
std::string init_hint(const std::string& installation_message,
                      const std::filesystem::path& folder) {
  const bool italian = installation_message.rfind("Programma", 0) == 0;
  const std::string here = folder.empty() ? "" : folder.string();
  if (italian)
    return "Per creare una cartella di lavoro: quorva init DIR" +
           (here.empty() ? std::string() : " (qui: quorva init " + here + ")") +
           ", poi indicarla con --home DIR o $QUORVA_HOME.";
  return "To make a working folder: quorva init DIR" +
         (here.empty() ? std::string() : " (here: quorva init " + here + ")") +
         ", then name it with --home DIR or $QUORVA_HOME.";
}

using AddGroup = void (*)(CLI::App&, Cli&);

// In the order `quorva --help` lists them; the host group adds "dclgen download", so it
// follows the dclgen command.
constexpr AddGroup kEveryGroup[] = {
    add_init_command,    add_check_command,    add_generate_commands,    add_dclgen_command,
    add_columns_command, add_program_commands, add_files_commands,       add_db2_commands,
    add_user_commands,   add_options_commands, add_collections_commands, add_host_commands};

// The first word that is not one of the global options: the command asked for. Empty when
// there is none or an option comes first that only the full set of commands explains.
std::string_view command_word(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    if (word == "--yes" || word == "--no" || word.starts_with("--home=")) continue;
    if (word == "--home") {
      ++i;
      continue;
    }
    return word.starts_with('-') ? std::string_view() : word;
  }
  return {};
}

// A command lives for milliseconds: building the options of every other command would
// cost more than a short command's own work. Anything else (help, a mistyped command)
// gets them all, so the listing and the suggestions see every command.
std::vector<AddGroup> groups_for(std::string_view word) {
  if (word == "init") return {add_init_command};
  if (word == "check") return {add_check_command};
  if (word == "generate" || word == "preview" || word == "warnings") return {add_generate_commands};
  if (word == "dclgen" || word == "send" || word == "ftp-run")
    return {add_dclgen_command, add_host_commands};
  if (word == "columns") return {add_columns_command};
  if (word == "program") return {add_program_commands};
  if (word == "files") return {add_files_commands};
  if (word == "db2") return {add_db2_commands};
  if (word == "user") return {add_user_commands};
  if (word == "options") return {add_options_commands};
  if (word == "collections") return {add_collections_commands};
  return {std::begin(kEveryGroup), std::end(kEveryGroup)};
}

}  // namespace

bool read_only_command(const std::string& command_path) {
  static const char* const kReadOnly[] = {"program show", "user show", "options show",
                                          "columns show", "dclgen show", "preview", "warnings",
                                          "collections list", "collections show", "check",
                                          // The batch's client, run while `send` holds the lock.
                                          "ftp-run"};
  for (const char* path : kReadOnly)
    if (command_path == path) return true;
  return false;
}

std::string Cli::command_path() const {
  std::string path;
  for (const CLI::App* level = app; level;) {
    const std::vector<CLI::App*> chosen = level->get_subcommands();
    level = chosen.empty() ? nullptr : chosen.front();
    if (level) path += (path.empty() ? "" : " ") + level->get_name();
  }
  return path;
}

void Cli::run_in_working_folder(const std::function<int()>& command) {
  const HomeChoice home = choose_home(home_option);
  FolderResult entered = enter_working_folder(home);
  if (!entered.ok) {
    ui.show_message(entered.message + "\n" + init_hint(entered.message, home.folder));
    exit_code = kUsage;
    return;
  }
  if (answer_yes) ui.set_answer(true);
  if (answer_no) ui.set_answer(false);
  ScopedUserInterface port(ui);
  const std::string path = command_path();
  if (read_only_command(path)) {
    exit_code = command();
    return;
  }
  // Named by its subcommands only: the values may hold a password.
  FolderLock::set_holder_description("quorva " + path);
  FolderLock lock;
  if (!lock.held()) {
    exit_code = kFailed;
    return;
  }
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
#ifdef __GLIBC__
  // A command lives for milliseconds: files and programs of some hundred kilobytes are
  // better kept in the heap and reused than mapped afresh and faulted in each time.
  mallopt(M_MMAP_THRESHOLD, 64 << 20);
  mallopt(M_TRIM_THRESHOLD, 128 << 20);
#endif
  Cli cli;
  CLI::App app{
      "Quorva - generator of mainframe source programs (COBOL, Easytrieve, JCL).\n"
      "Every command works in the working folder: --home DIR, else $QUORVA_HOME,\n"
      "else the per-user folder, created on first start."};
  app.set_version_flag("--version", "quorva " QUORVA_VERSION);
  app.require_subcommand(1);
  app.fallthrough();
  cli.app = &app;
  app.add_option("--home", cli.home_option, "Working folder to use")->type_name("DIR");
  auto* yes_flag =
      app.add_flag("--yes", cli.answer_yes,
                   "Go ahead at every question (overwrite, erase, create a folder, save as it is)");
  app.add_flag("--no", cli.answer_no, "Go ahead at no question: what asks is not done")
      ->excludes(yes_flag);

  for (AddGroup add : groups_for(command_word(argc, argv))) add(app, cli);
  add_help_examples(app);

  // A mistyped command or option is named, with the nearest one, before CLI11 parses.
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (std::optional<std::string> unknown = unknown_word_message(app, words)) {
    std::cerr << *unknown << '\n';
    return kUsage;
  }
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
