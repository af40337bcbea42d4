#include "check/check_unit_of_work.h"

#include <cctype>
#include <string>

namespace quorva {
namespace {

struct SqlVerb {
  size_t line = 0;
  std::string verb;
};

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

}  // namespace

std::vector<CheckFinding> check_unit_of_work(const CheckedProgram& program) {
  std::vector<SqlVerb> verbs;
  bool stop_run = false, goback = false, abends = false, awaiting_verb = false;
  for (size_t i = 0; i < program.lines.size(); ++i) {
    const std::string& line = program.lines[i];
    if (program.kinds[i] != CheckLineKind::kSource || line.size() <= 7 || line[6] == '*' ||
        line[6] == '/')
      continue;
    const std::string text = upper(line.substr(7, 65));
    stop_run |= text.find("STOP RUN") != std::string::npos;
    goback |= text.find("GOBACK") != std::string::npos;
    abends |=
        text.find("CEE3ABD") != std::string::npos || text.find("ILBOABN0") != std::string::npos;
    // The first word after EXEC SQL, on its line or the next ones, is the statement's verb.
    size_t at = 0;
    if (size_t exec = text.find("EXEC SQL"); exec != std::string::npos) {
      awaiting_verb = true;
      at = exec + 8;
    }
    if (!awaiting_verb) continue;
    const size_t begin = text.find_first_not_of(' ', at);
    if (begin == std::string::npos) continue;
    const size_t end = text.find_first_of(" .", begin);
    verbs.push_back({i, text.substr(begin, end == std::string::npos ? end : end - begin)});
    awaiting_verb = false;
  }
  std::vector<CheckFinding> findings;
  const bool routine = goback && !stop_run;
  bool rolls_back = abends;
  for (const SqlVerb& verb : verbs) rolls_back |= verb.verb == "ROLLBACK";
  for (const SqlVerb& verb : verbs) {
    if (routine && (verb.verb == "COMMIT" || verb.verb == "ROLLBACK"))
      add_finding(findings, program, verb.line,
                  "a routine must not " + verb.verb +
                      ": the unit of work is its caller's; return an error code instead");
    const bool changes = verb.verb == "UPDATE" || verb.verb == "INSERT" || verb.verb == "DELETE" ||
                         verb.verb == "MERGE";
    if (changes && stop_run && !rolls_back) {
      add_finding(findings, program, verb.line,
                  "the program changes DB2 but never rolls back: ending with STOP RUN after an "
                  "SQL error commits the partial work under DSN (ROLLBACK, or abend)");
      rolls_back = true;  // said once
    }
  }
  return findings;
}

}  // namespace quorva
