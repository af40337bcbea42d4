#include "check/check_program_files.h"

#include <algorithm>
#include <cctype>
#include <regex>

namespace quorva {

namespace {

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

void add_unique(std::vector<std::string>& names, const std::string& name) {
  if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
}

}  // namespace

std::vector<EasytrieveStatement> easytrieve_statements(const CheckedProgram& program) {
  std::vector<EasytrieveStatement> statements;
  bool continues = false;
  for (size_t i = 0; i < program.lines.size(); ++i) {
    if (program.kinds[i] != CheckLineKind::kSource) continue;
    std::string text = program.lines[i].substr(0, std::min<size_t>(program.lines[i].size(), 72));
    size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos || text[first] == '*') continue;
    size_t last = text.find_last_not_of(' ');
    text = text.substr(0, last + 1);
    bool next = false;
    if (text.back() == '+' || text.back() == '-') {
      // A lone "-" or "+" after a blank is the continuation mark, not arithmetic.
      if (text.size() == 1 || text[text.size() - 2] == ' ') {
        next = true;
        text.pop_back();
      }
    }
    if (continues) {
      statements.back().text += " " + text;
    } else {
      statements.push_back({i, text});
    }
    continues = next;
  }
  return statements;
}

std::vector<std::string> easytrieve_words(const std::string& text) {
  std::vector<std::string> words;
  std::string current;
  bool quoted = false;
  auto flush = [&] {
    if (!current.empty()) words.push_back(upper(current));
    current.clear();
  };
  for (char c : text) {
    if (c == '\'') quoted = !quoted;
    if (!quoted && (c == ' ' || c == ',')) {
      flush();
    } else if (!quoted && (c == '(' || c == ')')) {
      flush();
      words.push_back(std::string(1, c));
    } else {
      current += c;
    }
  }
  flush();
  return words;
}

ProgramFiles program_files(const CheckedProgram& program) {
  ProgramFiles files;
  if (program.language == CheckLanguage::kEasytrieve) {
    for (const EasytrieveStatement& statement : easytrieve_statements(program)) {
      std::vector<std::string> words = easytrieve_words(statement.text);
      if (words.size() < 2 || words[0] != "FILE") continue;
      bool no_dd = std::any_of(words.begin() + 2, words.end(), [](const std::string& w) {
        return w == "SQL" || w == "VIRTUAL" || w == "INSTREAM";
      });
      // SYSNAME 'DDNAME' gives the file a DD name of its own.
      auto sysname = std::find(words.begin(), words.end(), "SYSNAME");
      std::string dd = words[1];
      if (sysname != words.end() && sysname + 1 != words.end()) {
        dd = *(sysname + 1);
        if (dd.size() >= 2 && dd.front() == '\'' && dd.back() == '\'')
          dd = dd.substr(1, dd.size() - 2);
      }
      if (!no_dd) add_unique(files.dd_names, dd);
    }
    return files;
  }
  std::string source;
  for (size_t i = 0; i < program.lines.size(); ++i) {
    const std::string& line = program.lines[i];
    if (program.kinds[i] != CheckLineKind::kSource || line.size() <= 7 || line[6] == '*' ||
        line[6] == '/')
      continue;
    source += upper(line.substr(7, 65)) + " ";
  }
  source = collapse_blanks(source);
  static const std::regex kAssign(R"(\bASSIGN\s+(TO\s+)?([A-Z0-9@#$-]+))");
  for (auto it = std::sregex_iterator(source.begin(), source.end(), kAssign);
       it != std::sregex_iterator(); ++it) {
    std::string name = (*it).str(2);
    size_t dash = name.rfind('-');  // UT-S-NAME and S-NAME forms name the DD last
    if (dash != std::string::npos) name = name.substr(dash + 1);
    if (!name.empty()) add_unique(files.dd_names, name);
  }
  static const std::regex kAccept(R"(\bACCEPT\s+[A-Z0-9-]+(\s+FROM\s+([A-Z0-9-]+))?)");
  for (auto it = std::sregex_iterator(source.begin(), source.end(), kAccept);
       it != std::sregex_iterator(); ++it) {
    std::string from = (*it).str(2);
    if (from.empty() || from == "SYSIN") {
      files.reads_sysin = true;
      ++files.sysin_accepts;
    }
  }
  static const std::regex kUsing(R"(\bPROCEDURE\s+DIVISION\s+USING\b)");
  // A routine (GOBACK without STOP RUN) is called, not run by a step.
  bool routine = source.find("STOP RUN") == std::string::npos;
  files.reads_parm = std::regex_search(source, kUsing) && !routine;
  return files;
}

}  // namespace quorva
