#include "panels/base_parameters.h"

#include <algorithm>

#include "panels/description_wrap.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

constexpr std::size_t kNameLimit = 8;
constexpr int kLastDescriptionLine = 999;
constexpr const char* kEmptyDescription = "DESCRIZIONE PROGRAMMA....";

constexpr const char* kSwitchTags[kSwitchCount] = {"costanti", "thru", "buffering", "stream",
                                                   "commenti", "jcl",  "rollback",  "commit"};
constexpr const char* kCountTags[kCountCount] = {"filein", "fileout", "report", "select",   "fetch",
                                                 "update", "insert",  "delete", "parametri"};

}  // namespace

const char* switch_tag(Switch s) {
  return kSwitchTags[static_cast<int>(s)];
}

const char* count_tag(Count c) {
  return kCountTags[static_cast<int>(c)];
}

const char* language_word(ProgramLanguage language) {
  switch (language) {
    case ProgramLanguage::kCobol:
      return "cobol";
    case ProgramLanguage::kEasytrieve:
      return "easytrieve";
    case ProgramLanguage::kNone:
      break;
  }
  return "";
}

const char* kind_word(ProgramKind kind) {
  switch (kind) {
    case ProgramKind::kRoutine:
      return "routine";
    case ProgramKind::kMatch:
      return "match";
    case ProgramKind::kBatch:
      break;
  }
  return "batch";
}

BaseParameters BaseParameters::open() {
  BaseParameters panel;
  panel.apply_language_rules();
  if (Esiste_file(kParbaseFile)) {
    panel.load();
  } else {
    panel.language_ = ProgramLanguage::kCobol;
    panel.switches_[static_cast<int>(Switch::kComments)] = true;
    panel.kind_ = ProgramKind::kBatch;
  }
  panel.apply_language_rules();
  return panel;
}

void BaseParameters::load() {
  name_ = Leggi_tag(kParbaseFile, false, "nomeprogr").value_or("");
  description_.clear();
  for (int n = 0; n <= kLastDescriptionLine; ++n) {
    std::optional<std::string> line =
        Leggi_tag(kParbaseFile, false, "descprogr" + std::to_string(n));
    if (!line) break;
    description_ += *line + " ";
  }
  std::optional<std::string> language = Leggi_tag(kParbaseFile, false, "linguaggio");
  language_ = !language              ? ProgramLanguage::kNone
              : *language == "cobol" ? ProgramLanguage::kCobol
                                     : ProgramLanguage::kEasytrieve;
  std::optional<std::string> kind = Leggi_tag(kParbaseFile, false, "tipoprogr");
  kind_ = kind && *kind == "match"     ? ProgramKind::kMatch
          : kind && *kind == "routine" ? ProgramKind::kRoutine
                                       : ProgramKind::kBatch;
  for (int s = 0; s < kSwitchCount; ++s)
    switches_[s] = Leggi_tag_onoff(kParbaseFile, false, kSwitchTags[s]);
  for (int c = 0; c < kCountCount; ++c) {
    // Files written before the parameter cards existed simply have none.
    const bool parameters = c == static_cast<int>(Count::kParameters);
    int value = Leggi_tag_int(kParbaseFile, !parameters, kCountTags[c]);
    if (parameters && value < 0) value = 0;
    counts_[c] = value >= 0 && value <= kMaxCount ? value : kNoCount;
  }
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

std::vector<std::string> BaseParameters::description_lines() const {
  return wrap_description(description_, description_width());
}

bool BaseParameters::confirm() const {
  if (name_.empty()) {
    Mostra_popup("Warning!! You haven't inserted the Program NAME! ",
                 "Attenzione!! Non hai inserito il NOME del Programma!");
    return false;
  }
  if (language_ == ProgramLanguage::kNone) {
    Mostra_popup("Warning! Choose the Code Type!",
                 "Attenzione!! Non hai scelto il tipo di Codice!");
    return false;
  }
  return write(kParbaseFile).ok();
}

Status BaseParameters::write(const std::string& destination) const {
  if (destination.empty()) {
    Scrivi_log("Impossibile scrivere Parametri - Dest file a NULL:", kNoNumber, LogKind::kError);
    return Status::failure("Impossibile scrivere Parametri - Dest file a NULL");
  }
  auto on_off = [this](Switch s) { return switch_on(s) ? "on" : "off"; };
  std::string text;
  auto put_count = [&](Count c) {
    append_tag_line(text, count_tag(c), std::to_string(std::max(count(c), 0)));
  };

  append_tag_line(text, "nomeprogr", name_);
  if (language_ != ProgramLanguage::kNone)
    append_tag_line(text, "linguaggio", language_word(language_));
  if (kind_) append_tag_line(text, "tipoprogr", kind_word(*kind_));
  for (Switch s : {Switch::kConstants, Switch::kThru, Switch::kBuffering, Switch::kStream,
                   Switch::kComments, Switch::kJcl})
    append_tag_line(text, switch_tag(s), on_off(s));
  for (Count c : {Count::kFilein, Count::kFileout, Count::kReport, Count::kSelect, Count::kFetch,
                  Count::kUpdate, Count::kInsert, Count::kDelete})
    put_count(c);
  append_tag_line(text, switch_tag(Switch::kRollback), on_off(Switch::kRollback));
  append_tag_line(text, switch_tag(Switch::kCommit), on_off(Switch::kCommit));
  put_count(Count::kParameters);

  std::vector<std::string> lines = description_lines();
  if (lines.empty()) lines.push_back(kEmptyDescription);
  for (std::size_t n = 0; n < lines.size(); ++n)
    append_tag_line(text, "descprogr" + std::to_string(n), lines[n]);
  return Scrivi_file(destination, true, text);
}

}  // namespace quorva
