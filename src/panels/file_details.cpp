#include "panels/file_details.h"

#include <algorithm>

#include "panels/row_field.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/folder_lock.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

constexpr std::size_t kNameLimit = 8;
constexpr std::size_t kReportNameLimit = 10;
constexpr std::size_t kDescriptionLimit = 44;

std::string numbered(const char* prefix, int row) {
  return prefix + std::to_string(row);
}

Status set_or_remove(bool filled, const std::string& key, const std::string& text) {
  if (filled) return Modifica_tag(kKey2ValueFile, true, true, key, text);
  return Cancella_tag(kKey2ValueFile, true, key);
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

Status scrivi_nomefile(FileKind kind, bool filled, const std::optional<std::string>& text,
                       int row) {
  if (filled && !text) {
    Scrivi_log("MydetailFile - scrivi parse nomefile:Valore non valido a Null", row,
               LogKind::kError);
    return Status::failure("Valore non valido a Null");
  }
  const std::string value = filled ? *text : "";
  switch (kind) {
    case FileKind::kInput:
      if (Status s = set_or_remove(filled, numbered("UIN", row), value); !s) return s;
      return set_or_remove(filled, numbered("FILEIN", row), value);
    case FileKind::kOutput:
      if (Status s = set_or_remove(filled, numbered("UOUT", row), value); !s) return s;
      return set_or_remove(filled, numbered("FILEOUT", row), value);
    case FileKind::kReport:
      return set_or_remove(filled, numbered("STAMPA", row), value);
  }
  return {};
}

Status scrivi_nometab(bool filled, const std::optional<std::string>& text, int row) {
  if (filled && !text) {
    Scrivi_log("MydetailFile - scrivi parse nometab:Valore non valido a Null", row,
               LogKind::kError);
    return Status::failure("Valore non valido a Null");
  }
  return set_or_remove(filled, numbered("NOMTAB-", row), filled ? *text : "");
}

Status scrivi_descfile(FileKind kind, bool filled, const std::optional<std::string>& text,
                       int row) {
  if (filled && !text) {
    Scrivi_log("MydetailFile - scrivi parse descfile:Valore non valido a Null", row,
               LogKind::kError);
    return Status::failure("Valore non valido a Null");
  }
  return set_or_remove(filled, numbered(description_prefix(kind), row), filled ? *text : "");
}

}  // namespace MydetailFile

FileDetails FileDetails::open(FileKind kind, int count) {
  FileDetails panel;
  panel.kind_ = kind;
  panel.count_ = std::clamp(count, 0, kDetailRows);
  for (int n = 1; n <= kDetailRows; ++n) {
    FileRow& row = panel.rows_[n - 1];
    row.name = Leggi_tag(kKey2ValueFile, false, numbered(name_prefix(kind), n)).value_or("");
    row.report_name = Leggi_tag(kKey2ValueFile, false, numbered("NOMTAB-", n)).value_or("");
    row.description =
        Leggi_tag(kKey2ValueFile, false, numbered(description_prefix(kind), n)).value_or("");
  }
  if (kind == FileKind::kOutput) {
    int excel = std::clamp(Leggi_tag_int(kDetfilesFile, false, "fileout_excel"), 0, kDetailRows);
    excel = std::min(excel, panel.count_);
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

bool FileDetails::field_allowed(int row, const std::string& text, std::size_t limit,
                                const char* label) const {
  return row_field_allowed(row_enabled(row), row, count_, text, limit, label);
}

bool FileDetails::set_name(int row, const std::string& text) {
  if (!field_allowed(row, text, kNameLimit, "FILE NAME")) return false;
  rows_[row - 1].name = text;
  return true;
}

bool FileDetails::set_report_name(int row, const std::string& text) {
  if (!field_allowed(row, text, kReportNameLimit, "REPORT NAME")) return false;
  rows_[row - 1].report_name = text;
  return true;
}

bool FileDetails::set_description(int row, const std::string& text) {
  if (!field_allowed(row, text, kDescriptionLimit, "FILE DESCRIPTION")) return false;
  rows_[row - 1].description = text;
  return true;
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
  FolderLock lock;
  if (!lock.held()) return lock.status();
  if (!Esiste_file(kDetfilesFile))
    if (Status s = Crea_file(kDetfilesFile, true); !s) return s;
  if (!Esiste_file(kKey2ValueFile))
    if (Status s = Crea_file(kKey2ValueFile, true); !s) return s;
  for (int n = 1; n <= count_; ++n) {
    const FileRow& row = rows_[n - 1];
    Status written = MydetailFile::scrivi_nomefile(kind_, !row.name.empty(), row.name, n);
    written &= MydetailFile::scrivi_nometab(!row.report_name.empty(), row.report_name, n);
    written &= MydetailFile::scrivi_descfile(kind_, !row.description.empty(), row.description, n);
    if (!written) return written;
  }
  if (kind_ == FileKind::kOutput)
    return Modifica_tag(kDetfilesFile, true, true, "fileout_excel", std::to_string(excel_rows()));
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
