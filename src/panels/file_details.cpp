#include "panels/file_details.h"

#include <algorithm>

#include "panels/host_names.h"
#include "panels/row_field.h"
#include "tagfile/folder_lock.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

std::string numbered(const char* prefix, int row) {
  return prefix + std::to_string(row);
}

// "Filled" with no text: logged with the row, nothing written.
Status null_value(const char* log_text, int row) {
  Scrivi_log(log_text, row, LogKind::kError);
  return Status::failure("Valore non valido a Null");
}

// A writer's changes made at once, for a caller outside a panel's OK.
template <class Writer>
Status write_now(Writer writer) {
  TagEdit edit = key2value_edit();
  if (Status s = writer(edit); !s) return s;
  return edit.apply(true);
}

const char* description_prefix(FileKind kind) {
  return kind == FileKind::kInput ? "DESC-I" : kind == FileKind::kOutput ? "DESC-O" : "DESC-R";
}

// The key the panel reads the file name back from.
const char* name_prefix(FileKind kind) {
  return kind == FileKind::kInput ? "FILEIN" : kind == FileKind::kOutput ? "FILEOUT" : "STAMPA";
}

}  // namespace

namespace MydetailFile {

Status scrivi_nomefile(TagEdit& edit, FileKind kind, bool filled,
                       const std::optional<std::string>& text, int row) {
  if (filled && !text)
    return null_value("MydetailFile - scrivi parse nomefile:Valore non valido a Null", row);
  const std::string value = filled ? *text : "";
  switch (kind) {
    case FileKind::kInput:
      edit.set_or_remove(numbered("UIN", row), value);
      edit.set_or_remove(numbered("FILEIN", row), value);
      break;
    case FileKind::kOutput:
      edit.set_or_remove(numbered("UOUT", row), value);
      edit.set_or_remove(numbered("FILEOUT", row), value);
      break;
    case FileKind::kReport:
      edit.set_or_remove(numbered("STAMPA", row), value);
      break;
  }
  return {};
}

Status scrivi_nometab(TagEdit& edit, bool filled, const std::optional<std::string>& text, int row) {
  if (filled && !text)
    return null_value("MydetailFile - scrivi parse nometab:Valore non valido a Null", row);
  edit.set_or_remove(numbered("NOMTAB-", row), filled ? *text : "");
  return {};
}

Status scrivi_descfile(TagEdit& edit, FileKind kind, bool filled,
                       const std::optional<std::string>& text, int row) {
  if (filled && !text)
    return null_value("MydetailFile - scrivi parse descfile:Valore non valido a Null", row);
  edit.set_or_remove(numbered(description_prefix(kind), row), filled ? *text : "");
  return {};
}

Status scrivi_nomefile(FileKind kind, bool filled, const std::optional<std::string>& text,
                       int row) {
  return write_now([&](TagEdit& edit) { return scrivi_nomefile(edit, kind, filled, text, row); });
}

Status scrivi_nometab(bool filled, const std::optional<std::string>& text, int row) {
  return write_now([&](TagEdit& edit) { return scrivi_nometab(edit, filled, text, row); });
}

Status scrivi_descfile(FileKind kind, bool filled, const std::optional<std::string>& text,
                       int row) {
  return write_now([&](TagEdit& edit) { return scrivi_descfile(edit, kind, filled, text, row); });
}

}  // namespace MydetailFile

FileDetails FileDetails::open(FileKind kind, int count) {
  FileDetails panel;
  panel.kind_ = kind;
  panel.count_ = std::clamp(count, 0, kDetailRows);
  const TagText keys = read_key2value_file();
  for (int n = 1; n <= kDetailRows; ++n) {
    FileRow& row = panel.rows_[n - 1];
    row.name = keys.value(numbered(name_prefix(kind), n)).value_or("");
    row.report_name = keys.value(numbered("NOMTAB-", n)).value_or("");
    row.description = keys.value(numbered(description_prefix(kind), n)).value_or("");
  }
  if (kind == FileKind::kOutput) {
    const int excel = std::min({read_excel_outputs(), kDetailRows, panel.count_});
    for (int n = 1; n <= excel; ++n) panel.rows_[n - 1].excel = true;
    panel.allow(excel + 1);
  }
  return panel;
}

std::string FileDetails::heading() const {
  switch (kind_) {
    case FileKind::kInput:
      return bilingual("Complete the informations for INPUT FILE",
                       "Inserisci le informazioni per file di INPUT.");
    case FileKind::kOutput:
      return bilingual("Complete the informations for OUTPUT FILE",
                       "Inserisci le informazioni per file di OUTPUT.");
    case FileKind::kReport:
      break;
  }
  return bilingual("Complete the informations for REPORT", "Inserisci le informazioni per REPORT.");
}

bool FileDetails::set_field(std::string FileRow::*field, int row, const std::string& text,
                            std::size_t limit, const char* label) {
  std::string ignored;
  std::string& target = row_enabled(row) ? rows_[row - 1].*field : ignored;
  return set_row_field(target, row_enabled(row), row, count_, text, limit, label);
}

bool FileDetails::set_name(int row, const std::string& text) {
  // A line break has its own rule, which empties the field.
  if (const std::string problem = file_name_problem(text);
      !problem.empty() && row_enabled(row) && !has_line_break(text)) {
    Mostra_popup(problem);
    return false;
  }
  return set_field(&FileRow::name, row, text, kFileNameLimit, "FILE NAME");
}

bool FileDetails::set_report_name(int row, const std::string& text) {
  return set_field(&FileRow::report_name, row, text, kReportNameLimit, "REPORT NAME");
}

bool FileDetails::set_description(int row, const std::string& text) {
  return set_field(&FileRow::description, row, text, kFileDescriptionLimit, "FILE DESCRIPTION");
}

void FileDetails::allow(int k) {
  for (FileRow& row : rows_) row.excel_enabled = true;
  k = std::min(k, count_);
  for (int n = std::max(k + 1, 1); n <= kDetailRows; ++n) {
    rows_[n - 1].excel = false;
    rows_[n - 1].excel_enabled = false;
  }
}

bool FileDetails::click_excel(int row, bool checked) {
  // Not an Excel output already: nothing to lock or to refuse.
  if (!checked && row >= 1 && row <= kDetailRows && !rows_[row - 1].excel_enabled &&
      !rows_[row - 1].excel)
    return true;
  if (row < 1 || row > kDetailRows || !rows_[row - 1].excel_enabled) {
    Mostra_popup(bilingual("The Excel box of row ", "La casella Excel della riga ") +
                 std::to_string(row) +
                 bilingual(" is not available: an internal lock require that excel must be the "
                           "first output files.",
                           " non e' disponibile: un blocco interno richiede che i file excel "
                           "siano i primi file di output."));
    return false;
  }
  rows_[row - 1].excel = checked;
  if (row < kDetailRows)
    allow(checked ? row + 1 : row);
  else if (!checked)
    allow(kDetailRows);
  return true;
}

int FileDetails::excel_rows() const {
  int highest = 0;
  for (int n = 1; n <= count_; ++n)
    if (rows_[n - 1].excel) highest = n;
  return highest;
}

Status FileDetails::confirm() const {
  std::string names[kDetailRows];
  for (int n = 1; n <= count_; ++n) names[n - 1] = rows_[n - 1].name;
  if (const std::string problem = duplicate_file_name_problem(names, count_); !problem.empty()) {
    Mostra_popup(problem);
    return Status::failure(problem);
  }
  TagEdit keys = key2value_edit();
  for (int n = 1; n <= count_; ++n) {
    const FileRow& row = rows_[n - 1];
    Status gathered = MydetailFile::scrivi_nomefile(keys, kind_, !row.name.empty(), row.name, n);
    gathered &= MydetailFile::scrivi_nometab(keys, !row.report_name.empty(), row.report_name, n);
    gathered &=
        MydetailFile::scrivi_descfile(keys, kind_, !row.description.empty(), row.description, n);
    if (!gathered) return gathered;
  }
  FolderLock lock;
  if (!lock.held()) return lock.status();
  if (kind_ != FileKind::kOutput)
    if (Status s = create_detfiles_if_missing(); !s) return s;
  if (Status s = keys.apply(true); !s) return s;
  if (kind_ == FileKind::kOutput) return write_excel_outputs(excel_rows());
  return {};
}

std::string FileDetails::quick_help() {
  return bilingual(
      "Inside this Panel you have to define the file descriptions and their names.\n"
      "If you leave a BLANK box you will leave the DEFAULT names, but you can change it later "
      "inside the source code.\n\n"
      "FILE NAME \t: It's the file name inside the program and the JCL's rows. You can use 8 "
      "characters at maximum. \n"
      "REPORT NAME: It's the Easytrieve Report Name that appear at the top.\n\t\t The name should "
      "be unique inside all the procedure...\n"
      "DESCRIPTION\t: Place here a short description to better qualify your file or your "
      "report.\n"
      "EXCEL     \t: It's a special flag that convert a normal fileout into a fileout that can be "
      "imported from excel.\n\t\t An internal lock require that excel must be the first output "
      "files.\n\t\t Excel file use a ';' separator between the fields. The FTP transfer from Host "
      "to Excel is also in your charge."
      "\n\nAfter all this procedure you'll have to complete and manage your files and recordset "
      "inside the source.",
      "All'interno di questo Pannello devi definire le descrizioni dei file e i loro nomi.\n"
      "Se lasci una casella VUOTA manterrai i nomi di DEFAULT, ma potrai cambiarli in seguito "
      "all'interno del sorgente.\n\n"
      "FILE NAME \t: E' il nome del file all'interno del programma e delle righe di JCL. Puoi "
      "usare al massimo 8 caratteri. \n"
      "REPORT NAME: E' il nome del Report Easytrieve che appare in testata.\n\t\t Il nome deve "
      "essere unico in tutta la procedura...\n"
      "DESCRIPTION\t: Inserisci qui una breve descrizione per qualificare meglio il tuo file o il "
      "tuo report.\n"
      "EXCEL     \t: E' un flag speciale che converte un normale fileout in un fileout "
      "importabile da excel.\n\t\t Un blocco interno richiede che i file excel siano i primi "
      "file di output.\n\t\t I file Excel usano il separatore ';' fra i campi. Il trasferimento "
      "FTP da Host a Excel e' a tuo carico."
      "\n\nAl termine di questa procedura dovrai completare e gestire i tuoi file e recordset "
      "all'interno del sorgente.");
}

}  // namespace quorva
