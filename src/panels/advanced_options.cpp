#include "panels/advanced_options.h"

#include <cctype>
#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "port/user_interface.h"
#include "store/program_name.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace fs = std::filesystem;

namespace quorva {
namespace {

// A text field with a line break or a NUL is emptied and reported.
bool emptied(std::string& text, const char* key) {
  if (!has_line_break(text)) return false;
  Mostra_popup(line_break_message(key));
  text.clear();
  return true;
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
  options.descr_break_point = std::to_string(read_break_point(kDescriptionBreak));
  options.easytrieve_break_point = std::to_string(read_break_point(kEasytrieveBreak));
  options.cobol_break_point = std::to_string(read_break_point(kCobolBreak));
  options.tips_and_tricks = config_switch(kTipsAndTricksKey);
  options.decimal_comma = config_switch(kDecimalCommaKey);
  options.stored_template_ = template_name();
  options.alternative_template = options.stored_template_;
  options.password_alert = config_switch(kPasswordAlertKey);
  options.month_password_alert = read_config(kPasswordAlertMonthKey).value_or("");
  for (const char* key : kHostKeys) options.host[key] = read_config(key).value_or("");
  options.save_descr_db2 = config_switch(kSaveDescriptionsDb2Key);
  options.cobol_vars_compression = config_switch(kCobolVarsCompressionKey);
  return options;
}

void AdvancedOptions::default_descr_break_point() {
  descr_break_point = std::to_string(kDescriptionBreak.fallback);
}

void AdvancedOptions::default_easytrieve_break_point() {
  easytrieve_break_point = std::to_string(kEasytrieveBreak.fallback);
}

void AdvancedOptions::default_cobol_break_point() {
  cobol_break_point = std::to_string(kCobolBreak.fallback);
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
  return fs::is_regular_file(fs::path(kTemplateFolder) / name, ec);
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
  ui().open_file(kTemplateFolder + alternative_template);
}

Result<bool> AdvancedOptions::apply() {
  bool clamped = false;
  const int descr =
      clamp_reported(kDescriptionBreak, descr_break_point, clamped,
                     "> The Break point value must be within the proper range... not:",
                     "> Il valore di rottura deve essere contenuto nel giusto range... non:");
  const int easytrieve = clamp_reported(
      kEasytrieveBreak, easytrieve_break_point, clamped,
      "> The Break point value for EASYTRIEVE must be within the proper range... not:",
      "> Il valore di rottura per EASYTRIEVE deve essere contenuto nel giusto range... non:");
  const int cobol = clamp_reported(
      kCobolBreak, cobol_break_point, clamped,
      "> The Break point value for COBOL must be within the proper range... not:",
      "> Il valore di rottura per COBOL deve essere contenuto nel giusto range... non:");
  descr_break_point = std::to_string(descr);
  easytrieve_break_point = std::to_string(easytrieve);
  cobol_break_point = std::to_string(cobol);

  // An unchanged name is not checked again: the shipped default may be absent.
  bool refused = emptied(alternative_template, kAlternativeTemplateKey);
  const bool template_changed = alternative_template != stored_template_;
  if (template_changed && !template_acceptable(alternative_template)) {
    Mostra_popup(bilingual("> The Alternative file for the Main Pseudo Source Code is invalid, or "
                           "not .TXT, or not found...:",
                           "> Il file Alternativo per il Sorgente Principale di Pseudo-Codice non "
                           "esiste ,o non e' .TXT,o non e' valido...:") +
                 alternative_template);
    alternative_template = stored_template_;
    refused = true;
  }
  refused |= emptied(month_password_alert, kPasswordAlertMonthKey);
  for (auto& [key, value] : host) {
    if (std::optional<std::string> refusal = host_option_refusal(key, value)) {
      Mostra_popup(*refusal);
      value = read_config(key.c_str()).value_or("");
      refused = true;
    }
  }

  TagEdit options = config_edit();
  options.set(kDescriptionBreak.key, descr_break_point);
  options.set(kEasytrieveBreak.key, easytrieve_break_point);
  options.set(kCobolBreak.key, cobol_break_point);
  options.set(kTipsAndTricksKey, switch_word(tips_and_tricks));
  options.set(kDecimalCommaKey, switch_word(decimal_comma));
  if (alternative_template != stored_template_)
    options.set(kAlternativeTemplateKey, alternative_template);
  options.set(kPasswordAlertKey, switch_word(password_alert));
  if (!month_password_alert.empty()) options.set(kPasswordAlertMonthKey, month_password_alert);
  for (const auto& [key, value] : host) options.set_or_remove(key, value);
  options.set(kSaveDescriptionsDb2Key, switch_word(save_descr_db2));
  options.set(kCobolVarsCompressionKey, switch_word(cobol_vars_compression));
  if (Status written = options.apply(true); !written) return written;
  stored_template_ = alternative_template;
  return !clamped && !refused;
}

std::optional<std::string> AdvancedOptions::host_option_refusal(const std::string& key,
                                                                const std::string& value) {
  if (value.empty()) return std::nullopt;
  auto number_within = [&value](long low, long high) {
    if (value.size() > 6 || value.find_first_not_of("0123456789") != std::string::npos)
      return false;
    const long number = std::stol(value);
    return number >= low && number <= high;
  };
  auto one_of = [&value](std::initializer_list<const char*> words) {
    for (const char* word : words)
      if (value == word) return true;
    return false;
  };
  bool good = true;
  if (key == kHostLreclKey)
    good = number_within(1, 32760);
  else if (key == kHostBlksizeKey)
    good = number_within(0, 32760);
  else if (key == kHostTimeoutKey)
    good = number_within(1, 3600);
  else if (key == kHostRecfmKey)
    good = one_of({"F", "FB", "FBA", "FA", "V", "VB", "VBA", "VA", "U"});
  else if (key == kHostTrailingBlanksKey || key == kAskPasswordKey)
    good = one_of({"ON", "OFF", "on", "off"});
  else if (key == kHostTlsKey)
    good = one_of({"OFF", "EXPLICIT", "IMPLICIT"});
  else if (key == kHostJclLibraryKey || key == kHostCopyLibraryKey)
    good = is_library_name(value);
  else if (key == kHostCodePageKey)
    good =
        value.find('/') != std::string::npos && value.find_first_of(" ,()'\"") == std::string::npos;
  good = good && !has_line_break(value);
  if (good) return std::nullopt;
  return bilingual("> The FTP option " + key + " is not valid, the previous value is kept:",
                   "> L'opzione FTP " + key + " non e' valida, resta il valore precedente:") +
         value;
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
