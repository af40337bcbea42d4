#include "panels/db2_details.h"

#include <algorithm>
#include <set>

#include "dclgen/dclgen_member.h"
#include "panels/file_details.h"
#include "panels/row_field.h"
#include "tagfile/folder_lock.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"
#include "port/user_interface.h"

namespace quorva {
namespace {

constexpr const char* kConfig = "Resource/QVconfig.ini";
constexpr const char* kTransferMark = "temp/dummy_file.txt";
constexpr std::size_t kNameLimit = 20;
constexpr std::size_t kDescriptionLimit = 47;
constexpr std::size_t kIncludeLimit = 8;

std::string key(const char* prefix, int row, AccessKind kind) {
  return prefix + std::to_string(row) + access_letter(kind);
}

bool keep_descriptions_enabled() {
  return Leggi_tag_int(kConfig, false, "ENABLE_SAVE_DESCR_DB2") > 0;
}

// Asked on OK and on Cancel while a transfer still runs; true lets the panel close.
bool transfer_check() {
  if (!Esiste_file(kTransferMark)) return true;
  return ui().ask_yes_no(
      bilingual("FTP check", "Controllo FTP"),
      bilingual("FTP transfer hasn't finished yet...\nWould you like to exit anyway ?",
                "Il trasferimento FTP non e' ancora terminato...\nVuoi uscire ugualmente ?"));
}

}  // namespace

Status MydetailDb2(AccessKind kind, bool filled, const std::string& prefix,
                   const std::optional<std::string>& text, int row) {
  if (filled && !text) {
    Scrivi_log("MydetailDb2 - _scrivi parse owner:Valore non valido a Null", row, LogKind::kError);
    return Status::failure("Valore non valido a Null");
  }
  const std::string name = key(prefix.c_str(), row, kind);
  if (filled)
    return Modifica_tag(kKey2ValueFile, true, true, name, *text);
  return Cancella_tag(kKey2ValueFile, true, name);
}

std::string Db2Details::member_path(const std::string& include) {
  return Leggi_tag("Resource/User.dat", false, "sourcedirectory").value_or("") + include + ".DCL";
}

Db2Details Db2Details::open(bool easytrieve, AccessKind kind, int count) {
  Db2Details panel;
  panel.easytrieve_ = easytrieve;
  panel.kind_ = kind;
  panel.count_ = std::clamp(count, 0, 9);
  const bool kept = keep_descriptions_enabled();
  for (int n = 1; n <= 9; ++n) {
    Db2Row& row = panel.rows_[n - 1];
    auto read = [&](const char* prefix) {
      return Leggi_tag(kKey2ValueFile, false, key(prefix, n, kind)).value_or("");
    };
    row.owner = read("T-");
    row.table = read("TABEL-");
    row.cursor = read("CURS-");
    row.description = read("DESCDB2-");
    row.include = read("INCLU-");
    if (kept && row.description.empty() && !row.include.empty())
      row.description =
          read_kept_description(member_path(row.include), access_letter(kind)).value_or("");
  }
  panel.autofill_ = Leggi_tag_onoff(kConfig, false, "Autofill_db2");
  panel.auto_owner_ = Leggi_tag_onoff(kConfig, false, "AutoOwner_db2");
  panel.dclgen_library_ = Leggi_tag(kConfig, false, "download_dclgen_lib").value_or("");
  return panel;
}

std::string Db2Details::heading() const {
  const std::string language = easytrieve_ ? "Easytrieve" : "Cobol";
  return bilingual("Insert informations about ", "Inserisci le informazioni per ") +
         access_word(kind_) + bilingual(" for your ", " di un programma in ") + language +
         bilingual(" program.", ".");
}

bool Db2Details::field_allowed(int row, const std::string& text, std::size_t limit,
                               const char* label) const {
  return row_field_allowed(row_enabled(row), row, count_, text, limit, label);
}

bool Db2Details::set_owner(int row, const std::string& text) {
  if (!field_allowed(row, text, kNameLimit, "OWNER")) return false;
  rows_[row - 1].owner = text;
  return true;
}

bool Db2Details::set_table(int row, const std::string& text) {
  if (!field_allowed(row, text, kNameLimit, "TABLE NAME")) return false;
  rows_[row - 1].table = text;
  return true;
}

bool Db2Details::set_cursor(int row, const std::string& text) {
  if (!field_allowed(row, text, kNameLimit, "CURSOR")) return false;
  rows_[row - 1].cursor = text;
  return true;
}

bool Db2Details::set_description(int row, const std::string& text) {
  if (!field_allowed(row, text, kDescriptionLimit, "DESCRIPTION")) return false;
  rows_[row - 1].description = text;
  return true;
}

bool Db2Details::set_include(int row, const std::string& text) {
  if (!field_allowed(row, text, kIncludeLimit, "INCLUDE")) return false;
  Db2Row& target = rows_[row - 1];
  target.include = text;
  if (keep_descriptions_enabled() && target.description.empty() && !text.empty())
    target.description =
        read_kept_description(member_path(text), access_letter(kind_)).value_or("");
  return true;
}

bool Db2Details::has_duplicate_cursor() const {
  std::set<std::string> seen;
  for (int n = 1; n <= count_; ++n) {
    const std::string& cursor = rows_[n - 1].cursor;
    if (!cursor.empty() && !seen.insert(cursor).second) return true;
  }
  return false;
}

void Db2Details::fill_from_dclgen() {
  for (int n = 1; n <= count_; ++n) {
    Db2Row& row = rows_[n - 1];
    if (row.include.empty() || (!row.owner.empty() && !row.table.empty())) continue;
    std::optional<DclgenTableInfo> info = read_table_info(member_path(row.include));
    if (!info) continue;
    if (row.owner.empty()) row.owner = info->owner;
    if (row.table.empty()) row.table = info->table;
  }
}

void Db2Details::copy_first_owner() {
  if (count_ < 1 || rows_[0].owner.empty()) return;
  for (int n = 2; n <= count_; ++n)
    if (rows_[n - 1].owner.empty()) rows_[n - 1].owner = rows_[0].owner;
}

bool Db2Details::cancel() const {
  return transfer_check();
}

bool Db2Details::confirm() {
  if (!transfer_check()) return false;
  if (!remove_if_present(kTransferMark, true)) return false;
  if (has_duplicate_cursor() &&
      ui().ask_yes_no(bilingual("Internal check", "Check interno"),
                      bilingual("You have used the same name for more than 1 cursor...\nWould "
                                "you like to correct them now?",
                                "Hai usato lo stesso nome per piu' di 1 cursore...\nVuoi "
                                "correggerli adesso?")))
    return false;
  FolderLock lock;
  if (!lock.held()) return false;
  Status written;
  if (!dclgen_library_.empty())
    written &= Modifica_tag(kConfig, true, true, "download_dclgen_lib", dclgen_library_);
  written &= Modifica_tag(kConfig, true, true, "Autofill_db2", autofill_ ? "ON" : "OFF");
  written &= Modifica_tag(kConfig, true, true, "AutoOwner_db2", auto_owner_ ? "ON" : "OFF");
  if (!written) return false;
  if (autofill_) fill_from_dclgen();
  if (auto_owner_) copy_first_owner();
  if (!write_rows()) return false;
  if (keep_descriptions_enabled()) keep_descriptions();
  return true;
}

Status Db2Details::write_rows() const {
  if (!Esiste_file(kKey2ValueFile))
    if (Status s = Crea_file(kKey2ValueFile, true); !s) return s;
  for (int n = 1; n <= count_; ++n) {
    const Db2Row& row = rows_[n - 1];
    Status written = MydetailDb2(kind_, !row.owner.empty(), "T-", row.owner, n);
    written &= MydetailDb2(kind_, !row.table.empty(), "TABEL-", row.table, n);
    written &= MydetailDb2(kind_, !row.cursor.empty(), "CURS-", row.cursor, n);
    // LEV01- follows the member: it goes when the INCLUDE goes or names no host structure.
    std::string structure;
    if (!row.include.empty()) {
      if (std::optional<DclgenTableInfo> info = read_table_info(member_path(row.include)))
        structure = info->structure;
    }
    written &= MydetailDb2(kind_, !structure.empty(), "LEV01-", structure, n);
    written &= MydetailDb2(kind_, !row.include.empty(), "INCLU-", row.include, n);
    written &= MydetailDb2(kind_, !row.description.empty(), "DESCDB2-", row.description, n);
    if (!written) return written;
  }
  return {};
}

void Db2Details::keep_descriptions() const {
  for (int n = 1; n <= count_; ++n) {
    const Db2Row& row = rows_[n - 1];
    if (row.include.empty() || row.description.empty()) continue;
    const std::string path = member_path(row.include);
    if (Esiste_file(path)) write_kept_description(path, access_letter(kind_), row.description);
  }
}

std::string Db2Details::quick_help() {
  return bilingual(
      "In this panel you define the names, tables and descriptions about db2 accesses.\n"
      "If you don't define a field you leave the default value, that you can massively change "
      "later, in the program.\n\n"
      "OWNER     \t: It corresponds to the first part of a Table (Es:OWNER.TABLENAME) ...\n"
      "TABLE NAME\t: It corresponds to the second part of a Table (Es:OWNER.TABLENAME) ...\n"
      "CURSOR    \t: It corresponds the the Cursor Name.You can define this only in Fetch "
      "selections.\n\t\t  Using Easytrieve it's also required for Select, because they will be "
      "translated into a single row readed Fetch.\n"
      "DESCRIPTION\t: Specify here a short description about the current Db2 access you are "
      "filling.\n"
      "INCLUDE   \t: It corresponds at the DCLGEN's containing both db2 data and cobol variable "
      "definitions.\n\t\t  It is also required to proceed to the Db2 Fields Selection.\n\t\t  "
      "This DCLGENs can also be downloaded from the Host using the Box at the Bottom of this "
      "panel.\n\n"
      "AutoFill. \t: Checking this will enable the analysis of the DCLGen (required), looking for "
      "the Owner.TableName.\n",
      "In questo pannello definisci i nomi, le tabelle e le descrizioni degli accessi db2.\n"
      "Se non definisci un campo lasci il valore di default, che potrai cambiare massivamente "
      "in seguito, nel programma.\n\n"
      "OWNER     \t: Corrisponde alla prima parte di una Tabella (Es:OWNER.TABLENAME) ...\n"
      "TABLE NAME\t: Corrisponde alla seconda parte di una Tabella (Es:OWNER.TABLENAME) ...\n"
      "CURSOR    \t: Corrisponde al nome del Cursore.Puoi definirlo solo nelle Fetch.\n\t\t  Con "
      "Easytrieve e' richiesto anche per le Select, perche' saranno tradotte in una Fetch a "
      "riga singola.\n"
      "DESCRIPTION\t: Indica qui una breve descrizione dell'accesso Db2 che stai compilando.\n"
      "INCLUDE   \t: Corrisponde alla DCLGEN che contiene sia i dati db2 che le definizioni "
      "delle variabili cobol.\n\t\t  E' anche richiesta per procedere alla Selezione dei Campi "
      "Db2.\n\t\t  Queste DCLGEN possono anche essere scaricate dall'Host usando il Box in fondo "
      "a questo pannello.\n\n"
      "AutoFill. \t: Selezionandolo si abilita l'analisi della DCLGen (richiesta), cercando "
      "Owner.TableName.\n");
}

}  // namespace quorva
