#include "ui/start_up.h"

#include <cstdio>
#include <cstring>

#include "host/script_run.h"
#include "port/user_interface.h"
#include "shell/main_dialog.h"
#include "shell/working_folder.h"

namespace quorva::gui {
namespace {

// The batch's client has no window: the person reads the error stream, as with the
// command line's client.
class ErrorStreamInterface : public SilentInterface {
 public:
  void show_message(const std::string& text) override {
    std::fprintf(stderr, "%s\n", text.c_str());
  }
  void set_status(const std::string& text) override { std::fprintf(stderr, "%s\n", text.c_str()); }
};

}  // namespace

bool enter_home(const std::optional<std::string>& home) {
  const HomeChoice choice = choose_home(home);
  FolderResult entered = enter_working_folder(choice);
  if (entered.ok) return true;
  ui().show_message(entered.message);
  if (choice.folder.empty()) return false;
  const std::string folder = choice.folder.string();
  if (!ui().ask_yes_no("Quorva", create_folder_question(entered.message, folder))) return false;
  FolderResult made = init_working_folder(choice.folder, false);
  if (!made.ok) {
    ui().show_message(made.message);
    return false;
  }
  entered = enter_working_folder(choice);
  if (!entered.ok) ui().show_message(entered.message);
  return entered.ok;
}

std::optional<int> run_as_transfer_client(int argc, char** argv) {
  if (argc != 5 || std::strcmp(argv[1], "--home") != 0 || std::strcmp(argv[3], "ftp-run") != 0)
    return std::nullopt;
  ErrorStreamInterface stream;
  ScopedUserInterface installed(stream);
  const FolderResult entered = enter_working_folder(choose_home(std::string(argv[2])));
  if (!entered.ok) {
    stream.show_message(entered.message);
    return 2;
  }
  return run_script_file(argv[4]) ? 0 : 1;
}

}  // namespace quorva::gui
