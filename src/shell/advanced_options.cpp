#include "shell/advanced_options.h"

#include <cctype>
#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "tagfile/messages.h"
#include "tagfile/folder_lock.h"
#include "tagfile/tag_file.h"
#include "port/user_interface.h"

namespace fs = std::filesystem;

namespace quorva {
namespace {

constexpr const char* kConfig = "Resource/QVconfig.ini";

bool yes(const char* key) {
  return Leggi_tag_int(kConfig, false, key) > 0;
}

Status store(const char* key, const std::string& value) {
  return Modifica_tag(kConfig, true, true, key, value);
}

// Clamps the typed value into the range, reporting a clamped one; returns what is stored.
int clamp_reported(const BreakPoint& point, const std::string& typed, bool& clamped,
                   std::string_view english, std::string_view italian) {
  const int value = static_cast<int>(std::strtol(typed.c_str(), nullptr, 10));
  if (value >= point.low && value <= point.high) return value;
  Mostra_popup(bilingual(english, italian) + typed);
  clamped = true;
  return value < point.low ? point.low : point.high;
}

bool ends_with_txt(const std::string& name) {
  if (name.size() < 4) return false;
  std::string tail = name.substr(name.size() - 4);
  for (char& c : tail) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return tail == ".txt";
}

}  // namespace

int read_break_point(const BreakPoint& point) {
  const int value = Leggi_tag_int(kConfig, false, point.key);
  return value < 1 ? point.fallback : value;
}

std::optional<int> current_month() {
  const std::time_t now = std::time(nullptr);
  if (now == static_cast<std::time_t>(-1)) return std::nullopt;
  std::tm local{};
#ifdef _WIN32
  if (localtime_s(&local, &now) != 0) return std::nullopt;
#else
  if (!localtime_r(&now, &local)) return std::nullopt;
#endif
  return local.tm_mon + 1;
}

AdvancedOptions AdvancedOptions::open() {
  AdvancedOptions options;
  options.descr_break_point = std::to_string(read_break_point(kDescrBreakPoint));
  options.easytrieve_break_point = std::to_string(read_break_point(kEasytrieveBreakPoint));
  options.cobol_break_point = std::to_string(read_break_point(kCobolBreakPoint));
  options.tips_and_tricks = yes("TIPS_AND_TRICKS");
  options.stored_template_ =
      Leggi_tag(kConfig, false, "ALTERNATIVE_QUORMEM_FILE").value_or(kDefaultTemplateName);
  options.alternative_template = options.stored_template_;
  options.password_alert = yes("ENABLE_PASSWORD_ALERT");
  options.month_password_alert = Leggi_tag(kConfig, false, "MONTH_PASSWORD_ALERT").value_or("");
  options.save_descr_db2 = yes("ENABLE_SAVE_DESCR_DB2");
  options.cobol_vars_compression = yes("ENABLE_COBOL_VARS_COMPRESSION");
  return options;
}

void AdvancedOptions::default_descr_break_point() {
  descr_break_point = std::to_string(kDescrBreakPoint.fallback);
}

void AdvancedOptions::default_easytrieve_break_point() {
  easytrieve_break_point = std::to_string(kEasytrieveBreakPoint.fallback);
}

void AdvancedOptions::default_cobol_break_point() {
  cobol_break_point = std::to_string(kCobolBreakPoint.fallback);
}

void AdvancedOptions::default_alternative_template() {
  alternative_template = kDefaultTemplateName;
}

bool AdvancedOptions::set_password_alert(bool on, std::optional<int> today_month) {
  if (on && !password_alert) {
    if (!today_month) {
      Mostra_popup(
          "Routine error inside the current date reading process!! Impossible to "
          "proceed..",
          "Errore nella Routine di lettura della data di oggi!! Impossibile "
          "Procedere..");
      return false;
    }
    month_password_alert = std::to_string(*today_month);
  }
  password_alert = on;
  return true;
}

bool AdvancedOptions::template_acceptable(const std::string& name) {
  if (!ends_with_txt(name) || name.find_first_of("/\\") != std::string::npos) return false;
  std::error_code ec;
  return fs::is_regular_file(fs::path("Resource") / name, ec);
}

bool AdvancedOptions::choose_template_file(const std::string& path) {
  std::error_code ec;
  const fs::path resource = fs::absolute("Resource", ec).lexically_normal();
  const fs::path chosen = fs::absolute(path, ec).lexically_normal();
  if (chosen.parent_path() != resource) {
    Mostra_popup(bilingual("Internal ERROR - Quormem files must be inside this directory:\n",
                           "Errore Interno - I file Quormem devono stare in questa directory:\n") +
                 resource.string() +
                 bilingual("\n\nSelected Filepath:\n", "\n\nPercorso Selezionato:\n") + path);
    return false;
  }
  alternative_template = chosen.filename().string();
  return true;
}

void AdvancedOptions::edit_current_template() const {
  ui().open_file("Resource/" + alternative_template);
}

bool AdvancedOptions::apply() {
  bool clamped = false;
  const int descr =
      clamp_reported(kDescrBreakPoint, descr_break_point, clamped,
                     "> The Break point value must be within the proper range... not:",
                     "> Il valore di rottura deve essere contenuto nel giusto range... non:");
  const int easytrieve = clamp_reported(
      kEasytrieveBreakPoint, easytrieve_break_point, clamped,
      "> The Break point value for EASYTRIEVE must be within the proper range... not:",
      "> Il valore di rottura per EASYTRIEVE deve essere contenuto nel giusto range... non:");
  const int cobol = clamp_reported(
      kCobolBreakPoint, cobol_break_point, clamped,
      "> The Break point value for COBOL must be within the proper range... not:",
      "> Il valore di rottura per COBOL deve essere contenuto nel giusto range... non:");
  descr_break_point = std::to_string(descr);
  easytrieve_break_point = std::to_string(easytrieve);
  cobol_break_point = std::to_string(cobol);

  // An unchanged name is not checked again: the shipped default may be absent.
  const bool template_changed = alternative_template != stored_template_;
  bool refused = false;
  if (template_changed && !template_acceptable(alternative_template)) {
    Mostra_popup(bilingual("> The Alternative file for the Main Pseudo Source Code is invalid, or "
                           "not .TXT, or not found...:",
                           "> Il file Alternativo per il Sorgente Principale di Pseudo-Codice non "
                           "esiste ,o non e' .TXT,o non e' valido...:") +
                 alternative_template);
    alternative_template = stored_template_;
    refused = true;
  }

  FolderLock lock;
  if (!lock.held()) return false;
  Status written = store(kDescrBreakPoint.key, descr_break_point);
  written &= store(kEasytrieveBreakPoint.key, easytrieve_break_point);
  written &= store(kCobolBreakPoint.key, cobol_break_point);
  written &= store("TIPS_AND_TRICKS", tips_and_tricks ? "ON" : "OFF");
  if (template_changed && !refused) {
    written &= store("ALTERNATIVE_QUORMEM_FILE", alternative_template);
    if (written) stored_template_ = alternative_template;
  }
  written &= store("ENABLE_PASSWORD_ALERT", password_alert ? "ON" : "OFF");
  if (!month_password_alert.empty())
    written &= store("MONTH_PASSWORD_ALERT", month_password_alert);
  written &= store("ENABLE_SAVE_DESCR_DB2", save_descr_db2 ? "ON" : "OFF");
  written &= store("ENABLE_COBOL_VARS_COMPRESSION", cobol_vars_compression ? "ON" : "OFF");
  return written && !clamped && !refused;
}

std::string AdvancedOptions::main_page_warning() {
  return bilingual(
      "Modifying those Options can alterate the Generated Code.It's suggested to be "
      "careful about.",
      "Modificare queste Opzioni puo' alterare il Codice Generato.Si consiglia di "
      "fare attenzione.");
}

std::string AdvancedOptions::ftp_page_warning() {
  return bilingual(
      "Modifying those Options can alterate the FTP operations.It's suggested to be "
      "careful about.",
      "Modificare queste Opzioni puo' alterare le operazioni FTP.Si consiglia di "
      "fare attenzione.");
}

}  // namespace quorva
