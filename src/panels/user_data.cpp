#include "panels/user_data.h"

#include <filesystem>
#include <system_error>

#include "panels/row_field.h"
#include "port/user_interface.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace fs = std::filesystem;

namespace quorva {
namespace {

constexpr std::size_t kTsoLimit = 8;
constexpr std::size_t kNameLimit = 30;

// Empties an entry with a line break or a NUL, cuts an over-long one, then empties one with
// other control characters; each reported.
bool apply_field_rules(std::string& field, const std::string& text, const char* tag,
                       std::size_t limit, std::string_view invalid_english,
                       std::string_view invalid_italian) {
  if (!set_text_field(field, text, tag)) return false;
  bool unchanged = true;
  if (limit > 0 && field.size() > limit) {
    const std::string n = std::to_string(limit);
    Mostra_popup(bilingual(
        "You excedeed " + n + " characters !!! Truncation will be applied!",
        "Stai superando " + n + " caratteri !!! I caratteri in eccesso verranno troncati!"));
    field.resize(limit);
    unchanged = false;
  }
  if (!valid_characters(field)) {
    Mostra_popup(invalid_english, invalid_italian);
    field.clear();
    unchanged = false;
  }
  return unchanged;
}

}  // namespace

bool valid_characters(const std::string& text) {
  for (char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code <= 31) return false;
  }
  return true;
}

UserDataPanel UserDataPanel::open() {
  UserDataPanel panel;
  panel.data_ = read_user_data();
  return panel;
}

bool UserDataPanel::set_ip_address(const std::string& text) {
  return set_text_field(data_.ipaddress, text, "ipaddress");
}

bool UserDataPanel::set_source_directory(const std::string& text) {
  return set_text_field(data_.sourcedirectory, text, "sourcedirectory");
}

bool UserDataPanel::set_tso_user(const std::string& text) {
  return apply_field_rules(data_.tsouser, text, "tsouser", kTsoLimit,
                           "Inserted User is invalid and will be discharged!!!\nSorry...",
                           "L'Utente inserito non e' valido e verra' scartato!!!\nSpiacente...");
}

bool UserDataPanel::set_password(const std::string& text) {
  return apply_field_rules(data_.pswtso, text, kPasswordTag, kTsoLimit,
                           "Inserted User is invalid and will be discharged!!!\nSorry...",
                           "L'Utente inserito non e' valido e verra' scartato!!!\nSpiacente...");
}

bool UserDataPanel::set_name(const std::string& text) {
  return apply_field_rules(
      data_.nomecognome, text, "nomecognome", kNameLimit,
      "Inserted Name contains invalid characters and will be discharged",
      "Il Nominativo inserito contiene caratteri non validi e verra' scartato");
}

bool UserDataPanel::set_company(const std::string& text) {
  return apply_field_rules(data_.societa, text, "societa", kNameLimit,
                           "Inserted Company contains invalid characters and will be discharged",
                           "La Societa' inserita contiene caratteri non validi e verra' scartata");
}

bool UserDataPanel::set_library(const std::string& text) {
  return apply_field_rules(data_.tsolibrary, text, "tsolibrary", 0,
                           "Inserted folder contains invalid characters and will be discharged!!!",
                           "La cartella inserita contiene caratteri non validi e verra' "
                           "scartata!!!");
}

FolderCheck UserDataPanel::check_source_directory() {
  std::string& folder = data_.sourcedirectory;
  if (folder.empty()) return FolderCheck::kEmpty;
  if (folder.size() > kSourceDirectoryLimit) {
    Mostra_popup(bilingual("Inserted Directory is too long. \nLimit the character number to 230 "
                           "\nYour current score is:",
                           "La Directory inserita e' troppo lunga. \nLimitare il numero di "
                           "caratteri a 230 \nIl numero di caratteri inseriti e' :") +
                 std::to_string(folder.size()));
    return FolderCheck::kTooLong;
  }
  if (!valid_characters(folder)) {
    Mostra_popup("The Inserted Folder contains invalid characters and will be discharged!!!",
                 "La Cartella inserita contiene caratteri non validi e verra' scartata!!!");
    folder.clear();
    return FolderCheck::kInvalid;
  }
  if (!normalize_source_folder(folder)) {
    Mostra_popup(bilingual("You have inserted:", "Hai inserito:") + folder +
                 bilingual("\nYou must insert the folder as the following example :",
                           "\nDevi inserire una cartella come nell'esempio:") +
                 source_folder_example());
    return FolderCheck::kBadForm;
  }

  std::error_code ec;
  if (fs::is_directory(folder, ec)) return FolderCheck::kExists;
  const bool create = ui().ask_yes_no(
      bilingual("Directory Creation", "Creazione nuova Cartella"),
      bilingual("Inserted Folder doesn't exist !!! \n", "La Directory immessa non Esiste!!! \n") +
          folder + bilingual("\n\nWant you create it ?", "\n\nSi desidera Crearla ?"));
  if (!create) {
    Mostra_popup("Remember that you have to specify an Existing Directory...",
                 "Ricordati che devi specificare una Directory Esistente...");
    return FolderCheck::kDeclined;
  }
  // One level only, as asked: a missing parent is the person's to make.
  if (fs::create_directory(folder, ec) && !ec) {
    Mostra_popup("The Directory has been correctly created!!!",
                 "La Directory e' stata creata correttamente!!!");
    return FolderCheck::kCreated;
  }
  Mostra_popup(
      "The Directory has NOT been created ! \nProbably also the previous folder doesn't "
      "exist. \n\nSorry but you must manually provide with the previous structure of "
      "directories or made them one by one ...",
      "La Directory NON e' stata creata ! \nProbabilmente non esiste neanche la cartella "
      "precedente. \n\nSpiacente ma devi predisporre manualmente la struttura delle "
      "directory precedenti o crearle una per una ...");
  return FolderCheck::kNotCreated;
}

std::string UserDataPanel::summary() const {
  const bool english = Lingua_inglese();
  auto pick = [english](const char* en, const char* it) { return std::string(english ? en : it); };
  std::string text = pick(
      "You have not inserted all the required fields!! Please, provide all "
      "the informations...  \n\n",
      "Non hai inserito tutti i campi richiesti!! Per favore, fornisci tutte "
      "le informazioni...  \n\n");
  text += pick("Inserted Fields: \n", "Dettaglio Dati immessi: \n");
  auto line = [&text](const std::string& label, const std::string& value,
                      const std::string& shown) {
    text += label + shown + (value.empty() ? "<-- \n" : "\n");
  };
  line("User TSO\t:", data_.tsouser, data_.tsouser);
  line("Password TSO\t:", data_.pswtso,
       data_.pswtso.empty() ? "" : pick("Ok, Password Inserted! ;)", "Password inserita ! ;)"));
  line(pick("IP address\t:", "Indirizzo IP\t:"), data_.ipaddress, data_.ipaddress);
  line(pick("Name\t\t:", "Nominativo\t:"), data_.nomecognome, data_.nomecognome);
  line(pick("Company\t:", "Societa'\t:"), data_.societa, data_.societa);
  line(pick("TSO Library\t:", "Libreria TSO\t:"), data_.tsolibrary, data_.tsolibrary);
  line(pick("Prog. Directory\t:", "Directory Progr.\t:"), data_.sourcedirectory,
       data_.sourcedirectory);
  return text;
}

Status UserDataPanel::save() {
  switch (check_source_directory()) {
    case FolderCheck::kTooLong:
    case FolderCheck::kBadForm:
    case FolderCheck::kNotCreated:
    case FolderCheck::kDeclined:
      return Status::failure(
          bilingual("The Working Folder is not usable: nothing has been saved.",
                    "La Cartella di lavoro non e' utilizzabile: non e' stato salvato nulla."));
    default:
      break;
  }
  const std::string* values[] = {&data_.ipaddress, &data_.tsolibrary, &data_.sourcedirectory,
                                 &data_.pswtso,    &data_.tsouser,    &data_.nomecognome,
                                 &data_.societa};
  for (const std::string* value : values) {
    if (value->empty()) {
      const std::string text = summary();
      Mostra_popup(text);
      return Status::failure(text);
    }
  }
  Status written = write_user_data(data_);
  if (!written) {
    const std::string message =
        bilingual(" I cannot open the Configuration File ",
                  " Impossibile Aprire file di Configurazione ") +
        kUserDataFile +
        bilingual("!\nExit from the file or create the disk space for file allocating...",
                  "!\nUscire dal file o fornire lo spazio necessario per la creazione "
                  "del file...");
    Mostra_popup(message);
    return Status::failure(message + " (" + written.message() + ")");
  }
  return {};
}

}  // namespace quorva
