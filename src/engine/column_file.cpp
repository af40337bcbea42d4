#include "engine/column_file.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "dclgen/cobol_words.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"

// Implementation details: a column file is read whole and rewritten whole. The new text
// goes to a sibling file first and replaces the old one only when it was written in full,
// so a failing disk never leaves a half-written selection behind.

namespace quorva {
namespace {

std::optional<std::string> read_whole(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return std::nullopt;
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

bool write_whole(const std::string& file, const std::string& text) {
  const std::string temporary = file + ".new";
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out << text;
    out.flush();
    if (!out) {
      out.close();
      std::remove(temporary.c_str());
      return false;
    }
  }
  std::error_code error;
  std::filesystem::rename(temporary, file, error);
  if (error) {
    std::remove(temporary.c_str());
    return false;
  }
  return true;
}

// Lines without their "\n" (and a "\r" before it); the last line may lack its "\n".
std::vector<std::string> split_lines(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    std::string line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(std::move(line));
    start = end + 1;
  }
  return lines;
}

std::string opening_tag(const std::string& master_tag, Selection selection) {
  return "[" + master_tag + "-" + selection_word(selection) + "]";
}

std::string closing_tag(const std::string& master_tag, Selection selection) {
  return "[/" + master_tag + "-" + selection_word(selection) + "]";
}

void report_missing_data(const char* operation, const std::string& file, const std::string& member,
                         const std::string& master_tag, bool popup) {
  if (popup)
    Mostra_popup("The file name or the Master Tag are NULL !!",
                 "Il nome del file , o il Master Tag sono a NULL !!");
  Scrivi_log(std::string("Errore ne' ") + operation + ": Dati mancanti", kNoNumber,
             LogKind::kError);
  Scrivi_log_dettaglio("nome_file:", file, kNoNumber, kNoNumber, LogKind::kError);
  Scrivi_log_dettaglio("Dclgen name:", member, kNoNumber, kNoNumber, LogKind::kError);
  Scrivi_log_dettaglio("Master Tag:", master_tag, kNoNumber, kNoNumber, LogKind::kError);
}

std::string or_null(const std::string& text) {
  return text.empty() ? "NULL" : text;
}

std::string from_null(const std::string& text) {
  return text == "NULL" ? "" : text;
}

std::string record_line(const DclgenColumn& column, int null_indicator) {
  std::string picture = column.cobol_picture;
  for (char& c : picture)
    if (c == ' ') c = '_';
  const char* sep = "  ";
  return column.name + sep + std::to_string(column.type_code) + sep + or_null(column.length_text) +
         sep + or_null(picture) + sep + std::to_string(column.not_null) + sep +
         std::to_string(column.ordinal) + sep + std::to_string(null_indicator);
}

// Leading decimal number of a token, as "%d" reads it; false when there is none.
bool scan_int(const std::string& token, int& value) {
  const char* begin = token.c_str();
  char* end = nullptr;
  long number = std::strtol(begin, &end, 10);
  if (end == begin) return false;
  value = static_cast<int>(number);
  return true;
}

std::optional<DclgenColumn> parse_record(const std::string& line) {
  std::istringstream in(line);
  std::string fields[7];
  for (std::string& field : fields)
    if (!(in >> field)) return std::nullopt;
  DclgenColumn column;
  column.name = fields[0];
  column.length_text = from_null(fields[2]);
  column.cobol_picture = from_null(fields[3]);
  for (char& c : column.cobol_picture)
    if (c == '_') c = ' ';
  if (!scan_int(fields[1], column.type_code) || !scan_int(fields[4], column.not_null) ||
      !scan_int(fields[5], column.ordinal) || !scan_int(fields[6], column.null_indicator))
    return std::nullopt;
  return column;
}

std::string strip_brackets(const std::string& line) {
  if (line.size() >= 2 && line.front() == '<' && line.back() == '>')
    return line.substr(1, line.size() - 2);
  return line;
}

}  // namespace

const char* access_word(AccessKind kind) {
  static const char* const kWords[] = {"SELECT", "FETCH", "UPDATE", "INSERT", "DELETE"};
  return kWords[static_cast<int>(kind)];
}

char access_letter(AccessKind kind) {
  return "SFUID"[static_cast<int>(kind)];
}

const char* column_file_name(AccessKind kind) {
  static const char* const kFiles[] = {"temp/col_select.dat", "temp/col_fetch.dat",
                                       "temp/col_update.dat", "temp/col_insert.dat",
                                       "temp/col_delete.dat"};
  return kFiles[static_cast<int>(kind)];
}

std::optional<AccessKind> access_kind_from_letter(char letter) {
  switch (letter) {
    case 'S':
      return AccessKind::kSelect;
    case 'F':
      return AccessKind::kFetch;
    case 'U':
      return AccessKind::kUpdate;
    case 'I':
      return AccessKind::kInsert;
    case 'D':
      return AccessKind::kDelete;
    default:
      return std::nullopt;
  }
}

const char* selection_word(Selection selection) {
  return selection == Selection::kQuery ? "QUERY" : "WHERE";
}

std::string HostNaming::host_variable(const DclgenColumn& column) const {
  if (numbered) return prefix + std::to_string(column.ordinal + 1);
  std::string name = column.name;
  for (char& c : name)
    if (c == '_') c = '-';
  name = prefix + name;
  return is_cobol_reserved_word(name) ? name + "1" : name;
}

std::string format_host_naming(const HostNaming& naming) {
  return naming.prefix + (naming.numbered ? "|NUMBER" : "|NAME");
}

HostNaming parse_host_naming(const std::string& access_text) {
  HostNaming naming;
  std::size_t bar = access_text.rfind('|');
  if (bar == std::string::npos) {
    naming.prefix = access_text;
    return naming;
  }
  naming.prefix = access_text.substr(0, bar);
  naming.numbered = access_text.substr(bar + 1) == "NUMBER";
  return naming;
}

bool Riscrivi_tag_treedb2(const std::string& file, const std::string& master_tag,
                          Selection selection, bool write, const std::string& member,
                          const std::string& access_text,
                          const std::vector<DclgenColumn>& columns) {
  if (file.empty() || master_tag.empty()) {
    report_missing_data("Riscrivi_tag_treedb2", file, member, master_tag, true);
    return false;
  }
  const std::string open = opening_tag(master_tag, selection);
  const std::string close = closing_tag(master_tag, selection);
  std::string text;
  // A file not written yet holds no blocks.
  if (std::optional<std::string> old_text = read_whole(file)) {
    bool inside = false;
    for (const std::string& line : split_lines(*old_text)) {
      if (!inside && line == open) {
        inside = true;
        continue;
      }
      if (inside) {
        if (line == close) inside = false;
        continue;
      }
      text += line + "\n";
    }
  }
  if (write && !columns.empty()) {
    text += open + "\n<" + member + ">\n<" + access_text + ">\n";
    int nullable = 0;
    for (const DclgenColumn& column : columns)
      text += record_line(column, column.not_null == 0 ? ++nullable : 0) + "\n";
    text += close + "\n";
  }
  if (!write_whole(file, text)) {
    Mostra_popup("I cannot Open the output file... look at error.log",
                 "Impossibile Aprire file in scrittura ... vedi error.log");
    Scrivi_log("Impossibile Aprire il file", kNoNumber, LogKind::kError);
    Scrivi_log_dettaglio("nomefile:", file, kNoNumber, kNoNumber, LogKind::kError);
    return false;
  }
  return true;
}

std::optional<ColumnBlock> Leggi_colonne_treedb2(const std::string& file,
                                                 const std::string& master_tag, Selection selection,
                                                 bool popup) {
  if (file.empty() || master_tag.empty()) {
    report_missing_data("Leggi_colonne_treedb2", file, "", master_tag, popup);
    return std::nullopt;
  }
  std::optional<std::string> text = read_whole(file);
  if (!text) {
    if (popup)
      Mostra_popup("WARNING, I cannot open the file" + file,
                   "ATTENZIONE, impossibile aprire il file" + file);
    return std::nullopt;
  }
  const std::string open = opening_tag(master_tag, selection);
  const std::string close = closing_tag(master_tag, selection);
  ColumnBlock block;
  std::vector<std::string> lines = split_lines(*text);
  std::size_t i = 0;
  while (i < lines.size() && lines[i] != open) ++i;
  if (i == lines.size()) return block;
  ++i;
  if (i < lines.size() && lines[i] != close) block.member = strip_brackets(lines[i++]);
  if (i < lines.size() && lines[i] != close) block.access_text = strip_brackets(lines[i++]);
  for (; i < lines.size() && lines[i] != close; ++i) {
    std::optional<DclgenColumn> column = parse_record(lines[i]);
    if (!column) return std::nullopt;
    block.columns.push_back(std::move(*column));
  }
  return block;
}

}  // namespace quorva
