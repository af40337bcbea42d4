#include "ui/start_up.h"

#include "port/user_interface.h"
#include "shell/main_dialog.h"
#include "shell/working_folder.h"

namespace quorva::gui {

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

}  // namespace quorva::gui
