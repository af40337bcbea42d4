#include "check/check_host_variables.h"

// Implementation details: data items are read from their level-number lines (a level, a
// name) with their group chain; the DB2 precompiler resolves a host variable the way COBOL
// resolves a data name, so an unqualified name must be unique and a qualified one unique
// under its group.

#include <algorithm>
#include <cctype>
#include <charconv>
#include <set>
#include <system_error>

#include "dclgen/member_lines.h"

namespace fs = std::filesystem;

namespace quorva {
namespace {

struct DataItem {
  std::string name;
  std::vector<std::string> groups;  // enclosing groups, outermost first
  std::string origin;               // "" for the program, else the member's name
};

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

std::string code_area(const std::string& line) {
  if (line.size() <= 7) return {};
  return line.substr(7, std::min<std::size_t>(line.size(), 72) - 7);
}

bool is_comment(const std::string& line) {
  return line.size() > 6 && (line[6] == '*' || line[6] == '/');
}

std::vector<std::string> words_of(const std::string& text) {
  std::vector<std::string> words;
  std::size_t at = 0;
  while (at < text.size()) {
    at = text.find_first_not_of(" \t", at);
    if (at == std::string::npos) break;
    std::size_t end = text.find_first_of(" \t", at);
    words.push_back(text.substr(at, end == std::string::npos ? std::string::npos : end - at));
    at = end;
  }
  return words;
}

// Reads the data items of COBOL lines, keeping the group chain of each.
class ItemReader {
 public:
  ItemReader(std::vector<DataItem>& items, std::string origin)
      : items_(items), origin_(std::move(origin)) {}

  void take(const std::string& code) {
    const std::vector<std::string> words = words_of(upper(code));
    if (words.size() < 2) return;
    int level = 0;
    const std::string& number = words[0];
    if (std::from_chars(number.data(), number.data() + number.size(), level).ec != std::errc() ||
        number.find_first_not_of("0123456789") != std::string::npos)
      return;
    if (level == 66 || level == 88 || level < 1 || (level > 49 && level != 77)) return;
    std::string name = words[1];
    while (!name.empty() && name.back() == '.') name.pop_back();
    if (level == 77) level = 1;
    while (!open_.empty() && open_.back().first >= level) open_.pop_back();
    std::vector<std::string> groups;
    for (const auto& [_, group] : open_) groups.push_back(group);
    if (!name.empty() && name != "FILLER") items_.push_back({name, groups, origin_});
    open_.emplace_back(level, name);
  }

 private:
  std::vector<DataItem>& items_;
  std::string origin_;
  std::vector<std::pair<int, std::string>> open_;
};

std::optional<std::string> member_text(const fs::path& folder, const std::string& name) {
  if (folder.empty()) return std::nullopt;
  for (const char* suffix : {".DCL", ".dcl", ".cpy", ".CPY", ""})
    if (std::optional<std::string> text = read_member_file((folder / (name + suffix)).string()))
      return text;
  return std::nullopt;
}

struct Reference {
  std::string name;
  std::string group;  // empty when unqualified
  std::string written;
};

std::vector<Reference> references(const std::string& sql, bool& quoted) {
  std::vector<Reference> found;
  auto name_char = [&](std::size_t k) {
    return k < sql.size() &&
           (std::isalnum(static_cast<unsigned char>(sql[k])) || sql[k] == '-' || sql[k] == '_');
  };
  for (std::size_t i = 0; i < sql.size(); ++i) {
    if (sql[i] == '\'') quoted = !quoted;
    if (quoted || sql[i] != ':') continue;
    std::size_t end = i + 1;
    while (name_char(end)) ++end;
    if (end == i + 1) continue;
    Reference ref{upper(sql.substr(i + 1, end - i - 1)), "", ""};
    if (end < sql.size() && sql[end] == '.' && name_char(end + 1)) {
      std::size_t sub = end + 1;
      while (name_char(sub)) ++sub;
      ref.group = ref.name;
      ref.name = upper(sql.substr(end + 1, sub - end - 1));
      end = sub;
    }
    ref.written = ":" + sql.substr(i + 1, end - i - 1);
    found.push_back(std::move(ref));
    i = end - 1;
  }
  return found;
}

std::string where(const DataItem& item) {
  std::string text = item.groups.empty() ? item.name : item.groups.front();
  return item.origin.empty() ? text : text + " (" + item.origin + ")";
}

}  // namespace

HostVariableCheck check_host_variables(const CheckedProgram& program,
                                       const CobolCopyFolders& folders) {
  HostVariableCheck result;
  std::vector<DataItem> items;
  ItemReader reader(items, "");
  struct Statement {
    std::size_t line;
    std::string text;
  };
  std::vector<Statement> statements;  // the SQL text of each line, with its line
  std::set<std::string> unread;
  bool procedure = false, in_sql = false;
  std::string verb;
  const std::vector<std::string>& lines = program.lines;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (program.kinds[i] != CheckLineKind::kSource || is_comment(lines[i])) continue;
    std::string code = code_area(lines[i]);
    const std::string up = upper(code);
    if (!in_sql && up.find("PROCEDURE DIVISION") != std::string::npos) procedure = true;
    std::size_t exec = in_sql ? std::string::npos : up.find("EXEC SQL");
    if (!in_sql && exec == std::string::npos) {
      if (procedure) continue;
      const std::vector<std::string> words = words_of(up);
      const auto copy = std::find(words.begin(), words.end(), "COPY");
      if (copy == words.end() || copy + 1 == words.end()) {
        reader.take(code);
        continue;
      }
      // A copybook's items are the program's own: read it where the compiler would.
      std::string book = *(copy + 1);
      while (!book.empty() && book.back() == '.') book.pop_back();
      std::optional<std::string> text = member_text(folders.dclgen_folder, book);
      if (!text) text = member_text(folders.resource_folder, book);
      if (!text) {
        unread.insert(book);
        continue;
      }
      for (const std::string& card : member_cards(*text))
        if (!is_comment(card)) reader.take(code_area(card));
      continue;
    }
    std::size_t from = 0;
    if (!in_sql) {
      in_sql = true;
      from = exec + 8;
      const std::vector<std::string> words = words_of(up.substr(from));
      verb = words.empty() ? "" : words[0];
      if (verb == "INCLUDE" && words.size() > 1 && words[1] != "SQLCA" && words[1] != "SQLDA") {
        std::string member = words[1];
        if (const std::size_t dot = member.find('.'); dot != std::string::npos) member.resize(dot);
        if (std::optional<std::string> text = member_text(folders.dclgen_folder, member)) {
          ItemReader member_reader(items, member);
          for (const std::string& card : member_cards(*text))
            if (!is_comment(card)) member_reader.take(code_area(card));
        } else {
          unread.insert(member);
        }
      }
    }
    std::size_t end = up.find("END-EXEC", from);
    if (verb != "INCLUDE" && !(verb == "DECLARE" && up.find(" TABLE") != std::string::npos))
      statements.push_back({i, code.substr(from, end == std::string::npos ? end : end - from)});
    if (end != std::string::npos) in_sql = false;
  }
  for (const std::string& member : unread)
    result.notes.push_back("The member " + member +
                           " the program includes or copies is not in the DCLGEN folder: the "
                           "host variables were not checked against it.");
  bool quoted = false;
  for (const Statement& statement : statements) {
    for (const Reference& ref : references(statement.text, quoted)) {
      std::vector<const DataItem*> matches;
      for (const DataItem& item : items)
        if (item.name == ref.name &&
            (ref.group.empty() ||
             std::find(item.groups.begin(), item.groups.end(), ref.group) != item.groups.end()))
          matches.push_back(&item);
      if (matches.size() == 1) continue;
      if (matches.empty()) {
        if (!unread.empty()) continue;  // it may stand in a member not read
        add_finding(result.findings, program, statement.line,
                    "Host variable " + ref.written +
                        " is not defined in the program or in a "
                        "member it includes");
        continue;
      }
      std::string message = "Host variable " + ref.written + " is ambiguous: " + ref.name +
                            " is defined in " + where(*matches[0]) + " and " + where(*matches[1]);
      if (!matches[0]->groups.empty())
        message += "; qualify it as :" + matches[0]->groups.front() + "." + ref.name;
      add_finding(result.findings, program, statement.line, message);
    }
  }
  return result;
}

}  // namespace quorva
