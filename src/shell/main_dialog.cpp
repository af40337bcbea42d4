#include "shell/main_dialog.h"

#include "store/config_file.h"
#include "store/parbase_file.h"
#include "store/user_file.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

constexpr const char* kHelpIndex = "Resource/SD_C_QV.dat";
constexpr const char* kHelpTag = "help_avanzato_CHM";
// The transfer's own files; named here too, as the shell does not depend on the host.
constexpr const char* kTransferScript = "temp/FtpQuorva.ini";
constexpr const char* kTransferMarker = "temp/dummy_file.txt";

}  // namespace

MainButtons main_buttons() {
  const UserData data = read_user_data();
  const bool complete = !data.ipaddress.empty() && !data.tsolibrary.empty() &&
                        !data.sourcedirectory.empty() && !data.pswtso.empty() &&
                        !data.tsouser.empty() && !data.nomecognome.empty() && !data.societa.empty();
  MainButtons buttons;
  buttons.base_parameters = complete;
  // A name that is not a member name is said by GO itself, not at every start.
  buttons.generate = complete && Leggi_tag(kParbaseFile, false, "nomeprogr").has_value();
  return buttons;
}

std::string tip_file() {
  return Lingua_inglese() ? "Resource/Tips_ENG.txt" : "Resource/Tips_ITA.txt";
}

std::string tip_tag(int n) {
  std::string digits = std::to_string(n);
  if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
  return "TIP" + digits;
}

std::optional<std::string> tip_of_the_day(unsigned random) {
  const std::string file = tip_file();
  const int range = Leggi_tag_int(file, false, "TIPRANGE");
  if (range < 0) return std::nullopt;
  const int n = static_cast<int>(random % (static_cast<unsigned>(range) + 1));
  std::optional<std::string> tip = Leggi_tag(file, false, tip_tag(n));
  if (!tip) return std::nullopt;
  std::string text = *tip + "\n\n";
  for (std::size_t at = text.find("<BR>"); at != std::string::npos; at = text.find("<BR>", at))
    text.replace(at, 4, "\n");
  return text;
}

std::optional<std::string> password_reminder(std::optional<int> today_month) {
  if (!config_switch(kPasswordAlertKey) || !today_month) return std::nullopt;
  const std::string month = std::to_string(*today_month);
  if (read_config(kPasswordAlertMonthKey).value_or("") == month) return std::nullopt;
  TagEdit edit = config_edit();
  edit.set(kPasswordAlertMonthKey, month);
  // Not recorded (a full disk): shown again at the next start, which is the safe side.
  (void)edit.apply(false);
  return bilingual("Hi and Welcome!\n", "Ciao e Benvenuto!\n") +
         bilingual("Quorva remember to you that the PASSWORD must be updated.\n",
                   "Quorva ti ricorda che la PASSWORD deve essere aggiornata.\n") +
         bilingual("\n\n(to disable this notification go into the FTP Advanced Options...)",
                   "\n\n(per disabilitare questa notifica vai nelle Opzioni Avanzate FTP...)");
}

std::string credits() {
  return read_config("main_dialog_credits")
      .value_or("Quorva - free generator of mainframe source programs");
}

Result<std::string> advanced_help_file() {
  std::optional<std::string> help = Leggi_tag(kHelpIndex, false, kHelpTag);
  if (!help || !Esiste_file(*help)) {
    const std::string message =
        bilingual("Cannot find the following file:\n", "Non trovo il seguente file :\n") +
        help.value_or(std::string(kHelpIndex) + " (" + kHelpTag + ")");
    Mostra_popup(message);
    return Status::failure(message);
  }
  return *help;
}

void exit_cleanup() {
  for (const char* file : {kTransferScript, kTransferMarker, log_file_name(LogKind::kWarning)})
    (void)remove_if_present(file, false);
}

std::string create_folder_question(const std::string& installation_message,
                                   const std::string& folder) {
  if (installation_message.rfind("Programma", 0) == 0)
    return "Creare una nuova cartella di lavoro in " + folder + " (come fa quorva init) e aprirla?";
  return "Create a new working folder in " + folder + " (as quorva init does) and open it?";
}

}  // namespace quorva
