#include "check/check_finding.h"

#include <regex>

namespace quorva {

std::string scan_text(const std::string& line) {
  return line.substr(0, kScanLimit);
}

std::string collapse_blanks(const std::string& text) {
  std::string out;
  for (char c : text) {
    bool blank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
    if (blank && !out.empty() && out.back() == ' ') continue;
    out += blank ? ' ' : c;
  }
  return out;
}

bool opens_instream_data(const std::string& jcl_line) {
  if (jcl_line.rfind("//*", 0) == 0) return false;
  static const std::regex kInstream(R"(\sDD\s+(\*|DATA)(\s|,|$))");
  return std::regex_search(scan_text(jcl_line), kInstream);
}

CheckedProgram split_program(const std::string& name, CheckLanguage language,
                             const std::string& text) {
  CheckedProgram program;
  program.name = name;
  program.language = language;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    std::string line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    program.lines.push_back(std::move(line));
    start = end + 1;
  }
  // Data cards may be indented like COBOL text: only "/*", the next JCL statement or the
  // start of a COBOL program ends them.
  static const std::regex kProgramStart(R"(^ {6}[ *].*\b(IDENTIFICATION|ID)\s+DIVISION\b)",
                                        std::regex::icase);
  bool in_data = false;
  for (const std::string& line : program.lines) {
    bool jcl = line.rfind("//", 0) == 0 || line.rfind("/*", 0) == 0;
    if (jcl) {
      program.kinds.push_back(CheckLineKind::kJcl);
      in_data = language == CheckLanguage::kCobol && opens_instream_data(line);
      continue;
    }
    if (in_data && !std::regex_search(scan_text(line), kProgramStart)) {
      program.kinds.push_back(CheckLineKind::kInstreamData);
      continue;
    }
    in_data = false;
    program.kinds.push_back(CheckLineKind::kSource);
  }
  return program;
}

void add_finding(std::vector<CheckFinding>& findings, const CheckedProgram& program, size_t index,
                 std::string message) {
  findings.push_back({static_cast<int>(index) + 1, std::move(message),
                      index < program.lines.size() ? program.lines[index] : std::string(), ""});
}

}  // namespace quorva
