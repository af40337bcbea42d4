#include "engine/column_file.h"

#include <cstdlib>
#include <sstream>

#include "dclgen/cobol_words.h"
#include "tagfile/disk.h"
#include "tagfile/folder_lock.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

// Implementation details: a column file is read whole and replaced whole under the working
// folder's lock. The reader and the rewriter must agree on what a line is and where a block
// ends, or a rewrite changes what the next read finds. Both cut the text at "\n" and compare
// a line without one "\r" before it, and the rewriter copies every line it keeps byte for
// byte, terminator included: rewriting kept lines in a normalised form (one "\r" dropped)
// turned a line "[SELECT1-QUERY]\r\r", no block, into one. Both end a block at its closing
// line or at the next tag line: a block left open at the end of the file would otherwise
// swallow the block appended after it, and a rewrite of an unclosed block would drop every
// block after it. Where the removed block, or the appended one, is what ends an unclosed
// block, the rewriter writes that block's closing line before it, so it ends there still
// and a second rewrite changes nothing more.

namespace quorva {
namespace {

// One line of a column file: its text as compared (without "\n" and one "\r" before it)
// and its bytes as stored (with its terminator, if it has one).
struct Line {
  std::string_view text;
  std::string_view raw;
};

std::vector<Line> split_lines(std::string_view text) {
  std::vector<Line> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    const std::size_t next = end == std::string_view::npos ? text.size() : end + 1;
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.push_back({line, text.substr(start, next - start)});
    start = next;
  }
  return lines;
}

// An opening or closing line of any block. None can stand inside a block, so a block whose
// closing line is missing ends at the next one (or at the end of the file), and a block
// appended after it does not become part of it.
bool is_tag_line(std::string_view line) {
  auto ends_with = [line](std::string_view end) {
    return line.size() >= end.size() && line.substr(line.size() - end.size()) == end;
  };
  return line.size() > 2 && line.front() == '[' && (ends_with("-QUERY]") || ends_with("-WHERE]"));
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

Status report_write_failure(const std::string& file, const std::string& reason) {
  Mostra_popup("I cannot Open the output file... look at error.log",
               "Impossibile Aprire file in scrittura ... vedi error.log");
  Scrivi_log("Impossibile Aprire il file", kNoNumber, LogKind::kError);
  Scrivi_log_dettaglio("nomefile:", file, kNoNumber, kNoNumber, LogKind::kError);
  return Status::failure(bilingual("I cannot write the file ", "Impossibile scrivere il file ") +
                         file + (reason.empty() ? "" : " (" + reason + ")"));
}

Status refuse_field(const char* label, const std::string& file) {
  const std::string message = line_break_message(label);
  Mostra_popup(message);
  Scrivi_log("Valore con a capo o NUL rifiutato", kNoNumber, LogKind::kError);
  Scrivi_log_dettaglio("nomefile:", file, kNoNumber, kNoNumber, LogKind::kError);
  return Status::failure(message);
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

Status Riscrivi_tag_treedb2(const std::string& file, const std::string& master_tag,
                            Selection selection, bool write, const std::string& member,
                            const std::string& access_text,
                            const std::vector<DclgenColumn>& columns) {
  if (file.empty() || master_tag.empty()) {
    report_missing_data("Riscrivi_tag_treedb2", file, member, master_tag, true);
    return Status::failure(bilingual("The file name or the Master Tag are NULL !!",
                                     "Il nome del file , o il Master Tag sono a NULL !!"));
  }
  if (write && !columns.empty()) {
    // A line break inside a field would end its line and start another record or block.
    const std::pair<const char*, const std::string*> fields[] = {{"MEMBER", &member},
                                                                 {"PREFIX", &access_text}};
    for (const auto& [label, value] : fields)
      if (has_line_break(*value)) return refuse_field(label, file);
    for (const DclgenColumn& column : columns)
      if (has_line_break(column.name) || has_line_break(column.length_text) ||
          has_line_break(column.cobol_picture))
        return refuse_field("COLUMN", file);
  }
  FolderLock lock;
  if (!lock.held()) return lock.status();
  FileRead old = disk().read(file);
  // A file not written yet holds no blocks; one that cannot be read must not be replaced
  // by the new block alone.
  if (old.status == FileRead::kFailed) return report_write_failure(file, old.error);
  const std::string open = opening_tag(master_tag, selection);
  const std::string close = closing_tag(master_tag, selection);
  std::string text;
  text.reserve(old.text.size() + 64 * columns.size() + 64);
  bool inside = false;
  std::string_view open_block;  // the opening line of the kept block the text is inside
  for (const Line& line : split_lines(old.text)) {
    if (inside) {
      if (line.text == close) {
        inside = false;
        continue;
      }
      if (!is_tag_line(line.text)) continue;
      inside = false;  // the block ended without its closing line
    }
    if (line.text == open) {
      // This block's opening line ended an unclosed block before it: a closing line in its
      // place keeps that block from running on into the lines after this one.
      if (!open_block.empty()) text += "[/" + std::string(open_block.substr(1)) + "\n";
      open_block = {};
      inside = true;
      continue;
    }
    if (is_tag_line(line.text)) open_block = line.text[1] == '/' ? std::string_view() : line.text;
    text += line.raw;
  }
  if (write && !columns.empty()) {
    if (!text.empty() && text.back() != '\n') text += '\n';
    if (!open_block.empty()) text += "[/" + std::string(open_block.substr(1)) + "\n";
    text += open + "\n<" + member + ">\n<" + access_text + ">\n";
    int nullable = 0;
    for (const DclgenColumn& column : columns)
      text += record_line(column, column.not_null == 0 ? ++nullable : 0) + "\n";
    text += close + "\n";
  }
  FileWrite written = disk().replace(file, text);
  if (!written.ok()) return report_write_failure(file, written.error);
  return {};
}

std::optional<ColumnBlock> Leggi_colonne_treedb2(const std::string& file,
                                                 const std::string& master_tag, Selection selection,
                                                 bool popup) {
  if (file.empty() || master_tag.empty()) {
    report_missing_data("Leggi_colonne_treedb2", file, "", master_tag, popup);
    return std::nullopt;
  }
  std::optional<std::string> text = read_whole_file(file);
  if (!text) {
    if (popup)
      Mostra_popup("WARNING, I cannot open the file" + file,
                   "ATTENZIONE, impossibile aprire il file" + file);
    return std::nullopt;
  }
  const std::string open = opening_tag(master_tag, selection);
  ColumnBlock block;
  const std::vector<Line> lines = split_lines(*text);
  std::size_t i = 0;
  while (i < lines.size() && lines[i].text != open) ++i;
  if (i == lines.size()) return block;
  ++i;
  if (i < lines.size() && !is_tag_line(lines[i].text))
    block.member = strip_brackets(std::string(lines[i++].text));
  if (i < lines.size() && !is_tag_line(lines[i].text))
    block.access_text = strip_brackets(std::string(lines[i++].text));
  for (; i < lines.size() && !is_tag_line(lines[i].text); ++i) {
    std::optional<DclgenColumn> column = parse_record(std::string(lines[i].text));
    if (!column) return std::nullopt;
    block.columns.push_back(std::move(*column));
  }
  return block;
}

}  // namespace quorva
