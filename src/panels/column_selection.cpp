#include "panels/column_selection.h"

#include <algorithm>

#include "dclgen/dclgen_check.h"
#include "dclgen/member_lines.h"
#include "panels/row_field.h"
#include "store/config_file.h"
#include "store/key2value_file.h"
#include "store/user_file.h"
#include "tagfile/folder_lock.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

const char* kind_title(AccessKind kind) {
  switch (kind) {
    case AccessKind::kSelect:
      return "SELECT -";
    case AccessKind::kFetch:
      return "FETCH -";
    case AccessKind::kUpdate:
      return "UPDATE -";
    case AccessKind::kInsert:
      return "INSERT -";
    case AccessKind::kDelete:
      return "DELETE -";
  }
  return "";
}

}  // namespace

std::string dclgen_member_path(const std::string& member) {
  return source_folder_file(member + ".DCL");
}

std::string master_tag(AccessKind kind, int access) {
  return access_word(kind) + std::to_string(access);
}

std::string level01_key(AccessKind kind, int access) {
  return "LEV01-" + std::to_string(access) + access_letter(kind);
}

ColumnSelection::ColumnSelection(AccessKind kind, int access, std::string member,
                                 Selection selection)
    : kind_(kind), access_(access), member_(std::move(member)), selection_(selection) {}

std::string ColumnSelection::title() const {
  std::string title =
      std::string(kind_title(kind_)) + " " + bilingual("- Check the", "- Seleziona i Campi");
  if (selection_ == Selection::kWhere) title += " " + bilingual("WHERE", "di WHERE");
  return title + " " + bilingual("Columns for the", "per la") + " " + member_;
}

bool ColumnSelection::open(const std::string& member_path) {
  std::optional<std::string> text = read_member_file(member_path);
  if (!text) {
    columns_.clear();
    selected_.clear();
    Mostra_popup(cannot_open_member_message(member_path));
    return false;
  }
  return open_text(*text);
}

bool ColumnSelection::open_text(std::string_view text) {
  DclgenParser parser;
  columns_.clear();
  selected_.clear();
  current_.reset();
  status_.clear();
  detail_.clear();
  DclgenPassResult sql = parser.parse_sql(text);
  if (!sql.ok) {
    Mostra_popup(sql.message);
    return false;
  }
  const bool compress = config_switch(kCobolVarsCompressionKey);
  DclgenPassResult cobol = parser.parse_cobol(text, compress);
  take_parse(parser);
  if (!cobol.ok) {
    Mostra_popup(cobol.message);
    return true;
  }
  DclgenCheck check = check_columns(columns_);
  status_ = check.status;
  detail_ = check.detail;
  return true;
}

void ColumnSelection::take_parse(const DclgenParser& parser) {
  columns_ = parser.columns();
  selected_.assign(columns_.size(), false);
  structure_name_ = parser.structure();
  prefix_ = parser.names_prefix();
  numbered_ = !parser.names_prefix().empty() && !parser.colsuffix();
}

std::vector<std::string> ColumnSelection::tree_items() const {
  std::vector<std::string> items{member_};
  for (const DclgenColumn& column : columns_) items.push_back(column.name);
  return items;
}

void ColumnSelection::select(int ordinal, bool selected) {
  if (ordinal < 0 || ordinal >= static_cast<int>(columns_.size())) return;
  selected_[ordinal] = selected;
  current_ = ordinal;
}

void ColumnSelection::select_all(bool selected) {
  std::fill(selected_.begin(), selected_.end(), selected);
  if (!columns_.empty()) current_ = 0;
}

bool ColumnSelection::is_selected(int ordinal) const {
  return ordinal >= 0 && ordinal < static_cast<int>(selected_.size()) && selected_[ordinal];
}

int ColumnSelection::selected_count() const {
  return static_cast<int>(std::count(selected_.begin(), selected_.end(), true));
}

std::string ColumnSelection::selected_count_text() const {
  return bilingual("Tot. Selected:", "Tot. Selezionate:") + std::to_string(selected_count());
}

std::string ColumnSelection::details() const {
  if (!current_) return {};
  const DclgenColumn& column = columns_[*current_];
  return "Name      :" + column.name + "\nType        :" + db2type::detail_name(column.type_code) +
         "\nValue       :" + column.length_text + " " + column.cobol_picture;
}

bool ColumnSelection::null_box() const {
  return current_ && columns_[*current_].not_null == 0;
}

bool ColumnSelection::set_null_box(int index, bool checked) {
  if (!toggle_forced_null(columns_, index, checked)) return false;
  status_ = forced_null_status();
  return true;
}

bool ColumnSelection::load_previous_selection() {
  std::optional<ColumnBlock> block =
      Leggi_colonne_treedb2(column_file_name(kind_), master_tag(kind_, access_), selection_, true);
  if (!block) return false;
  bool forced = false;
  for (const DclgenColumn& stored : block->columns) {
    if (stored.ordinal < 0 || stored.ordinal >= static_cast<int>(columns_.size())) continue;
    selected_[stored.ordinal] = true;
    DclgenColumn& column = columns_[stored.ordinal];
    if (column.not_null != stored.not_null) {
      column.not_null = stored.not_null;
      forced = true;
    }
  }
  if (forced) status_ = forced_null_status();
  if (!block->access_text.empty()) {
    HostNaming naming = parse_host_naming(block->access_text);
    prefix_ = naming.prefix;
    numbered_ = naming.numbered;
  }
  if (std::optional<std::string> name = read_key2value(level01_key(kind_, access_)))
    structure_name_ = *name;
  return true;
}

std::optional<int> ColumnSelection::search(const std::string& text) {
  bool again = text == last_search_ && last_hit_ >= 0;
  int from = again ? last_hit_ + 1 : 0;
  last_search_ = text;
  for (int i = from; i < static_cast<int>(columns_.size()); ++i) {
    if (!text.empty() && columns_[i].name.find(text) != std::string::npos) {
      last_hit_ = i;
      current_ = i;
      return i;
    }
  }
  last_hit_ = -1;
  if (again) {
    Mostra_popup("I've not found FURTHER occurrences of the reseached field:" + text,
                 "Non ho trovato ULTERIORI posizioni del campo ricercato:" + text);
  } else {
    Mostra_popup("I've not found the researched field:" + text,
                 "Non ho trovato il campo ricercato:" + text);
  }
  return std::nullopt;
}

bool ColumnSelection::set_structure_name(const std::string& text) {
  return set_text_field(structure_name_, text, "Struct Name ( level 01 )");
}

bool ColumnSelection::set_prefix(const std::string& text) {
  return set_text_field(prefix_, text, "Variables Prefix");
}

Status ColumnSelection::ok() {
  // The store refuses them too; checked here so that neither file is written.
  if (has_line_break(structure_name_) || has_line_break(prefix_)) {
    const std::string message = line_break_message(
        has_line_break(prefix_) ? "Variables Prefix" : "Struct Name ( level 01 )");
    Mostra_popup(message);
    return Status::failure(message);
  }
  std::vector<DclgenColumn> chosen;
  int nullable = 0;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (!selected_[i]) continue;
    DclgenColumn column = columns_[i];
    column.null_indicator = column.not_null == 0 ? ++nullable : 0;
    chosen.push_back(std::move(column));
  }
  const char* file = column_file_name(kind_);
  std::string tag = master_tag(kind_, access_);
  HostNaming naming{prefix_, numbered_};
  FolderLock lock;
  if (!lock.held()) return lock.status();
  if (!Riscrivi_tag_treedb2(file, tag, selection_, true, member_, format_host_naming(naming),
                            chosen)) {
    const std::string message =
        bilingual("Error writing te COLUMN detail. Look at the Log file.",
                  "Errore nella scrittura del dettaglio COLONNE. Vedi Log.");
    Mostra_popup(message);
    Scrivi_log("Errore nella scrittura del dettaglio COLONNE.", kNoNumber, LogKind::kError);
    Scrivi_log_dettaglio("nomefile:", file, kNoNumber, kNoNumber, LogKind::kError);
    Scrivi_log_dettaglio("Mastertag:", tag, kNoNumber, kNoNumber, LogKind::kError);
    return Status::failure(message);
  }
  if (kind_ == AccessKind::kDelete) return {};
  TagEdit keys = key2value_edit();
  if (structure_name_.empty()) {
    if (!Esiste_file(kKey2ValueFile)) return {};
    keys.remove(level01_key(kind_, access_));
  } else {
    keys.set(level01_key(kind_, access_), structure_name_);
  }
  return keys.apply(true);
}

}  // namespace quorva
