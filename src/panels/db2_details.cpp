#include "panels/db2_details.h"

#include <algorithm>
#include <set>

#include "dclgen/dclgen_member.h"
#include "panels/column_selection.h"
#include "panels/host_names.h"
#include "panels/row_field.h"
#include "port/user_interface.h"
#include "store/config_file.h"
#include "store/dclgen_members.h"
#include "store/key2value_file.h"
#include "tagfile/folder_lock.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

constexpr const char* kTransferMark = "temp/dummy_file.txt";
constexpr std::size_t kNameLimit = 20;
// As long as DB2 allows a table name to be.
constexpr std::size_t kTableNameLimit = 128;
constexpr std::size_t kDescriptionLimit = 47;
constexpr std::size_t kIncludeLimit = 8;

std::string key(const char* prefix, int row, AccessKind kind) {
  return prefix + std::to_string(row) + access_letter(kind);
}

bool keep_descriptions_enabled() {
  return config_switch(kSaveDescriptionsDb2Key);
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

Status MydetailDb2(TagEdit& edit, AccessKind kind, bool filled, const std::string& prefix,
                   const std::optional<std::string>& text, int row) {
  if (filled && !text) {
    Scrivi_log("MydetailDb2 - _scrivi parse owner:Valore non valido a Null", row, LogKind::kError);
    return Status::failure("Valore non valido a Null");
  }
  const std::string name = key(prefix.c_str(), row, kind);
  if (filled)
    edit.set(name, *text);
  else
    edit.remove(name);
  return {};
}

Status MydetailDb2(AccessKind kind, bool filled, const std::string& prefix,
                   const std::optional<std::string>& text, int row) {
  TagEdit edit = key2value_edit();
  if (Status s = MydetailDb2(edit, kind, filled, prefix, text, row); !s) return s;
  return edit.apply(true);
}

std::string Db2Details::member_path(const std::string& include) {
  return dclgen_member_path(include);
}

Db2Details Db2Details::open(bool easytrieve, AccessKind kind, int count) {
  Db2Details panel;
  panel.easytrieve_ = easytrieve;
  panel.kind_ = kind;
  panel.count_ = std::clamp(count, 0, 9);
  const bool kept = keep_descriptions_enabled();
  const TagText keys = read_key2value_file();
  for (int n = 1; n <= 9; ++n) {
    Db2Row& row = panel.rows_[n - 1];
    auto read = [&](const char* prefix) { return keys.value(key(prefix, n, kind)).value_or(""); };
    row.owner = read("T-");
    row.table = read("TABEL-");
    row.cursor = read("CURS-");
    row.description = read("DESCDB2-");
    row.include = read("INCLU-");
    panel.saved_include_[n - 1] = row.include;
    if (kept && row.description.empty() && !row.include.empty())
      row.description =
          read_kept_description(member_path(row.include), access_letter(kind)).value_or("");
  }
  panel.autofill_ = config_switch(kAutofillDb2Key);
  panel.auto_owner_ = config_switch(kAutoOwnerDb2Key);
  panel.dclgen_library_ = read_config(kDclgenLibraryKey).value_or("");
  return panel;
}

std::string Db2Details::heading() const {
  const std::string language = easytrieve_ ? "Easytrieve" : "Cobol";
  return bilingual("Insert informations about ", "Inserisci le informazioni per ") +
         access_word(kind_) + bilingual(" for your ", " di un programma in ") + language +
         bilingual(" program.", ".");
}

bool Db2Details::set_field(std::string Db2Row::*field, int row, const std::string& text,
                           std::size_t limit, const char* label) {
  std::string ignored;
  std::string& target = row_enabled(row) ? rows_[row - 1].*field : ignored;
  return set_row_field(target, row_enabled(row), row, count_, text, limit, label);
}

bool Db2Details::refused(int row, const std::string& text, const std::string& problem) const {
  // A line break has its own rule, which empties the field.
  if (problem.empty() || !row_enabled(row) || has_line_break(text)) return false;
  Mostra_popup(problem);
  return true;
}

bool Db2Details::set_owner(int row, const std::string& text) {
  if (refused(row, text, blank_name_problem("OWNER", text))) return false;
  return set_field(&Db2Row::owner, row, text, kNameLimit, "OWNER");
}

bool Db2Details::set_table(int row, const std::string& text) {
  if (refused(row, text, blank_name_problem("TABLE NAME", text))) return false;
  return set_field(&Db2Row::table, row, text, kTableNameLimit, "TABLE NAME");
}

bool Db2Details::set_cursor(int row, const std::string& text) {
  if (refused(row, text, cursor_problem(text))) return false;
  return set_field(&Db2Row::cursor, row, text, kNameLimit, "CURSOR");
}

bool Db2Details::set_description(int row, const std::string& text) {
  return set_field(&Db2Row::description, row, text, kDescriptionLimit, "DESCRIPTION");
}

bool Db2Details::set_include(int row, const std::string& text) {
  const std::string old = row_enabled(row) ? rows_[row - 1].include : "";
  if (!set_field(&Db2Row::include, row, text, kIncludeLimit, "INCLUDE")) return false;
  Db2Row& target = rows_[row - 1];
  if (!old.empty() && old != text) {
    // The table named after the old member goes with it.
    const std::optional<DclgenTableInfo> was = read_table_info(member_path(old));
    if (was && !target.table.empty() && target.table == was->table) {
      const std::optional<DclgenTableInfo> now =
          text.empty() ? std::nullopt : read_table_info(member_path(text));
      target.table = now ? now->table : "";
    }
  }
  if (keep_descriptions_enabled() && target.description.empty() && !text.empty())
    target.description =
        read_kept_description(member_path(text), access_letter(kind_)).value_or("");
  return true;
}

bool Db2Details::set_dclgen_library(const std::string& library) {
  return set_text_field(dclgen_library_, library, "DCLGEN library");
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

int Db2Details::enable_dclgens() {
  int read = 0;
  std::string problems;
  for (int n = 1; n <= count_; ++n) {
    const std::string& include = rows_[n - 1].include;
    if (include.empty()) continue;
    const std::string path = member_path(include);
    if (!Esiste_file(path))
      problems += bilingual("\n - not found: ", "\n - non trovato: ") + path;
    else if (!read_table_info(path))
      problems += bilingual("\n - no EXEC SQL DECLARE ... TABLE in ",
                            "\n - nessun EXEC SQL DECLARE ... TABLE in ") +
                  path;
    else
      ++read;
  }
  if (autofill_) fill_from_dclgen();
  if (auto_owner_) copy_first_owner();
  std::string message =
      bilingual("DCLGEN members read: ", "Membri DCLGEN letti: ") + std::to_string(read);
  if (!problems.empty())
    message += bilingual("\nNot usable for the Db2 Fields Selection:",
                         "\nNon utilizzabili per la Selezione dei Campi Db2:") +
               problems +
               bilingual("\n(Download DCLGEN via FTP fetches the missing ones.)",
                         "\n(Download DCLGEN via FTP scarica quelli mancanti.)");
  Mostra_popup(message);
  return read;
}

std::vector<std::string> Db2Details::download_members() const {
  std::vector<std::string> members = include_members();
  for (int n = 1; n <= count_; ++n) {
    const std::string& include = rows_[n - 1].include;
    if (!include.empty() && std::find(members.begin(), members.end(), include) == members.end())
      members.push_back(include);
  }
  return members;
}

std::optional<std::string> Db2Details::fields_member(int row) const {
  if (!row_enabled(row) || rows_[row - 1].include.empty()) {
    Mostra_popup(bilingual("Fill the INCLUDE field of the access with its DCLGEN member first.",
                           "Indicare prima nel campo INCLUDE dell'accesso il suo membro "
                           "DCLGEN."));
    return std::nullopt;
  }
  const std::string path = member_path(rows_[row - 1].include);
  if (!Esiste_file(path)) {
    Mostra_popup(missing_dclgen_message(path));
    return std::nullopt;
  }
  return path;
}

void Db2Details::copy_first_owner() {
  if (count_ < 1 || rows_[0].owner.empty()) return;
  for (int n = 2; n <= count_; ++n)
    if (rows_[n - 1].owner.empty()) rows_[n - 1].owner = rows_[0].owner;
}

bool Db2Details::cancel() const {
  return transfer_check();
}

Result<bool> Db2Details::confirm() {
  if (!transfer_check()) return false;
  if (Status removed = remove_if_present(kTransferMark, true); !removed) return removed;
  if (has_duplicate_cursor() &&
      ui().ask_yes_no(bilingual("Internal check", "Check interno"),
                      bilingual("You have used the same name for more than 1 cursor...\nWould "
                                "you like to correct them now?",
                                "Hai usato lo stesso nome per piu' di 1 cursore...\nVuoi "
                                "correggerli adesso?")))
    return false;
  FolderLock lock;
  if (!lock.held()) return lock.status();
  TagEdit options = config_edit();
  if (!dclgen_library_.empty()) options.set(kDclgenLibraryKey, dclgen_library_);
  options.set(kAutofillDb2Key, switch_word(autofill_));
  options.set(kAutoOwnerDb2Key, switch_word(auto_owner_));
  if (Status written = options.apply(true); !written) return written;
  if (autofill_) fill_from_dclgen();
  if (auto_owner_) copy_first_owner();
  if (Status written = write_rows(); !written) return written;
  if (keep_descriptions_enabled())
    if (Status kept = keep_descriptions(); !kept) return kept;
  if (Status dropped = drop_old_member_columns(); !dropped) return dropped;
  for (int n = 1; n <= count_; ++n) saved_include_[n - 1] = rows_[n - 1].include;
  for (const std::string& warning : table_warnings()) Mostra_popup(warning);
  return true;
}

Status Db2Details::drop_old_member_columns() const {
  const char* file = column_file_name(kind_);
  if (!Esiste_file(file)) return {};
  Status dropped;
  for (int n = 1; n <= count_; ++n) {
    if (saved_include_[n - 1].empty() || saved_include_[n - 1] == rows_[n - 1].include) continue;
    const std::string master = access_word(kind_) + std::to_string(n);
    for (Selection selection : {Selection::kQuery, Selection::kWhere}) {
      // A selection made on the new member before this OK stays.
      const std::optional<ColumnBlock> block =
          Leggi_colonne_treedb2(file, master, selection, false);
      if (block && block->member == rows_[n - 1].include) continue;
      dropped &= Riscrivi_tag_treedb2(file, master, selection, false, "", "", {});
    }
  }
  return dropped;
}

std::vector<std::string> Db2Details::table_warnings() const {
  std::vector<std::string> warnings;
  for (int n = 1; n <= count_; ++n) {
    const Db2Row& row = rows_[n - 1];
    if (row.include.empty() || row.table.empty()) continue;
    const std::optional<DclgenTableInfo> info = read_table_info(member_path(row.include));
    if (!info) continue;
    const std::string access = access_word(kind_) + (" " + std::to_string(n));
    if (auto warning = table_name_mismatch(access, row.include, row.table, *info))
      warnings.push_back(*warning);
  }
  return warnings;
}

Status Db2Details::write_rows() const {
  TagEdit keys = key2value_edit();
  for (int n = 1; n <= count_; ++n) {
    const Db2Row& row = rows_[n - 1];
    Status gathered = MydetailDb2(keys, kind_, !row.owner.empty(), "T-", row.owner, n);
    gathered &= MydetailDb2(keys, kind_, !row.table.empty(), "TABEL-", row.table, n);
    gathered &= MydetailDb2(keys, kind_, !row.cursor.empty(), "CURS-", row.cursor, n);
    // LEV01- follows the member: it goes when the INCLUDE goes or names no host structure;
    // a structure name chosen in the column selection stays while the member does.
    const bool same_member = row.include == saved_include_[n - 1];
    if (!same_member || row.include.empty() || !read_key2value(key("LEV01-", n, kind_))) {
      std::string structure;
      if (!row.include.empty()) {
        if (std::optional<DclgenTableInfo> info = read_table_info(member_path(row.include)))
          structure = info->structure;
      }
      gathered &= MydetailDb2(keys, kind_, !structure.empty(), "LEV01-", structure, n);
    }
    gathered &= MydetailDb2(keys, kind_, !row.include.empty(), "INCLU-", row.include, n);
    gathered &= MydetailDb2(keys, kind_, !row.description.empty(), "DESCDB2-", row.description, n);
    if (!gathered) return gathered;
  }
  return keys.apply(true);
}

Status Db2Details::keep_descriptions() const {
  Status kept;
  for (int n = 1; n <= count_; ++n) {
    const Db2Row& row = rows_[n - 1];
    if (row.include.empty() || row.description.empty()) continue;
    const std::string path = member_path(row.include);
    if (Esiste_file(path))
      kept &= write_kept_description(path, access_letter(kind_), row.description);
  }
  return kept;
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
