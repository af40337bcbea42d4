#include "check/check_sql_statements.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string>

namespace quorva {
namespace {

struct Token {
  std::string text;  // upper case; a literal as "'"
  size_t line = 0;
};

using Statement = std::vector<Token>;

bool is_punctuation(char c) {
  return c == ',' || c == '(' || c == ')' || c == '=';
}

void tokenize(const std::string& text, size_t line, Statement& into) {
  size_t i = 0;
  while (i < text.size()) {
    const char c = text[i];
    if (c == ' ' || c == '\t') {
      ++i;
    } else if (c == '\'') {
      const size_t close = text.find('\'', i + 1);
      into.push_back({"'", line});
      i = close == std::string::npos ? text.size() : close + 1;
    } else if (is_punctuation(c)) {
      into.push_back({std::string(1, c), line});
      ++i;
    } else {
      size_t end = i;
      while (end < text.size() && text[end] != ' ' && text[end] != '\t' && text[end] != '\'' &&
             !is_punctuation(text[end]))
        ++end;
      std::string word = text.substr(i, end - i);
      for (char& w : word) w = static_cast<char>(std::toupper(static_cast<unsigned char>(w)));
      into.push_back({word, line});
      i = end;
    }
  }
}

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

std::vector<Statement> cobol_statements(const CheckedProgram& program) {
  std::vector<Statement> statements;
  std::optional<Statement> open;
  for (size_t i = 0; i < program.lines.size(); ++i) {
    const std::string& line = program.lines[i];
    if (program.kinds[i] != CheckLineKind::kSource || line.size() <= 7 || line[6] == '*' ||
        line[6] == '/')
      continue;
    std::string code = line.substr(7, 65);
    const std::string up = upper(code);
    size_t from = 0;
    if (!open) {
      const size_t exec = up.find("EXEC SQL");
      if (exec == std::string::npos) continue;
      open.emplace();
      from = exec + 8;
    }
    const size_t end = up.find("END-EXEC", from);
    tokenize(code.substr(from, end == std::string::npos ? end : end - from), i, *open);
    if (end == std::string::npos) continue;
    statements.push_back(std::move(*open));
    open.reset();
  }
  return statements;
}

std::vector<Statement> easytrieve_statements(const CheckedProgram& program) {
  std::vector<Statement> statements;
  std::optional<Statement> open;
  for (size_t i = 0; i < program.lines.size(); ++i) {
    if (program.kinds[i] != CheckLineKind::kSource) continue;
    std::string code = program.lines[i].substr(0, 72);
    const size_t first = code.find_first_not_of(' ');
    if (first == std::string::npos || code[first] == '*') continue;
    code.erase(code.find_last_not_of(' ') + 1);
    if (!open) {
      if (upper(code.substr(first, 4)) != "SQL ") continue;
      open.emplace();
      code.erase(0, first + 4);
    }
    const bool continued = code.back() == '+' || code.back() == '-';
    if (continued) code.pop_back();
    tokenize(code, i, *open);
    if (continued) continue;
    statements.push_back(std::move(*open));
    open.reset();
  }
  if (open) statements.push_back(std::move(*open));
  return statements;
}

bool ends_list(const std::string& word) {
  static const char* kWords[] = {"FROM",  "INTO", "WHERE", "VALUES", "ORDER",    "GROUP", "HAVING",
                                 "UNION", "FOR",  "WITH",  "FETCH",  "OPTIMIZE", ")",     "SET"};
  return std::find(std::begin(kWords), std::end(kWords), word) != std::end(kWords);
}

// The first fault of one statement, and the line it is on.
std::optional<std::pair<size_t, std::string>> fault(const Statement& s) {
  if (s.empty()) return std::nullopt;
  const std::string& verb = s[0].text;
  // A table declaration lists column definitions, not expressions.
  if (verb == "INCLUDE" || (verb == "DECLARE" && s.size() > 2 && s[2].text == "TABLE"))
    return std::nullopt;
  auto at = [&s](size_t i) { return i < s.size() ? s[i].text : std::string(); };
  auto list = [&](size_t next, const std::string& what,
                  size_t line) -> std::optional<std::pair<size_t, std::string>> {
    const std::string word = at(next);
    if (word.empty() || ends_list(word)) return std::pair{line, "the " + what + " is empty"};
    if (word == ",") return std::pair{line, "the " + what + " begins with a comma"};
    return std::nullopt;
  };
  bool where = false;
  for (size_t i = 0; i < s.size(); ++i) {
    const std::string& word = s[i].text;
    const size_t line = s[i].line;
    std::optional<std::pair<size_t, std::string>> found;
    if (word == "SELECT") {
      const size_t next = at(i + 1) == "DISTINCT" || at(i + 1) == "ALL" ? i + 2 : i + 1;
      found = list(next, "select list", line);
    } else if (word == "INTO" && (i == 0 || s[i - 1].text != "INSERT")) {
      found = list(i + 1, "INTO list", line);
    } else if (word == "SET" && verb == "UPDATE") {
      found = list(i + 1, "SET list", line);
    } else if (word == "(") {
      if (at(i + 1) == ")") found = std::pair{line, std::string("a list in parentheses is empty")};
      if (at(i + 1) == ",")
        found = std::pair{line, std::string("a list in parentheses begins with a comma")};
    } else if (word == ",") {
      const std::string next = at(i + 1);
      if (next.empty() || ends_list(next) || next == ",")
        found = std::pair{line, std::string("a list ends with a comma")};
    } else if (word == "WHERE") {
      where = true;
      size_t next = i + 1;
      while (at(next) == "(") ++next;
      const std::string first = at(next);
      if (first.empty() || ends_list(first))
        found = std::pair{line, std::string("WHERE without a condition")};
      else if (first == "AND" || first == "OR")
        found = std::pair{line, "the WHERE condition begins with " + first};
    }
    if (found) {
      found->second = "incomplete SQL " + verb + ": " + found->second;
      return found;
    }
  }
  if ((verb == "UPDATE" || verb == "DELETE") && !where)
    return std::pair{s[0].line, verb + " without WHERE changes every row of the table"};
  return std::nullopt;
}

}  // namespace

std::vector<CheckFinding> check_sql_statements(const CheckedProgram& program) {
  std::vector<CheckFinding> findings;
  const std::vector<Statement> statements = program.language == CheckLanguage::kEasytrieve
                                                ? easytrieve_statements(program)
                                                : cobol_statements(program);
  for (const Statement& statement : statements)
    if (auto found = fault(statement)) add_finding(findings, program, found->first, found->second);
  return findings;
}

}  // namespace quorva
