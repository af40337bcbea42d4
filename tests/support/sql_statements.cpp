#include "support/sql_statements.h"

#include <cctype>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace quorva::test {

namespace {

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

std::string lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

// Blanks outside literals collapsed to one; leading and trailing blanks removed.
std::string collapse(const std::string& text) {
  std::string out;
  bool quoted = false;
  for (char c : text) {
    if (c == '\'') quoted = !quoted;
    if (!quoted && std::isspace(static_cast<unsigned char>(c))) {
      if (!out.empty() && out.back() != ' ') out += ' ';
      continue;
    }
    out += c;
  }
  while (!out.empty() && out.back() == ' ') out.pop_back();
  return out;
}

// COBOL text of a line: columns 8-72, nothing for comment, JCL and blank lines.
std::string cobol_text(const std::string& line) {
  if (line.rfind("//", 0) == 0 || line.rfind("/*", 0) == 0) return "";
  if (line.size() <= 7 || line[6] == '*' || line[6] == '/') return "";
  return line.substr(7, 65);
}

// Applies `rewrite` to the parts of `text` outside string literals.
template <typename F>
std::string outside_literals(const std::string& text, F rewrite) {
  std::string out, part;
  bool quoted = false;
  for (char c : text) {
    if (c == '\'') {
      if (!quoted) {
        out += rewrite(part);
        part.clear();
      }
      quoted = !quoted;
      out += c;
      continue;
    }
    if (quoted)
      out += c;
    else
      part += c;
  }
  return out + rewrite(part);
}

}  // namespace

std::vector<SqlStatement> cobol_sql_statements(const std::string& program) {
  std::vector<SqlStatement> statements;
  std::vector<std::string> lines = lines_of(program);
  static const std::regex kExec(R"(\bEXEC\s+SQL\b)", std::regex::icase);
  static const std::regex kEnd(R"(\bEND-EXEC\b)", std::regex::icase);
  bool inside = false;
  for (size_t i = 0; i < lines.size(); ++i) {
    std::string text = cobol_text(lines[i]);
    while (!text.empty()) {
      std::smatch match;
      if (!inside) {
        if (!std::regex_search(text, match, kExec)) break;
        statements.push_back({static_cast<int>(i) + 1, ""});
        inside = true;
        text = match.suffix();
      }
      if (std::regex_search(text, match, kEnd)) {
        statements.back().text = collapse(statements.back().text + " " + match.prefix().str());
        inside = false;
        text = match.suffix();
      } else {
        statements.back().text += " " + text;
        break;
      }
    }
  }
  return statements;
}

std::vector<SqlStatement> easytrieve_sql_statements(const std::string& program) {
  std::vector<SqlStatement> statements;
  std::vector<std::string> lines = lines_of(program);
  std::string current;
  int first = 0;
  bool continues = false;
  auto finish = [&] {
    std::string text = collapse(current);
    std::string head = upper(text.substr(0, text.find(' ')));
    if (head == "SQL") {
      statements.push_back({first, collapse(text.substr(3))});
    } else if (head == "SELECT" && upper(text).find(" FROM ") != std::string::npos) {
      statements.push_back({first, text});
    }
    current.clear();
  };
  for (size_t i = 0; i < lines.size(); ++i) {
    std::string text = lines[i].substr(0, std::min<size_t>(lines[i].size(), 72));
    if (text.rfind("//", 0) == 0 || text.rfind("/*", 0) == 0) continue;
    size_t begin = text.find_first_not_of(' ');
    if (begin == std::string::npos || text[begin] == '*') continue;
    size_t end = text.find_last_not_of(' ');
    text = text.substr(0, end + 1);
    bool next = text.back() == '+' || text.back() == '-';
    if (next) text.pop_back();
    if (!continues) first = static_cast<int>(i) + 1;
    current += " " + text;
    continues = next;
    if (!continues) finish();
  }
  if (!current.empty()) finish();
  return statements;
}

std::optional<std::string> create_table_sql(const std::string& member) {
  std::string text;
  for (const std::string& line : lines_of(member)) text += " " + cobol_text(line);
  static const std::regex kDeclare(
      R"(\bDECLARE\s+([A-Za-z0-9_$#@]+\.)?([A-Za-z0-9_$#@]+)\s+TABLE\s*\()", std::regex::icase);
  std::smatch match;
  if (!std::regex_search(text, match, kDeclare)) return std::nullopt;
  std::string owner = match.str(1);
  if (!owner.empty()) owner.pop_back();
  std::string table = match.str(2);
  std::string body = match.suffix();
  // The column list runs to the parenthesis that closes the one after TABLE.
  std::vector<std::string> columns;
  std::string column;
  int depth = 1;
  for (char c : body) {
    if (c == '(') ++depth;
    if (c == ')' && --depth == 0) break;
    if (c == ',' && depth == 1) {
      columns.push_back(collapse(column));
      column.clear();
      continue;
    }
    column += c;
  }
  columns.push_back(collapse(column));
  std::string qualified = owner.empty() ? "\"" + lower(table) + "\""
                                        : "\"" + lower(owner) + "\".\"" + lower(table) + "\"";
  std::string sql;
  if (!owner.empty()) sql += "CREATE SCHEMA IF NOT EXISTS \"" + lower(owner) + "\";\n";
  sql += "CREATE TABLE " + qualified + " (";
  static const std::regex kColumn(R"(^("?[A-Za-z0-9_$#@]+"?)\s+(.*)$)");
  static const std::regex kType(
      R"(^([A-Z][A-Z0-9]*( VARYING| PRECISION)?)\s*(\(\s*([0-9]+)\s*[KMG]?\s*(,\s*([0-9]+)\s*)?\))?)");
  bool first = true;
  std::set<std::string> seen;
  for (const std::string& definition : columns) {
    std::smatch parts;
    if (!std::regex_match(definition, parts, kColumn)) continue;
    std::string name = parts.str(1);
    if (name.front() == '"') name = name.substr(1, name.size() - 2);
    // A member listing a column twice keeps the first: the table is what matters here.
    if (!seen.insert(upper(name)).second) continue;
    std::string rest = upper(parts.str(2));
    std::smatch type;
    if (!std::regex_search(rest, type, kType)) continue;
    std::string db2 = type.str(1), length = type.str(4), scale = type.str(6);
    std::string pg;
    if (db2 == "DECIMAL" || db2 == "DEC" || db2 == "NUMERIC")
      pg = "NUMERIC(" + (length.empty() ? "5" : length) + "," + (scale.empty() ? "0" : scale) + ")";
    else if (db2 == "CHAR" || db2 == "CHARACTER" || db2 == "GRAPHIC")
      pg = "CHAR(" + (length.empty() ? "1" : length) + ")";
    else if (db2 == "VARCHAR" || db2 == "CHARACTER VARYING" || db2 == "CHAR VARYING" ||
             db2 == "VARCHAR2" || db2 == "VARGRAPHIC")
      pg = "VARCHAR(" + length + ")";
    else if (db2 == "LONG" || db2 == "CLOB" || db2 == "DBCLOB" || db2 == "XML")
      pg = "TEXT";
    else if (db2 == "DATE" || db2 == "TIME" || db2 == "INTEGER" || db2 == "SMALLINT" ||
             db2 == "BIGINT" || db2 == "REAL")
      pg = db2;
    else if (db2 == "TIMESTAMP")
      pg = "TIMESTAMP" + (length.empty() ? "" : "(" + std::min(length, std::string("6")) + ")");
    else if (db2 == "INT")
      pg = "INTEGER";
    else if (db2 == "FLOAT" || db2 == "DOUBLE" || db2 == "DOUBLE PRECISION")
      pg = "DOUBLE PRECISION";
    else if (db2 == "DECFLOAT")
      pg = "NUMERIC";
    else if (db2 == "BLOB" || db2 == "BINARY" || db2 == "VARBINARY" || db2 == "ROWID")
      pg = "BYTEA";
    else
      pg = "TEXT";
    if (rest.find("NOT NULL") != std::string::npos) pg += " NOT NULL";
    sql += std::string(first ? "" : ",") + "\n  \"" + lower(name) + "\" " + pg;
    first = false;
  }
  return sql + "\n);\n";
}

std::optional<std::string> postgres_statement(const std::string& db2) {
  std::string text = collapse(db2);
  std::string head = upper(text.substr(0, text.find(' ')));
  static const std::set<std::string> kNotPrepared = {"INCLUDE", "WHENEVER", "OPEN",     "CLOSE",
                                                     "FETCH",   "COMMIT",   "ROLLBACK", "CONNECT",
                                                     "SET",     "BEGIN",    "END",      "RELEASE"};
  if (kNotPrepared.count(head)) return std::nullopt;
  if (head == "DECLARE") {
    static const std::regex kCursor(
        R"(^DECLARE\s+\S+\s+(SENSITIVE\s+\S+\s+|INSENSITIVE\s+)?(NO\s+)?(SCROLL\s+)?CURSOR\s+(WITH(OUT)?\s+(HOLD|RETURN)\s+)*FOR\s+)",
        std::regex::icase);
    std::smatch match;
    if (!std::regex_search(text, match, kCursor)) return std::nullopt;  // DECLARE TABLE...
    text = match.suffix();
  }
  std::map<std::string, int> numbers;
  text = outside_literals(text, [&numbers](const std::string& part) {
    std::string out = part;
    // SELECT ... INTO :a, :b: the list of host variables goes, wherever it stands.
    static const std::regex kInto(
        R"(\bINTO\s+:[A-Za-z0-9_.-]+((\s*INDICATOR)?\s*:[A-Za-z0-9_.-]+)?(\s*,\s*:[A-Za-z0-9_.-]+((\s*INDICATOR)?\s*:[A-Za-z0-9_.-]+)?)*)",
        std::regex::icase);
    out = std::regex_replace(out, kInto, "");
    static const std::regex kHost(
        R"(:([A-Za-z0-9_-]+(\.[A-Za-z0-9_-]+)?)((\s*INDICATOR)?\s*:[A-Za-z0-9_-]+)?)",
        std::regex::icase);
    std::string replaced;
    auto begin = std::sregex_iterator(out.begin(), out.end(), kHost);
    size_t last = 0;
    for (auto it = begin; it != std::sregex_iterator(); ++it) {
      std::string name = upper((*it).str(1));
      if (!numbers.count(name)) {
        int next = static_cast<int>(numbers.size()) + 1;
        numbers[name] = next;
      }
      replaced += out.substr(last, (*it).position(0) - last) + "$" + std::to_string(numbers[name]);
      last = (*it).position(0) + (*it).length(0);
    }
    out = replaced + out.substr(last);
    static const std::regex kCurrent(R"(\bCURRENT\s+(DATE|TIMESTAMP|TIME)\b)", std::regex::icase);
    out = std::regex_replace(out, kCurrent, "CURRENT_$1");
    static const std::regex kIsolation(
        R"(\s*\bWITH\s+(UR|CS|RS|RR)\b(\s+USE\s+AND\s+KEEP\s+\w+\s+LOCKS)?)", std::regex::icase);
    out = std::regex_replace(out, kIsolation, "");
    static const std::regex kOptimize(R"(\s*\bOPTIMIZE\s+FOR\s+[0-9]+\s+ROWS?\b)",
                                      std::regex::icase);
    out = std::regex_replace(out, kOptimize, "");
    static const std::regex kUpdateOf(
        R"(\bFOR\s+UPDATE\s+OF\s+[A-Za-z0-9_]+(\s*,\s*[A-Za-z0-9_]+)*)", std::regex::icase);
    out = std::regex_replace(out, kUpdateOf, "FOR UPDATE");
    return out;
  });
  return collapse(text);
}

}  // namespace quorva::test
