#include "dclgen/dclgen_parser.h"

// Implementation details: the two passes follow the layout DCLGEN writes. The SQL pass
// looks at the first 80 characters of a line and probes the type words in a fixed order
// from (name length + 6), so "VARCHAR" is typed CHAR and "TIMESTAMP" wins over "TIME";
// both quirks are part of the column-file format the engine reads. The COBOL pass works on
// statements (lines up to a period once level 01 has begun) and ignores columns 73-80,
// where members copied from the host keep their sequence numbers.

#include <algorithm>
#include <cctype>
#include <charconv>

#include "dclgen/cobol_words.h"
#include "dclgen/member_lines.h"
#include "dclgen/picture_compression.h"
#include "store/config_file.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

constexpr std::size_t kSqlLineLimit = 80;
constexpr std::size_t kCobolTextEnd = 72;

struct TypeWord {
  const char* word;
  int code;
};

// Historical order: CHAR before VARCHAR, TIMESTAMP before TIME.
constexpr TypeWord kTypeWords[] = {
    {"DECIMAL", db2type::kDecimal},   {"CHAR", db2type::kChar},
    {"DATE", db2type::kDate},         {"TIMESTAMP", db2type::kTimestamp},
    {"TIME", db2type::kTime},         {"INTEGER", db2type::kInteger},
    {"SMALLINT", db2type::kSmallint}, {"VARCHAR", db2type::kVarchar},
};

// Probed only when none of the historical words matched; longer words before the words
// they contain.
constexpr TypeWord kNewerTypeWords[] = {
    {"VARGRAPHIC", db2type::kVargraphic},
    {"GRAPHIC", db2type::kGraphic},
    {"VARBINARY", db2type::kVarbinary},
    {"BINARY", db2type::kBinary},
    {"DBCLOB", db2type::kDbclob},
    {"CLOB", db2type::kClob},
    {"BLOB", db2type::kBlob},
    {"BIGINT", db2type::kBigint},
    {"DECFLOAT", db2type::kDecfloat},
    {"DOUBLE", db2type::kFloat},
    {"FLOAT", db2type::kFloat},
    {"REAL", db2type::kFloat},
    {"ROWID", db2type::kRowid},
    {"XML", db2type::kXml},
    {"NUMERIC", db2type::kDecimal},
};

bool holds_word(const std::string& text, std::size_t from, const char* word) {
  return from <= text.size() && text.find(word, from) != std::string::npos;
}

// A newer type word must stand as a word of its own, so that names such as REAL_AMOUNT
// do not type a column.
bool holds_whole_word(const std::string& text, std::size_t from, std::string_view word) {
  for (std::size_t at = text.find(word, from); at != std::string::npos;
       at = text.find(word, at + 1)) {
    auto is_name_char = [](char c) {
      return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '-';
    };
    bool starts = at == 0 || !is_name_char(text[at - 1]);
    std::size_t end = at + word.size();
    bool ends = end == text.size() || !is_name_char(text[end]);
    if (starts && ends) return true;
  }
  return false;
}

int probe_type(const std::string& line, std::size_t from, std::size_t name_end) {
  for (const TypeWord& type : kTypeWords) {
    if (holds_word(line, from, type.word)) return type.code;
  }
  for (const TypeWord& type : kNewerTypeWords) {
    if (holds_whole_word(line, name_end, type.word)) return type.code;
  }
  return db2type::kUnknown;
}

std::string length_text(const std::string& line, std::size_t from) {
  std::size_t open = line.rfind('(');
  std::size_t close = from <= line.size() ? line.find(')', from) : std::string::npos;
  if (open == std::string::npos || close == std::string::npos || close <= open) return {};
  std::string text = line.substr(open, close - open + 1);
  Togli_spazi(text);
  return text;
}

// Words as a stream reads them, without building a stream for each statement.
bool is_space(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

std::string_view next_word(std::string_view text, std::size_t& at) {
  while (at < text.size() && is_space(text[at])) ++at;
  const std::size_t start = at;
  while (at < text.size() && !is_space(text[at])) ++at;
  return text.substr(start, at - start);
}

std::string first_word(const std::string& text, std::size_t from) {
  return std::string(next_word(text, from));
}

std::string no_columns_message() {
  return bilingual(
      "ERROR!!! I've not found Db2 Data!!!\nVerify that you have the 'EXEC SQL DECLARE "
      "<table-name> TABLE' row inside your DCLGEN\nand that this one is the right DCLGen...",
      "ERRORE!!! Non ho trovato alcun dato DB2!!!\nVerifica che ci sia la dichiarazione: 'EXEC "
      "SQL DECLARE <nome-tabella> TABLE' nella DCLGEN\ne che sia la DCLGEN giusta....");
}

void replace_all(std::string& text, std::string_view from, std::string_view to) {
  std::string out;
  std::size_t start = 0;
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, start)) {
    out.append(text, start, at - start);
    out.append(to);
    start = at + from.size();
  }
  out.append(text, start, std::string::npos);
  text = std::move(out);
}

}  // namespace

std::string cannot_open_member_message(const std::string& path) {
  return bilingual("WARNING! I cannot open the following File:",
                   "ATTENZIONE, impossibile aprire il file:") +
         path;
}

DclgenPassResult DclgenParser::parse_sql(std::string_view text) {
  columns_.clear();
  bool declared = false;
  for (std::string& line : member_cards(text)) {
    if (line.size() > kSqlLineLimit) line.resize(kSqlLineLimit);
    if (line.size() < 7 || is_blank_line(line) || is_comment_line(line)) continue;
    if (!declared) {
      declared = holds_word(line, 0, "EXEC") && holds_word(line, 0, "SQL") &&
                 holds_word(line, 0, "DECLARE") && holds_word(line, 0, "TABLE");
      continue;
    }
    if (line.find("END-EXEC", 6) != std::string::npos) break;
    // The first column line opens with "(", which the name read skips.
    std::size_t name_at = line.find_first_not_of(" \t", 6);
    if (columns_.empty() && name_at != std::string::npos) {
      name_at = line.find_first_not_of(" \t", name_at + 1);
    }
    DclgenColumn column;
    column.name = first_word(line, name_at == std::string::npos ? line.size() : name_at);
    if (column.name.empty()) {
      return {false,
              bilingual("Error Receiving a DB2 Column!!!", "Errore Ricezione nome Colonna DB2!!!")};
    }
    std::size_t from = column.name.size() + 6;
    column.type_code = probe_type(line, from, name_at + column.name.size());
    column.not_null = holds_word(line, from, "NOT") && holds_word(line, from, "NULL") ? 1 : 0;
    column.length_text = length_text(line, from);
    column.ordinal = static_cast<int>(columns_.size());
    columns_.push_back(std::move(column));
  }
  if (columns_.empty()) return {false, no_columns_message()};
  return {true, {}};
}

DclgenPassResult DclgenParser::parse_sql_file(const std::string& path) {
  std::optional<std::string> text = read_member_file(path);
  if (!text) {
    columns_.clear();
    return {false, cannot_open_member_message(path)};
  }
  return parse_sql(*text);
}

void DclgenParser::read_options(const std::string& comment) {
  std::size_t names = comment.find("NAMES(");
  if (names != std::string::npos) {
    std::size_t at = comment.find_first_not_of(' ', names + 6);
    if (at != std::string::npos) {
      std::size_t end = comment.find_first_of(" .)", at);
      names_prefix_ = comment.substr(at, end == std::string::npos ? std::string::npos : end - at);
    }
  }
  if (comment.find("COLSUFFIX(YES)") != std::string::npos) colsuffix_ = true;
}

DclgenPassResult DclgenParser::parse_cobol(std::string_view text, bool compress) {
  structure_.clear();
  fields_.clear();
  field_parts_.clear();
  field_level_ = 0;
  fields_done_ = false;
  names_prefix_.clear();
  colsuffix_ = false;
  varchar_group_ = 0;
  by_name_.clear();
  by_name_.reserve(columns_.size());
  for (std::size_t i = 0; i < columns_.size(); ++i) by_name_.try_emplace(columns_[i].name, i);
  std::string statement;
  for (std::string& line : member_cards(text)) {
    if (line.size() < 8 || is_blank_line(line)) continue;
    if (is_comment_line(line)) {
      read_options(line);
      continue;
    }
    if (line.size() > kCobolTextEnd) line.resize(kCobolTextEnd);
    if (structure_.empty()) {
      take_statement(line, compress);
      continue;
    }
    if (!statement.empty()) statement += ' ';
    statement += line;
    if (line.find('.') == std::string::npos) continue;
    take_statement(std::move(statement), compress);
    statement.clear();
  }
  if (!statement.empty()) take_statement(std::move(statement), compress);
  return {true, {}};
}

DclgenPassResult DclgenParser::parse_cobol_file(const std::string& path) {
  std::optional<std::string> text = read_member_file(path);
  if (!text) return {false, cannot_open_member_message(path)};
  return parse_cobol(*text, config_switch(kCobolVarsCompressionKey));
}

DclgenPassResult DclgenParser::parse_file(const std::string& path) {
  std::optional<std::string> text = read_member_file(path);
  if (!text) {
    columns_.clear();
    return {false, cannot_open_member_message(path)};
  }
  DclgenPassResult sql = parse_sql(*text);
  if (!sql.ok) return sql;
  return parse_cobol(*text, config_switch(kCobolVarsCompressionKey));
}

void DclgenParser::note_field(const std::string& statement) {
  if (fields_done_) return;
  // Sequence numbers may precede the level: the level is the last number before the name.
  std::size_t at = 0;
  int level = 0;
  std::string_view name;
  for (std::string_view word = next_word(statement, at); !word.empty();
       word = next_word(statement, at)) {
    if (word.find_first_not_of("0123456789") == std::string_view::npos) {
      level = 0;
      std::from_chars(word.data(), word.data() + word.size(), level);
      continue;
    }
    name = word;
    break;
  }
  if (level < 1 || level > 49 || name.empty()) return;
  while (!name.empty() && name.back() == '.') name.remove_suffix(1);
  if (level == 1) {
    fields_done_ = !structure_.empty() && field_level_ != 0;
    return;
  }
  if (structure_.empty()) return;
  if (field_level_ == 0) field_level_ = level;
  if (level == field_level_) {
    fields_.emplace_back(name);
    field_parts_.emplace_back();
  } else if (level > field_level_ && !field_parts_.empty()) {
    field_parts_.back().emplace_back(name);
  }
}

void DclgenParser::take_statement(std::string statement, bool compress) {
  note_field(statement);
  std::size_t pic = statement.find(" PIC ");
  if (pic == std::string::npos) {
    std::size_t level01 = statement.find(" 01 ");
    if (level01 != std::string::npos) {
      // The table's own structure comes first; indicator arrays may follow it.
      if (structure_.empty()) {
        std::size_t at = statement.find_first_not_of(' ', level01 + 4);
        std::size_t end = at == std::string::npos ? at : statement.find_first_of(" .", at);
        if (at != std::string::npos) {
          structure_ = statement.substr(at, end == std::string::npos ? end : end - at);
        }
      }
    } else if (statement.find(" 10 ") != std::string::npos) {
      varchar_group_ = 1;
    }
    return;
  }
  if (varchar_group_ > 0) {
    ++varchar_group_;
    std::size_t text_suffix = statement.find("-TEXT ");
    if (text_suffix != std::string::npos && text_suffix < pic) {
      std::fill_n(statement.begin() + text_suffix, 5, ' ');
      varchar_group_ = 0;
    }
    if (varchar_group_ >= 3) varchar_group_ = 0;
  }
  // The variable is the first word after the numbers (sequence number, level number).
  const std::string_view head(statement.data(), pic);
  std::string name;
  std::size_t at = 0;
  for (std::string_view word = next_word(head, at); !word.empty(); word = next_word(head, at)) {
    if (word.find_first_not_of("0123456789") != std::string_view::npos) {
      name = word;
      break;
    }
  }
  std::string picture = statement.substr(pic + 5);
  replace_all(picture, " USAGE ", " ");
  Trim_spazi(picture);
  if (compress) normalise_picture(picture);
  match_picture(std::move(name), picture);
}

void DclgenParser::match_picture(std::string name, const std::string& picture) {
  if (name.empty()) return;
  replace_all(name, "-", "_");
  if (!names_prefix_.empty()) {
    std::string prefix = names_prefix_;
    replace_all(prefix, "-", "_");
    if (name.compare(0, prefix.size(), prefix) == 0) {
      std::string rest = name.substr(prefix.size());
      if (colsuffix_) {
        name = rest;
      } else if (!rest.empty() && rest.find_first_not_of("0123456789") == std::string::npos &&
                 rest.size() < 6) {
        // Without COLSUFFIX(YES) DCLGEN numbers the fields from 1 in column order.
        std::size_t number = 0;
        std::from_chars(rest.data(), rest.data() + rest.size(), number);
        if (number >= 1 && number <= columns_.size()) {
          columns_[number - 1].cobol_picture = picture;
        }
        return;
      }
    }
  }
  if (auto found = by_name_.find(name); found != by_name_.end()) {
    columns_[found->second].cobol_picture = picture;
    return;
  }
  // STATUS1 is DCLGEN's field for a column STATUS, a word COBOL reserves.
  if (name.size() > 1 && name.back() == '1') {
    std::string word = name.substr(0, name.size() - 1);
    replace_all(word, "_", "-");
    if (is_cobol_reserved_word(word)) match_picture(name.substr(0, name.size() - 1), picture);
  }
}

}  // namespace quorva
