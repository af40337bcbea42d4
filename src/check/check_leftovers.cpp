#include "check/check_leftovers.h"

#include <regex>
#include <string>

namespace quorva {

namespace {

struct Leftover {
  const char* pattern;  // ECMAScript regular expression
  const char* writer;   // what gives the placeholder its value
};

// The order matters: the first pattern matching a piece of text names it.
const Leftover kLeftovers[] = {
    {R"(<\+\+\+\+\+\+>)", "the program name: quorva program set name=..."},
    {R"(<DESCRIZIONE-PROGRAMMA[0-9#]*>)",
     "a program description line: the description of quorva program set (one per line)"},
    {R"(<NOME-COGNOME>)", "the user data: quorva user set name=..."},
    {R"(<NOME-SOCIETA>)", "the user data: quorva user set company=..."},
    {R"(<----->)", "the user data: quorva user set tsouser=..."},
    {R"(<TSO-LIBRARY>)", "the user data: quorva user set library=..."},
    {R"(<VRS>)", "the template's own version, its header tag quormem"},
    {R"(<SEL/FET/DEL/INS/UPD/ROL/COM>)", "the generator, from the DB2 accesses of the program"},
    {R"(//\.///\.////)", "the generator, with the date of the generation"},
    {R"(<(COBOL_VAL|DB2_VAL|PIC_VAL|IND_VAL|EZT_VAL|NULL_VAL)>|\bCAMPO-(ALL|TXT|LEN)\b|\bWRK-NULL-ALL\b)",
     "the DB2 column expansion: only template lines flagged for DB2 columns are expanded"},
    {R"(\*(PIC|DB2)_(not_found|non_trovata)\*)",
     "the DB2 column expansion: the selected column is not in the DCLGEN member; choose the "
     "columns again with quorva columns set"},
    {R"((^|[^A-Za-z0-9-])(TABEL|T)-[0-9][SFUID]([^A-Za-z0-9-]|$))",
     "the DB2 access details: quorva db2 select|fetch|update|insert|delete ROW --owner/--table"},
    {R"(<[A-Za-z0-9_+/.][A-Za-z0-9_+/.#-]*>)",
     "a key-to-value pair: temp/key2value.dat or a chosen key-to-value collection"},
    {R"(#)", "the generator, which numbers every \"#\" of the lines it writes"},
};

}  // namespace

std::vector<CheckFinding> check_leftovers(const CheckedProgram& program) {
  static const std::vector<std::regex> patterns = [] {
    std::vector<std::regex> compiled;
    for (const Leftover& leftover : kLeftovers) compiled.emplace_back(leftover.pattern);
    return compiled;
  }();
  std::vector<CheckFinding> findings;
  for (size_t i = 0; i < program.lines.size(); ++i) {
    if (program.kinds[i] == CheckLineKind::kInstreamData) continue;
    std::string rest = scan_text(program.lines[i]);
    // Each placeholder is named once; its text is then blanked so a shorter pattern
    // (the bare "#", a generic "<...>") does not report it again.
    for (size_t p = 0; p < patterns.size(); ++p) {
      std::smatch match;
      while (std::regex_search(rest, match, patterns[p])) {
        std::string found = match.str(0);
        size_t from = found.find_first_not_of(" ,.()'=:;");
        size_t to = found.find_last_not_of(" ,.()'=:;");
        if (from != std::string::npos) found = found.substr(from, to - from + 1);
        add_finding(findings, program, i,
                    "unreplaced placeholder \"" + found + "\", written by " + kLeftovers[p].writer);
        rest.replace(match.position(0), match.length(0), match.length(0), ' ');
      }
    }
  }
  return findings;
}

}  // namespace quorva
