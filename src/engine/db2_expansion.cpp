#include "engine/db2_expansion.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "engine/line_writer.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

// Implementation details: position 3 names the access kind, the block's occurrence k the
// access, position 4 the selection (X QUERY, W WHERE) and position 5 the form: "A" one line
// per column, "1" the same with the first list separator blanked on the first column, "N"
// one line per nullable column in the null-indicator form, "T" the same for the nullable
// columns that are not numbers (a blank one is written as NULL). "<IND_VAL>" binds a nullable
// column's indicator next to its host variable (the same name the "N" form declares);
// "<EZT_VAL>" gives the Easytrieve length and type of the column's host field.

namespace quorva {
namespace {

constexpr std::size_t kTextColumn = 6;

// The writer breaks a line past its margin and the second piece would be code: a to-do
// comment gives up blanks of its indentation first.
void fit_comment(std::string& comment) {
  const bool cobol = comment[0] != 'J' && comment[0] != 'E';
  const std::size_t margin = cobol ? static_cast<std::size_t>(kCobolBreakPoint)
                                   : kTextColumn + static_cast<std::size_t>(kEasytrieveBreakPoint);
  const std::size_t end = comment.find_last_not_of(' ') + 1;
  const std::size_t from = kTextColumn + 2;  // one blank stays after the "*"
  const std::size_t text = comment.find_first_not_of(' ', from);
  if (end <= margin || text == std::string::npos) return;
  comment.erase(from, std::min(end - margin, text - from));
}

bool is_word_char(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_';
}

// Blanks the first "," or the first word "AND" of the text part, keeping the columns.
void blank_first_separator(std::string& line) {
  for (std::size_t i = kTextColumn; i < line.size(); ++i) {
    if (line[i] == ',') {
      line[i] = ' ';
      return;
    }
    if (line.compare(i, 3, "AND") == 0 && (i == 0 || !is_word_char(line[i - 1])) &&
        (i + 3 >= line.size() || !is_word_char(line[i + 3]))) {
      line.replace(i, 3, "   ");
      return;
    }
  }
}

std::string two_digits(int n) {
  return (n >= 0 && n < 10 ? "0" : "") + std::to_string(n);
}

void replace(std::string& line, std::string_view tag, const std::string& value) {
  if (line.find(tag) != std::string::npos) Sostituisci_in_colonna(line, tag, value);
}

std::string null_name(AccessKind kind, int k, Selection selection, const std::string& number) {
  return std::string("WRK-NULL-") + access_letter(kind) + std::to_string(k) +
         (selection == Selection::kQuery ? "Q" : "W") + "-" + number;
}

// The numbers of a length text such as "(11,2)"; absent ones are 0.
std::pair<int, int> length_numbers(const std::string& text) {
  int numbers[2] = {0, 0};
  int at = 0;
  for (char c : text) {
    if (std::isdigit(static_cast<unsigned char>(c)) && numbers[at] < 100000)
      numbers[at] = numbers[at] * 10 + (c - '0');
    else if (c == ',' && at == 0)
      at = 1;
  }
  return {numbers[0], numbers[1]};
}

}  // namespace

std::string easytrieve_field(const DclgenColumn& column, bool varying) {
  const auto [length, scale] = length_numbers(column.length_text);
  auto field = [](int bytes, const char* type, int decimals = -1) {
    std::string text = std::to_string(bytes);
    text = std::string(text.size() < 3 ? 3 - text.size() : 0, ' ') + text + " " + type;
    return decimals < 0 ? text : text + " " + std::to_string(decimals);
  };
  // A member lists a VARCHAR as CHAR; its field, a group of length and text, tells.
  int type = column.type_code;
  if (varying && type == db2type::kChar) type = db2type::kVarchar;
  if (varying && type == db2type::kGraphic) type = db2type::kVargraphic;
  switch (type) {
    case db2type::kDecimal:
      return field((length > 0 ? length : 5) / 2 + 1, "P", scale);
    case db2type::kInteger:
      return field(4, "B", 0);
    case db2type::kSmallint:
      return field(2, "B", 0);
    case db2type::kBigint:
      return field(8, "B", 0);
    case db2type::kDate:
      return field(10, "A");
    case db2type::kTime:
      return field(8, "A");
    case db2type::kTimestamp:
      return field(length == 0 ? 26 : 20 + length, "A");
    case db2type::kTimestampTz:
      return field(32, "A");
    case db2type::kGraphic:
      return field(2 * (length > 0 ? length : 1), "A");
    // A varying field's length counts its two-byte length prefix, as DB2 hands it over.
    case db2type::kVargraphic:
      return field(2 * (length > 0 ? length : 1) + 2, "A") + " VARYING";
    case db2type::kVarchar:
    case db2type::kVarbinary:
      return field((length > 0 ? length : 1) + 2, "A") + " VARYING";
    default:
      return field(length > 0 ? length : 10, "A");
  }
}

bool is_db2_line(const std::string& line) {
  return line.size() >= 4 && line[1] == '2' && (line[3] == 'X' || line[3] == 'W');
}

const ColumnBlock* Db2Expansion::block(AccessKind kind, int k, Selection selection) {
  const auto key = std::make_tuple(static_cast<int>(kind), k, static_cast<int>(selection));
  auto found = blocks_.find(key);
  if (found == blocks_.end()) {
    const std::string master = std::string(access_word(kind)) + std::to_string(k);
    std::optional<ColumnBlock> read;
    if (Esiste_file(column_file_name(kind)))
      read = Leggi_colonne_treedb2(column_file_name(kind), master, selection, false);
    found = blocks_.emplace(key, std::move(read)).first;
  }
  return found->second && !found->second->columns.empty() ? &*found->second : nullptr;
}

Db2Expansion::LineFate Db2Expansion::statement_line(const std::string& line, int k) {
  const char needs = line.size() > 5 ? line[5] : ' ';
  if (needs != 'Q' && needs != 'W' && needs != 'B' && needs != 'w' && needs != 'v')
    return LineFate::kWrite;
  const std::optional<AccessKind> kind = access_kind_from_letter(line[2]);
  if (!kind) return LineFate::kWrite;
  const bool query = block(*kind, k, Selection::kQuery) != nullptr;
  const bool where = block(*kind, k, Selection::kWhere) != nullptr;
  switch (needs) {
    case 'Q':
      return query ? LineFate::kWrite : LineFate::kComment;
    case 'W':
      return where ? LineFate::kWrite : LineFate::kComment;
    case 'B':
      return query && where ? LineFate::kWrite : LineFate::kComment;
    case 'w':
      return !query ? LineFate::kComment : where ? LineFate::kWrite : LineFate::kDrop;
    default:  // 'v'
      return !query ? LineFate::kComment : where ? LineFate::kDrop : LineFate::kWrite;
  }
}

void Db2Expansion::comment_out(std::string& line) {
  if (line.size() > kTextColumn && line[kTextColumn] == '*') return;  // one already
  if (line.size() < kTextColumn) line.resize(kTextColumn, ' ');
  if (line.size() > kTextColumn && line[kTextColumn] == ' ')
    line[kTextColumn] = '*';
  else
    line.insert(kTextColumn, 1, '*');
  fit_comment(line);
}

void Db2Expansion::expand(const std::string& line, int k,
                          const std::function<void(std::string)>& emit) {
  expand_group({line}, k, emit);
}

void Db2Expansion::expand_group(const std::vector<std::string>& lines, int k,
                                const std::function<void(std::string)>& emit) {
  const std::string& line = lines.front();
  const char form = line.size() > 4 ? line[4] : ' ';
  if (form != '1' && form != 'A' && form != 'N' && form != 'T' && form != 'V' && form != 'E' &&
      form != 't' && form != 'v') {
    Scrivi_log("Flag 5 non riconosciuto :" + line, kNoNumber, LogKind::kError);
    return;
  }
  const std::optional<AccessKind> kind = access_kind_from_letter(line[2]);
  const Selection selection = line[3] == 'X' ? Selection::kQuery : Selection::kWhere;
  const ColumnBlock* columns = kind ? block(*kind, k, selection) : nullptr;
  if (!columns) {
    // No selection yet: each line once, as a comment that reads as the access's to-do.
    for (const std::string& each : lines) {
      std::string comment = each;
      comment_out(comment);
      replace(comment, "<DB2_VAL>", "column-name");
      replace(comment, "<COBOL_VAL>", "host-variable");
      replace(comment, "CAMPO-ALL", "host-variable");
      replace(comment, "CAMPO-TXT", "host-variable");
      replace(comment, "CAMPO-LEN", "host-variable-LEN");
      replace(comment, "<NULL_VAL>", each[0] == 'E' ? "' '" : "SPACES");
      replace(comment, "<PIC_VAL>", "X(10)");
      replace(comment, "<IND_VAL>", "");
      replace(comment, "<EZT_VAL>", " 10 A");
      if (kind) replace(comment, "WRK-NULL-ALL", null_name(*kind, k, selection, "00"));
      fit_comment(comment);
      emit(std::move(comment));
    }
    return;
  }
  if (form == 't' || form == 'v') {
    // Written once, and only when some column is nullable (t) or a VARCHAR group (v): the
    // comment that explains the lines those columns take.
    bool any = false;
    for (const DclgenColumn& column : columns->columns) {
      if (form == 't')
        any |= column.not_null == 0;
      else if (members_ && line[0] == 'C' && !column.name.empty())
        if (auto own = members_->host_variable(*kind, k, column.name)) any |= own->varying();
    }
    if (any)
      for (const std::string& each : lines) emit(each);
    return;
  }
  const HostNaming naming = parse_host_naming(columns->access_text);
  if (db2_missing_.empty()) {
    db2_missing_ = bilingual("*DB2_not_found*", "*DB2_non_trovata*");
    pic_missing_ = bilingual("*PIC_not_found*", "*PIC_non_trovata*");
  }
  const bool easytrieve = line[0] == 'E';
  std::optional<std::string> held;  // an 'E' line waits to know whether it is the last
  bool first = true;
  for (const DclgenColumn& column : columns->columns) {
    if ((form == 'N' || form == 'T') && column.not_null != 0) continue;
    if (form == 'T' && db2type::is_numeric(column.type_code)) continue;
    std::optional<HostVariable> own;
    if (members_ && !column.name.empty()) own = members_->host_variable(*kind, k, column.name);
    // Easytrieve declares its own host fields: only the member's VARCHAR groups count there.
    const bool varying = own && own->varying();
    if (easytrieve) own.reset();
    if (form == 'V' && (easytrieve || !varying)) continue;
    const std::string host = column.name.empty() ? pic_missing_
                             : own               ? own->cobol
                                                 : naming.host_variable(column);
    const bool numeric = db2type::is_numeric(column.type_code);
    for (const std::string& each : lines) {
      std::string out = each;
      if ((form == '1' || form == 'E') && first) blank_first_separator(out);
      replace(out, "<DB2_VAL>", column.name.empty() ? db2_missing_ : column.name);
      // Every <COBOL_VAL> of the template follows the ":" of an SQL statement.
      replace(out, "<COBOL_VAL>", own ? own->sql : host);
      replace(out, "<PIC_VAL>", column.cobol_picture.empty() ? pic_missing_ : column.cobol_picture);
      if (out.find("<EZT_VAL>") != std::string::npos)
        replace(out, "<EZT_VAL>", easytrieve_field(column, varying));
      auto indicator = [&] {
        return null_name(*kind, k, selection, two_digits(column.null_indicator));
      };
      if (out.find("<IND_VAL>") != std::string::npos)
        replace(out, "<IND_VAL>", column.not_null != 0 ? "" : ":" + indicator());
      if (out.find("WRK-NULL-ALL") != std::string::npos) replace(out, "WRK-NULL-ALL", indicator());
      // CAMPO-ALL is the field as COBOL names it; CAMPO-TXT and CAMPO-LEN a VARCHAR's text
      // and length items (the field itself where it is elementary).
      replace(out, "CAMPO-ALL", host);
      replace(out, "CAMPO-TXT", own && own->varying() ? own->text : host);
      if (own && own->varying()) replace(out, "CAMPO-LEN", own->length);
      replace(out, "<NULL_VAL>",
              easytrieve ? (numeric ? "0" : "' '") : (numeric ? "ZEROES" : "SPACES"));
      if ((form == 'N' || form == 'T') && !numeric) replace(out, "ZEROES", "SPACES");
      if (form == 'E') {
        if (held) emit(std::move(*held));
        held = std::move(out);
        continue;
      }
      emit(std::move(out));
    }
    first = false;
  }
  if (held) {
    // The last item of a list that ends its statement: no continuation after it.
    std::string& last = *held;
    while (!last.empty() && last.back() == ' ') last.pop_back();
    if (!last.empty() && last.back() == '+') last.pop_back();
    while (!last.empty() && last.back() == ' ') last.pop_back();
    emit(std::move(last));
  }
}

}  // namespace quorva
