#include "support/sql_statements.h"

#include <regex>
#include <sstream>

namespace quorva::test {

namespace {

std::string collapse(const std::string& text) {
  static const std::regex kBlanks(R"(\s+)");
  std::string out = std::regex_replace(text, kBlanks, " ");
  out.erase(0, out.find_first_not_of(' '));
  return out.erase(out.find_last_not_of(' ') + 1);
}

// Columns 8-72 of a COBOL line; nothing for comment, JCL and short lines.
std::string cobol_text(const std::string& line) {
  if (line.rfind("//", 0) == 0 || line.rfind("/*", 0) == 0) return "";
  if (line.size() <= 7 || line[6] == '*' || line[6] == '/') return "";
  return line.substr(7, 65);
}

}  // namespace

std::vector<SqlStatement> sql_statements(const std::string& program, bool cobol) {
  std::vector<SqlStatement> statements;
  std::istringstream in(program);
  std::string line, current;
  bool inside = false, sql = false;
  for (int number = 1; std::getline(in, line); ++number) {
    if (cobol) {
      std::string text = cobol_text(line);
      size_t at = text.find("EXEC SQL");
      if (!inside && at != std::string::npos) {
        inside = true;
        statements.push_back({number, ""});
        text.erase(0, at + 8);
      }
      if (!inside) continue;
      size_t end = text.find("END-EXEC");
      current += " " + text.substr(0, end);
      if (end == std::string::npos) continue;
      statements.back().text = collapse(current);
      current.clear();
      inside = false;
    } else {
      if (line.rfind("//", 0) == 0 || line.rfind("/*", 0) == 0) continue;
      std::string text = collapse(line.substr(0, 72));
      if (text.empty() || text[0] == '*') continue;
      const bool more = text.back() == '+';
      if (more) text.pop_back();
      if (!inside) {
        sql = text.rfind("SQL ", 0) == 0;
        if (sql) statements.push_back({number, ""});
      }
      if (sql) current += " " + text;
      inside = more;
      if (inside || !sql) continue;
      statements.back().text = collapse(current).substr(4);
      current.clear();
    }
  }
  return statements;
}

std::optional<std::string> create_table_sql(const std::string& member) {
  std::istringstream in(member);
  std::string line, text;
  while (std::getline(in, line)) text += " " + cobol_text(line);
  static const std::regex kDeclare(R"(DECLARE\s+(\w+)\.(\w+)\s+TABLE\s*\((.*)\)\s*END-EXEC)");
  std::smatch match;
  if (!std::regex_search(text, match, kDeclare)) return std::nullopt;
  return "CREATE SCHEMA IF NOT EXISTS " + match.str(1) + ";\nCREATE TABLE " + match.str(1) + "." +
         match.str(2) + " (" + collapse(match.str(3)) + ");\n";
}

std::optional<std::string> postgres_statement(const std::string& db2) {
  static const std::regex kNotPrepared(R"(^(INCLUDE|OPEN|CLOSE|FETCH|COMMIT|ROLLBACK)\b)");
  static const std::regex kCursor(R"(^DECLARE \S+ CURSOR FOR )");
  static const std::regex kInto(R"( INTO( ?,? ?:[\w.-]+)+)");
  static const std::regex kCurrent(R"(\bCURRENT (DATE|TIMESTAMP|TIME)\b)");
  static const std::regex kHost(R"(:[\w.-]+)");
  if (std::regex_search(db2, kNotPrepared)) return std::nullopt;
  std::string text = std::regex_replace(db2, kCursor, "");
  text = std::regex_replace(std::regex_replace(text, kInto, ""), kCurrent, "CURRENT_$1");
  // An indicator rides on its host variable: one parameter.
  static const std::regex kIndicator(R"((:[\w.-]+) (INDICATOR )?:[\w.-]+)");
  text = std::regex_replace(text, kIndicator, "$1");
  std::string out, rest = text;
  int number = 0;
  for (std::sregex_iterator it(text.begin(), text.end(), kHost), end; it != end; ++it) {
    out += it->prefix().str() + "$" + std::to_string(++number);
    rest = it->suffix().str();
  }
  return out + rest;
}

}  // namespace quorva::test
