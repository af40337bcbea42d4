#include "check/check_jcl.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <regex>
#include <set>

#include "check/check_program_files.h"

namespace quorva {

namespace {

const std::set<std::string> kOperations = {
    "JOB",     "EXEC",   "DD",       "PROC",     "PEND",   "SET",     "IF",      "THEN",
    "ELSE",    "ENDIF",  "INCLUDE",  "JCLLIB",   "OUTPUT", "CNTL",    "ENDCNTL", "XMIT",
    "COMMAND", "EXPORT", "SCHEDULE", "JOBGROUP", "GJOB",   "ENDGROUP"};

bool national_or_alpha(char c) {
  return (c >= 'A' && c <= 'Z') || c == '@' || c == '#' || c == '$';
}

bool valid_name(const std::string& name) {
  if (name.empty() || name.size() > 8 || !national_or_alpha(name[0])) return false;
  return std::all_of(name.begin(), name.end(),
                     [](char c) { return national_or_alpha(c) || (c >= '0' && c <= '9'); });
}

// A DD name may be qualified by the step it overrides: STEP.DDNAME.
bool valid_label(const std::string& label, const std::string& operation) {
  size_t dot = label.find('.');
  if (dot != std::string::npos && operation == "DD")
    return valid_name(label.substr(0, dot)) && valid_name(label.substr(dot + 1));
  return valid_name(label);
}

// End of a field starting at `from`: the first blank outside quotes, within column 71.
size_t field_end(const std::string& line, size_t from) {
  bool quoted = false;
  size_t limit = std::min<size_t>(line.size(), 71);
  for (size_t i = from; i < limit; ++i) {
    if (line[i] == '\'') quoted = !quoted;
    if (line[i] == ' ' && !quoted) return i;
  }
  return limit;
}

std::string word_at(const std::string& line, size_t& pos) {
  pos = line.find_first_not_of(' ', pos);
  if (pos == std::string::npos || pos >= 71) return "";
  size_t end = field_end(line, pos);
  std::string word = line.substr(pos, end - pos);
  pos = end;
  return word;
}

}  // namespace

std::vector<std::string> split_operands(const std::string& operands) {
  std::vector<std::string> parts;
  std::string current;
  int depth = 0;
  bool quoted = false;
  for (char c : operands) {
    if (c == '\'') quoted = !quoted;
    if (!quoted && c == '(') ++depth;
    if (!quoted && c == ')') --depth;
    if (!quoted && depth == 0 && c == ',') {
      parts.push_back(current);
      current.clear();
      continue;
    }
    current += c;
  }
  if (!current.empty()) parts.push_back(current);
  return parts;
}

std::vector<JclStatement> parse_jcl(const CheckedProgram& program,
                                    std::vector<CheckFinding>& findings) {
  std::vector<JclStatement> statements;
  bool continues = false;
  for (size_t i = 0; i < program.lines.size(); ++i) {
    const std::string& line = program.lines[i];
    if (program.kinds[i] == CheckLineKind::kInstreamData) {
      if (!statements.empty()) statements.back().data_lines.push_back(line);
      continue;
    }
    bool statement_line = program.kinds[i] == CheckLineKind::kJcl && line.rfind("//", 0) == 0 &&
                          line.rfind("//*", 0) != 0;
    if (program.kinds[i] == CheckLineKind::kJcl && line.rfind("//*", 0) == 0) continue;
    if (continues && !statement_line) {
      add_finding(findings, program, statements.back().last,
                  "JCL statement ends with a comma but the next line is no \"//\" continuation");
      continues = false;
    }
    if (!statement_line) continue;
    size_t text = line.find_first_not_of(' ', 2);
    if (text == std::string::npos || text >= 71) {  // null statement "//"
      continues = false;
      continue;
    }
    if (continues) {
      JclStatement& statement = statements.back();
      if (text == 2 || text > 15) {
        add_finding(findings, program, i,
                    "JCL continuation must leave column 3 blank and begin between columns 4 "
                    "and 16 (it begins in column " +
                        std::to_string(text + 1) + ")");
      }
      size_t pos = text;
      std::string more = word_at(line, pos);
      statement.operands += more;
      statement.last = i;
      continues = !more.empty() && more.back() == ',';
      continue;
    }
    JclStatement statement;
    statement.first = statement.last = i;
    size_t pos = 2;
    if (text == 2) statement.name = word_at(line, pos);
    statement.operation = word_at(line, pos);
    if (!kOperations.count(statement.operation)) {
      add_finding(findings, program, i,
                  statement.name.empty() && !statement.operation.empty()
                      ? "JCL line continues nothing: the statement before does not end with a "
                        "comma"
                      : "unknown JCL operation \"" + statement.operation + "\"");
      continue;
    }
    if (!statement.name.empty() && !valid_label(statement.name, statement.operation))
      add_finding(findings, program, i,
                  "invalid JCL name \"" + statement.name +
                      "\" (1-8 letters, digits or @#$, not starting with a digit)");
    statement.operands = word_at(line, pos);
    continues = !statement.operands.empty() && statement.operands.back() == ',';
    statements.push_back(std::move(statement));
  }
  if (continues)
    add_finding(findings, program, statements.back().last,
                "JCL statement ends with a comma but the JCL ends there");
  return statements;
}

namespace {

std::string keyword(const std::vector<std::string>& operands, const std::string& key) {
  for (const std::string& operand : operands)
    if (operand.rfind(key + "=", 0) == 0) return operand.substr(key.size() + 1);
  return "";
}

bool has_positional(const std::vector<std::string>& operands, const std::string& value) {
  return std::find(operands.begin(), operands.end(), value) != operands.end();
}

std::string strip_parens(std::string text) {
  if (text.size() >= 2 && text.front() == '(' && text.back() == ')')
    text = text.substr(1, text.size() - 2);
  return text;
}

void check_dd(const CheckedProgram& program, const JclStatement& dd,
              std::vector<CheckFinding>& findings) {
  std::vector<std::string> ops = split_operands(dd.operands);
  auto report = [&](const std::string& text) {
    add_finding(findings, program, dd.first, "DD " + dd.name + ": " + text);
  };
  bool instream = has_positional(ops, "*") || has_positional(ops, "DATA");
  std::string dsn = keyword(ops, "DSN");
  if (dsn.empty()) dsn = keyword(ops, "DSNAME");
  std::string sysout = keyword(ops, "SYSOUT");
  bool dummy = has_positional(ops, "DUMMY");
  if (!instream && dsn.empty() && sysout.empty() && !dummy && keyword(ops, "PATH").empty() &&
      keyword(ops, "DDNAME").empty() && keyword(ops, "SUBSYS").empty() &&
      keyword(ops, "UNIT").empty() && keyword(ops, "SPACE").empty() && !dd.name.empty())
    report("names no data set (DSN=, SYSOUT=, DUMMY, * or a temporary UNIT/SPACE)");
  std::string disp = keyword(ops, "DISP");
  if (disp.empty()) return;
  std::vector<std::string> parts = split_operands(strip_parens(disp));
  static const std::set<std::string> kStatus = {"", "NEW", "OLD", "SHR", "MOD"};
  static const std::set<std::string> kNormal = {"", "DELETE", "KEEP", "PASS", "CATLG", "UNCATLG"};
  static const std::set<std::string> kAbnormal = {"", "DELETE", "KEEP", "CATLG", "UNCATLG"};
  if (parts.size() > 3 || !kStatus.count(parts[0]) ||
      (parts.size() > 1 && !kNormal.count(parts[1])) ||
      (parts.size() > 2 && !kAbnormal.count(parts[2]))) {
    report("invalid DISP=" + disp);
    return;
  }
  if ((parts[0] != "NEW" && !parts[0].empty()) || dummy) return;  // status defaults to NEW
  std::string unit = keyword(ops, "UNIT");
  bool tape = unit.find("TAPE") != std::string::npos || unit.find("CART") != std::string::npos ||
              unit == "3480" || unit == "3490" || unit == "3590";
  std::string space = keyword(ops, "SPACE");
  bool managed = !keyword(ops, "LIKE").empty() || !keyword(ops, "DATACLAS").empty();
  if (space.empty() && !tape && !managed) report("a new data set on disk needs SPACE=");
  static const std::regex kSpace(R"(\((TRK|CYL|[0-9]+),\([0-9]*(,[0-9]+){0,2}\)(,.*)?\))");
  if (!space.empty() && (space.size() > kScanLimit || !std::regex_match(space, kSpace)))
    report("invalid SPACE=" + space + " (expected (TRK|CYL|blksize,(primary,secondary)))");
  std::string dcb = keyword(ops, "DCB");
  bool lrecl = !keyword(ops, "LRECL").empty() || dcb.find("LRECL=") != std::string::npos ||
               (!dcb.empty() && dcb.front() != '(');  // DCB=*.ref or a model data set
  if (!lrecl && !managed) report("a new data set needs its record length (DCB=(...,LRECL=...))");
}

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

std::string ends_with_library(const std::string& dsn) {
  for (const char* library : {"SDSNEXIT", "SDSNLOAD"}) {
    const std::string tail = std::string(".") + library;
    if (dsn.size() >= tail.size() && dsn.compare(dsn.size() - tail.size(), tail.size(), tail) == 0)
      return library;
  }
  return "";
}

// What a step must hold once: each DD name, each symbol a SET gives a value, and DB2's exit
// library ahead of its load library (DSNHDECP is taken from the first that has it).
void check_steps(const CheckedProgram& program, const std::vector<JclStatement>& statements,
                 std::vector<CheckFinding>& findings) {
  std::map<std::string, size_t> dds;
  std::map<std::string, size_t> symbols;
  std::string step = "(job)";
  std::string concatenation;  // the DD whose unnamed followers are concatenated to it
  size_t exit_line = 0, load_line = 0;
  bool has_exit = false, has_load = false;
  auto check_order = [&] {
    if (has_exit && has_load && load_line < exit_line)
      add_finding(findings, program, exit_line,
                  "DD " + concatenation +
                      ": DB2's SDSNEXIT must come before SDSNLOAD in the concatenation");
    has_exit = has_load = false;
  };
  for (const JclStatement& statement : statements) {
    if (statement.operation == "SET") {
      for (const std::string& assignment : split_operands(statement.operands)) {
        const std::string symbol = assignment.substr(0, assignment.find('='));
        auto [first, fresh] = symbols.emplace(symbol, statement.first);
        if (!fresh)
          add_finding(findings, program, statement.first,
                      "symbol " + symbol + " is SET twice (first on line " +
                          std::to_string(first->second + 1) + ")");
      }
      continue;
    }
    if (statement.operation == "JOB" || statement.operation == "EXEC") {
      check_order();
      dds.clear();
      concatenation.clear();
      step = statement.operation == "JOB" ? "(job)"
             : statement.name.empty()     ? "(unnamed)"
                                          : statement.name;
      continue;
    }
    if (statement.operation != "DD") continue;
    if (!statement.name.empty()) {
      check_order();
      concatenation = statement.name;
      auto [first, fresh] = dds.emplace(statement.name, statement.first);
      if (!fresh)
        add_finding(findings, program, statement.first,
                    "step " + step + ": DD " + statement.name + " is given twice (first on line " +
                        std::to_string(first->second + 1) + ")");
    }
    std::vector<std::string> ops = split_operands(statement.operands);
    std::string dsn = keyword(ops, "DSN");
    if (dsn.empty()) dsn = keyword(ops, "DSNAME");
    const std::string library = ends_with_library(dsn);
    if (library == "SDSNEXIT" && !has_exit) has_exit = true, exit_line = statement.first;
    if (library == "SDSNLOAD" && !has_load) has_load = true, load_line = statement.first;
  }
  check_order();
}

void check_run_step(const CheckedProgram& program, const ProgramFiles& files,
                    const std::vector<JclStatement>& statements,
                    std::vector<CheckFinding>& findings) {
  std::string me = upper(program.name);
  // Symbols of SET statements, so EXEC PGM=&RUNPGM names the program it runs.
  std::map<std::string, std::string> symbols;
  for (const JclStatement& set : statements)
    if (set.operation == "SET")
      for (const std::string& assignment : split_operands(set.operands)) {
        size_t equal = assignment.find('=');
        if (equal == std::string::npos) continue;
        std::string value = assignment.substr(equal + 1);
        if (value.size() >= 2 && value.front() == '\'' && value.back() == '\'')
          value = value.substr(1, value.size() - 2);
        symbols[assignment.substr(0, equal)] = value;
      }
  for (size_t s = 0; s < statements.size(); ++s) {
    const JclStatement& exec = statements[s];
    if (exec.operation != "EXEC") continue;
    std::vector<std::string> ops = split_operands(exec.operands);
    std::string pgm = keyword(ops, "PGM");
    if (!pgm.empty() && pgm[0] == '&') {
      std::string symbol = pgm.substr(1);
      if (!symbol.empty() && symbol.back() == '.') symbol.pop_back();
      if (symbols.count(symbol)) pgm = symbols[symbol];
    }
    std::map<std::string, const JclStatement*> dds;
    for (size_t d = s + 1; d < statements.size() && statements[d].operation != "EXEC"; ++d)
      if (statements[d].operation == "DD" && !statements[d].name.empty())
        dds[statements[d].name] = &statements[d];
    std::string tso;
    if (dds.count("SYSTSIN"))
      for (const std::string& card : dds["SYSTSIN"]->data_lines) {
        std::string text = upper(card);
        while (!text.empty() && text.back() == ' ') text.pop_back();
        if (!text.empty() && (text.back() == '-' || text.back() == '+')) text.pop_back();
        tso += collapse_blanks(scan_text(text)) + " ";
      }
    static const std::regex kRun(R"(\bRUN\s+PROG(RAM)?\s*\(\s*([A-Z0-9@#$]+)\s*\))");
    std::smatch run;
    bool tso_run = (pgm == "IKJEFT01" || pgm == "IKJEFT1A" || pgm == "IKJEFT1B") &&
                   std::regex_search(tso, run, kRun) && run.str(2) == me;
    bool runs_me = pgm == me || tso_run ||
                   (program.language == CheckLanguage::kEasytrieve && pgm == "EZTPA00");
    if (!runs_me) continue;
    auto report = [&](const std::string& text) {
      add_finding(findings, program, exec.first, "step " + exec.name + ": " + text);
    };
    for (const std::string& dd : files.dd_names)
      if (!dds.count(dd)) report("no DD statement for the program's file " + dd);
    if (files.reads_sysin && !dds.count("SYSIN"))
      report("the program reads SYSIN cards (ACCEPT) but the step has no SYSIN DD");
    // Each ACCEPT takes one card; past the last one the program reads nothing it can use.
    else if (files.reads_sysin &&
             dds["SYSIN"]->data_lines.size() < static_cast<size_t>(files.sysin_accepts) &&
             opens_instream_data(program.lines[dds["SYSIN"]->first]))
      report("the program ACCEPTs " + std::to_string(files.sysin_accepts) +
             " SYSIN cards but the SYSIN DD holds " +
             std::to_string(dds["SYSIN"]->data_lines.size()));
    if (tso_run) {
      if (tso.find("DSN SYSTEM(") == std::string::npos &&
          tso.find("DSN  SYSTEM(") == std::string::npos)
        report("SYSTSIN has no DSN SYSTEM(...) command");
      if (tso.find("PLAN(") == std::string::npos)
        report("RUN PROGRAM(" + me + ") names no PLAN(...)");
      if (tso.find("LIB(") == std::string::npos && !dds.count("STEPLIB"))
        report("RUN PROGRAM(" + me + ") names no LIB(...) and the step has no STEPLIB");
      if (files.reads_parm && tso.find("PARMS(") == std::string::npos)
        report("the program reads a PARM but RUN PROGRAM(" + me + ") passes no PARMS('...')");
    } else if (files.reads_parm && keyword(ops, "PARM").empty()) {
      report("the program reads a PARM but the EXEC statement passes no PARM=");
    }
  }
}

}  // namespace

std::vector<CheckFinding> check_jcl(const CheckedProgram& program) {
  return check_jcl(program, program_files(program));
}

std::vector<CheckFinding> check_jcl(const CheckedProgram& program, const ProgramFiles& files) {
  std::vector<CheckFinding> findings;
  std::vector<JclStatement> statements = parse_jcl(program, findings);
  if (statements.empty()) return findings;
  if (statements.front().operation != "JOB")
    add_finding(findings, program, statements.front().first,
                "the JCL does not begin with a JOB statement");
  for (const JclStatement& statement : statements) {
    if ((statement.operation == "JOB" || statement.operation == "PROC") && statement.name.empty())
      add_finding(findings, program, statement.first,
                  "a " + statement.operation + " statement needs a name");
    if (statement.operation == "EXEC" && statement.operands.empty())
      add_finding(findings, program, statement.first, "EXEC names no program or procedure");
    if (statement.operation == "DD") check_dd(program, statement, findings);
  }
  check_steps(program, statements, findings);
  check_run_step(program, files, statements, findings);
  std::sort(findings.begin(), findings.end(),
            [](const CheckFinding& a, const CheckFinding& b) { return a.line < b.line; });
  return findings;
}

}  // namespace quorva
