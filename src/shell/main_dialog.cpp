#include "shell/main_dialog.h"

#include "port/user_interface.h"
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

TutorialTexts tutorial_texts() {
  TutorialTexts texts;
  texts.messages = {
      bilingual("Welcome to Quorva!\n\nQuorva writes complete mainframe programs, COBOL or "
                "Easytrieve with their JCL, from a few choices of yours. The next three "
                "messages show the way from an empty working folder to a program on the host.",
                "Benvenuto in Quorva!\n\nQuorva scrive programmi mainframe completi, COBOL o "
                "Easytrieve con il loro JCL, a partire da poche scelte. I prossimi tre "
                "messaggi mostrano la strada da una cartella di lavoro vuota a un programma "
                "sull'host."),
      bilingual("1 - The three main buttons\n\nFirst set the FTP data: press \"User Data and "
                "FTP Settings\", fill in the host IP, TSO user and password, the TSO library, "
                "the working folder for the generated programs, your name and company, and "
                "press SAVE CONFIGURATION. Then \"Program Base Parameters\" is enabled, and "
                "\"Generate the Program\" as soon as the program has a name.",
                "1 - I tre pulsanti principali\n\nPer prima cosa imposta i dati FTP: premi "
                "\"Dati Utente e Impostazioni FTP\", inserisci IP dell'host, utente e password "
                "TSO, la libreria TSO, la cartella di lavoro dei programmi generati, nome e "
                "societa', e premi SALVA CONFIGURAZIONE. Allora si abilita \"Parametri Base del "
                "Programma\", e \"Genera il Programma\" appena il programma ha un nome."),
      bilingual("2 - Configure the COBOL or Easytrieve program\n\nGive the program its name "
                "(at most 8 characters), description, language and kind: batch, routine or "
                "two-file match. Then its input and output files, reports and DB2 accesses "
                "(SELECT, FETCH, UPDATE, INSERT, DELETE) with the DCLGEN member of each table "
                "and the columns wanted. The command line does the same: quorva program set, "
                "quorva files, quorva db2, quorva columns.",
                "2 - Configura il programma COBOL o Easytrieve\n\nDai al programma il nome "
                "(al massimo 8 caratteri), la descrizione, il linguaggio e il tipo: batch, "
                "routine o match di due file. Poi i file di input e di output, i report e gli "
                "accessi DB2 (SELECT, FETCH, UPDATE, INSERT, DELETE) con il membro DCLGEN di "
                "ogni tabella e le colonne volute. La riga di comando fa lo stesso: quorva "
                "program set, quorva files, quorva db2, quorva columns."),
      bilingual("3 - Generate the code\n\nIn \"Generate the Program\" press GO !!!!: the "
                "program is written into your working folder as NAME.txt. Look at it with "
                "\"Program Preview\", read the warnings, and send it to the TSO library with "
                "\"Transfer the Program via FTP !!!\": the member already there is first "
                "fetched as a backup. From the command line: quorva generate, quorva send.",
                "3 - Genera il codice\n\nIn \"Genera il Programma\" premi VAI !!!!: il "
                "programma e' scritto nella cartella di lavoro come NOME.txt. Guardalo con "
                "\"Anteprima Programma\", leggi i warning e invialo alla libreria TSO con "
                "\"Trasferisci il Programma via FTP !!!\": il membro gia' presente e' prima "
                "scaricato come copia di riserva. Da riga di comando: quorva generate, quorva "
                "send."),
  };
  texts.title = "Quorva Tutorial";
  texts.question = bilingual("Do you want to open the Examples?", "Vuoi aprire gli Esempi?");
  return texts;
}

bool tutorial_due() {
  return !config_switch(kTutorialShownKey);
}

void run_tutorial() {
  const TutorialTexts texts = tutorial_texts();
  for (const std::string& message : texts.messages) ui().show_message(message);
  if (ui().ask_yes_no(texts.title, texts.question)) {
    if (Esiste_file(kExamplesFile))
      ui().open_file(kExamplesFile);
    else
      Mostra_popup(
          bilingual("Cannot find the following file:\n", "Non trovo il seguente file :\n") +
          kExamplesFile);
  }
  TagEdit edit = config_edit();
  edit.set(kTutorialShownKey, switch_word(true));
  // Not recorded (a read-only folder): shown again at the next start, which does no harm.
  (void)edit.apply(false);
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
