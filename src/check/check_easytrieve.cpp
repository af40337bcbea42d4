#include "check/check_easytrieve.h"

#include <algorithm>
#include <set>

#include "check/check_program_files.h"

namespace quorva {

namespace {

struct Opening {
  std::string keyword;  // IF, DO, PROC, CASE
  size_t line;
};

const char* closer_of(const std::string& keyword) {
  if (keyword == "IF") return "END-IF";
  if (keyword == "DO") return "END-DO";
  if (keyword == "CASE") return "END-CASE";
  return "END-PROC";
}

// Statements of a REPORT subactivity; anything else after a REPORT is activity logic.
const std::set<std::string> kReportStatements = {
    "REPORT", "SEQUENCE", "CONTROL", "SUM", "TITLE", "HEADING", "LINE", "SKIP", "END-REPORT"};

const std::set<std::string> kActivities = {"JOB", "SORT", "PROGRAM", "SCREEN"};

// File names referred to by a statement, by its keyword.
std::vector<std::string> referenced_files(const std::vector<std::string>& w) {
  std::vector<std::string> names;
  if (w.empty()) return names;
  const std::string& verb = w[0];
  if ((verb == "GET" || verb == "PUT" || verb == "READ" || verb == "WRITE" || verb == "POINT" ||
       verb == "CLOSE") &&
      w.size() > 1)
    names.push_back(w[1]);
  if (verb == "JOB") {
    auto input = std::find(w.begin(), w.end(), "INPUT");
    if (input != w.end() && ++input != w.end()) {
      if (*input != "(") {
        if (*input != "NULL" && *input != "SQL") names.push_back(*input);
      } else {
        // (FILEA KEY (K1) FILEB KEY (K2)): the names stand at depth one, not after KEY.
        int depth = 0;
        bool after_key = false;
        for (; input != w.end(); ++input) {
          if (*input == "(")
            ++depth;
          else if (*input == ")") {
            if (--depth == 0) break;
          } else if (depth == 1 && *input == "KEY")
            after_key = true;
          else if (depth == 1) {
            if (!after_key) names.push_back(*input);
            after_key = false;
          }
        }
      }
    }
  }
  if (verb == "REPORT") {
    auto printer = std::find(w.begin(), w.end(), "PRINTER");
    if (printer != w.end() && printer + 1 != w.end()) names.push_back(*(printer + 1));
  }
  return names;
}

bool all_digits(const std::string& word) {
  return !word.empty() && word.find_first_not_of("0123456789") == std::string::npos;
}

// "NAME W 5 P 0" or "NAME 10 30 A": a field of the library section.
bool is_field_definition(const std::vector<std::string>& w) {
  return w.size() >= 3 && (w[1] == "W" || w[1] == "S" || all_digits(w[1])) && all_digits(w[2]);
}

}  // namespace

std::vector<CheckFinding> check_easytrieve(const CheckedProgram& program) {
  std::vector<CheckFinding> findings;
  std::vector<EasytrieveStatement> statements = easytrieve_statements(program);
  std::set<std::string> files, reports;
  for (const EasytrieveStatement& statement : statements) {
    std::vector<std::string> w = easytrieve_words(statement.text);
    if (w.size() > 1 && w[0] == "FILE") files.insert(w[1]);
    if (w.size() > 1 && w[0] == "REPORT") reports.insert(w[1]);
  }
  std::vector<Opening> open;
  std::set<std::string> fields;  // defined so far, for the redefinitions that name them
  bool in_activity = false;
  bool in_reports = false;
  bool first_statement = true;
  for (const EasytrieveStatement& statement : statements) {
    std::vector<std::string> w = easytrieve_words(statement.text);
    if (w.empty()) continue;
    auto report = [&](const std::string& text) {
      add_finding(findings, program, statement.line, text);
    };
    // "NAME. PROC" and "NAME . PROC" open a procedure.
    bool proc = (w.size() >= 2 && w[1] == "PROC" && !w[0].empty() && w[0].back() == '.') ||
                (w.size() >= 3 && w[1] == "." && w[2] == "PROC");
    std::string verb = proc ? std::string("PROC") : w[0];
    if (verb == "PARM" && !first_statement) report("PARM must be the first statement");
    if (is_field_definition(w)) fields.insert(w[0]);
    // "NAME BASE +10 70 A" redefines part of BASE; an unsigned number after BASE is its
    // length, so "NAME BASE 11 70 A" is a length of 11 of data format "70".
    if (w.size() >= 4 && fields.count(w[1]) && all_digits(w[2]) && all_digits(w[3]) &&
        w[2].size() <= 5)
      report("the offset into " + w[1] + " must be signed (+" +
             std::to_string(std::stoi(w[2]) - 1) + " for position " + w[2] + "): unsigned, " +
             w[2] + " is taken as the length");
    if (w.size() >= 3 && fields.count(w[1]) && (all_digits(w[2]) || w[2][0] == '+'))
      fields.insert(w[0]);
    first_statement = false;
    if (kActivities.count(verb)) {
      for (const Opening& o : open)
        add_finding(
            findings, program, o.line,
            o.keyword + " is not closed by " + closer_of(o.keyword) + " before the activity");
      open.clear();
      in_activity = true;
      in_reports = false;
    } else if (verb == "FILE" && in_activity) {
      report("FILE statement after the first activity: files are defined before JOB");
    } else if (in_activity && !in_reports && is_field_definition(w)) {
      report(
          "field definition after the first activity: fields are defined before JOB "
          "(or with DEFINE)");
    } else if (verb == "REPORT") {
      if (!in_activity) report("REPORT before any JOB activity");
      in_reports = true;
    } else if (in_reports && open.empty() && !proc && !kReportStatements.count(verb)) {
      report("activity logic after a REPORT: the JOB's statements come before its reports");
    }
    if (verb == "IF" || verb == "DO" || verb == "CASE" || proc) {
      open.push_back({verb, statement.line});
    } else if (verb == "END-IF" || verb == "END-DO" || verb == "END-CASE" || verb == "END-PROC") {
      if (open.empty() || closer_of(open.back().keyword) != verb) {
        report(verb + (open.empty() ? " without its opening statement"
                                    : " where " + std::string(closer_of(open.back().keyword)) +
                                          " is expected"));
      } else {
        open.pop_back();
      }
    } else if ((verb == "ELSE" || verb == "ELSE-IF") &&
               (open.empty() || open.back().keyword != "IF")) {
      report(verb + " outside an IF");
    } else if ((verb == "WHEN" || verb == "OTHERWISE") &&
               (open.empty() || open.back().keyword != "CASE")) {
      report(verb + " outside a CASE");
    }
    if (verb == "PRINT" && w.size() > 1 && !reports.count(w[1]))
      report("report " + w[1] + " has no REPORT statement");
    for (const std::string& name : referenced_files(w))
      if (!files.count(name)) report("file " + name + " has no FILE statement");
  }
  for (const Opening& o : open)
    add_finding(findings, program, o.line, o.keyword + " is not closed by " + closer_of(o.keyword));
  // A continuation mark on the program's last statement line continues into nothing.
  for (size_t i = program.lines.size(); i-- > 0;) {
    if (program.kinds[i] != CheckLineKind::kSource) continue;
    const std::string& line = program.lines[i];
    size_t last = line.find_last_not_of(' ');
    if (last == std::string::npos) continue;
    if (line[0] != '*' && (line[last] == '+' || line[last] == '-') &&
        (last == 0 || line[last - 1] == ' '))
      add_finding(findings, program, i, "continuation mark on the last statement");
    break;
  }
  std::sort(findings.begin(), findings.end(),
            [](const CheckFinding& a, const CheckFinding& b) { return a.line < b.line; });
  return findings;
}

}  // namespace quorva
