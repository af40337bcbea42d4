#include "panels/base_parameters.h"

#include <algorithm>
#include <cctype>

#include "panels/description_wrap.h"
#include "store/program_name.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

constexpr std::size_t kNameLimit = 8;

std::string name_field() {
  return bilingual("the Program Name", "il Nome Programma");
}

std::string upper_case(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

// A carriage return is fine only as part of a "\r\n" line end of the box.
bool stray_control(const std::string& text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\0') return true;
    if (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n')) return true;
  }
  return false;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

}  // namespace

BaseParameters BaseParameters::open() {
  BaseParameters panel;
  panel.apply_language_rules();
  if (std::optional<ProgramRecord> record = read_parbase(true)) {
    panel.load(*record);
  } else {
    panel.language_ = ProgramLanguage::kCobol;
    panel.switches_[static_cast<int>(Switch::kComments)] = true;
    panel.kind_ = ProgramKind::kBatch;
  }
  panel.apply_language_rules();
  return panel;
}

void BaseParameters::load(const ProgramRecord& record) {
  name_ = record.name;
  description_.clear();
  for (const std::string& line : record.description) description_ += line + " ";
  language_ = record.language;
  kind_ = record.kind.value_or(ProgramKind::kBatch);
  switches_ = record.switches;
  counts_ = record.counts;
}

void BaseParameters::apply_language_rules() {
  switch (language_) {
    case ProgramLanguage::kCobol:
      if (kind_ == ProgramKind::kMatch) kind_ = ProgramKind::kBatch;
      counts_[static_cast<int>(Count::kReport)] = 0;
      break;
    case ProgramLanguage::kEasytrieve:
      if (kind_ == ProgramKind::kRoutine) kind_ = ProgramKind::kBatch;
      switches_[static_cast<int>(Switch::kThru)] = false;
      break;
    case ProgramLanguage::kNone:
      switches_.fill(false);
      counts_.fill(0);
      break;
  }
}

bool BaseParameters::set_name(const std::string& text) {
  if (has_line_break(text)) {
    Mostra_popup(line_break_message(name_field()));
    name_.clear();
    return false;
  }
  if (!text.empty() && text[0] >= '0' && text[0] <= '9') {
    Mostra_popup(bilingual("The First Character of the Program Name cannot be :",
                           "Il primo Carattere del Nome Programma non puo' essere :") +
                 "0123456789" +
                 bilingual("<--\nwhile you insert :", "<--\nMentre e' stato inserito :") + text[0] +
                 "<--");
    return false;
  }
  if (text.size() > kNameLimit) {
    Mostra_popup(bilingual("The Program Name can hold 8 characters at most: ",
                           "Il Nome Programma puo' contenere al massimo 8 caratteri: ") +
                 text);
    return false;
  }
  std::string name = text;
  Trim_spazi(name);
  if (name.find_first_not_of(' ') == std::string::npos) name.clear();
  name = upper_case(name);
  if (!name.empty() && !is_member_name(name)) {
    Mostra_popup(member_name_message(name));
    return false;
  }
  name_ = name;
  return true;
}

void BaseParameters::set_language(ProgramLanguage language) {
  language_ = language;
  apply_language_rules();
}

bool BaseParameters::set_kind(ProgramKind kind) {
  if (kind == ProgramKind::kMatch && !match_enabled()) {
    Mostra_popup("\"2 Files Match\" is available only for Easytrieve programs.",
                 "\"2 Files Match\" e' disponibile solo per i programmi Easytrieve.");
    return false;
  }
  if (kind == ProgramKind::kRoutine && !routine_enabled()) {
    Mostra_popup("\"Routine/Module\" is available only for Cobol programs.",
                 "\"Routine/Module\" e' disponibile solo per i programmi Cobol.");
    return false;
  }
  kind_ = kind;
  return true;
}

bool BaseParameters::set_switch(Switch s, bool on) {
  if (s == Switch::kThru && on && !thru_enabled()) {
    Mostra_popup("THRU is available only for Cobol programs.",
                 "Il THRU e' disponibile solo per i programmi Cobol.");
    return false;
  }
  switches_[static_cast<int>(s)] = on;
  return true;
}

bool BaseParameters::set_count(Count c, int value) {
  if (value < 0 || value > kMaxCount) {
    Mostra_popup(
        bilingual("The number of ", "Il numero di ") + count_tag(c) +
        bilingual(" must be from 0 to 9, not: ", " deve essere compreso fra 0 e 9, non: ") +
        std::to_string(value));
    return false;
  }
  if (c == Count::kReport && value != 0 && !report_enabled()) {
    Mostra_popup("Reports are an Easytrieve feature: a Cobol program has no REPORT.",
                 "I Report sono una funzione Easytrieve: un programma Cobol non ha REPORT.");
    return false;
  }
  counts_[static_cast<int>(c)] = value;
  return true;
}

bool BaseParameters::set_description(const std::string& box_text) {
  if (stray_control(box_text)) {
    Mostra_popup(
        line_break_message(bilingual("the Program Description", "la Descrizione Programma")));
    description_.clear();
    return false;
  }
  description_ = box_text;
  const int width = description_width();
  const std::vector<std::string> cut = description_cut_words(description_, width);
  if (!cut.empty())
    Mostra_popup(bilingual("These words of the Program Description are longer than a line of " +
                               std::to_string(width) + " characters and will be cut: ",
                           "Queste parole della Descrizione Programma sono piu' lunghe di una "
                           "riga di " +
                               std::to_string(width) + " caratteri e verranno troncate: ") +
                 joined(cut));
  return true;
}

std::vector<std::string> BaseParameters::description_lines() const {
  return wrap_description(description_, description_width());
}

Status BaseParameters::confirm() const {
  if (name_.empty()) {
    const std::string message = bilingual("Warning!! You haven't inserted the Program NAME! ",
                                          "Attenzione!! Non hai inserito il NOME del Programma!");
    Mostra_popup(message);
    return Status::failure(message);
  }
  if (language_ == ProgramLanguage::kNone) {
    const std::string message = bilingual("Warning! Choose the Code Type!",
                                          "Attenzione!! Non hai scelto il tipo di Codice!");
    Mostra_popup(message);
    return Status::failure(message);
  }
  // The match reads a master and a detail file; with one, FILEIN2 would name nothing.
  if (kind_ == ProgramKind::kMatch && count(Count::kFilein) < 2) {
    const std::string message = bilingual(
        "A 2 Files Match reads two input files (the master and the detail): set INPUT "
        "FILE to 2 or more.",
        "Un Match di 2 File legge due file di input (il master e il dettaglio): "
        "indicare almeno 2 in INPUT FILE.");
    Mostra_popup(message);
    return Status::failure(message);
  }
  return write(kParbaseFile);
}

ProgramRecord BaseParameters::record() const {
  ProgramRecord record;
  record.name = name_;
  record.language = language_;
  record.kind = kind_;
  record.switches = switches_;
  record.counts = counts_;
  record.description = description_lines();
  return record;
}

Status BaseParameters::write(const std::string& destination) const {
  if (destination.empty()) {
    Scrivi_log("Impossibile scrivere Parametri - Dest file a NULL:", kNoNumber, LogKind::kError);
    return Status::failure("Impossibile scrivere Parametri - Dest file a NULL");
  }
  return write_parbase(record(), destination);
}

}  // namespace quorva
