#include "check/check_layout.h"

#include <string>

namespace quorva {

namespace {

// 1-based column of the first non-blank character at or after `from` (0-based), 0 if none.
size_t first_text_column(const std::string& line, size_t from) {
  size_t found = line.find_first_not_of(' ', from);
  return found == std::string::npos ? 0 : found + 1;
}

}  // namespace

std::vector<CheckFinding> check_layout(const CheckedProgram& program) {
  std::vector<CheckFinding> findings;
  for (size_t i = 0; i < program.lines.size(); ++i) {
    const std::string& line = program.lines[i];
    if (line.find('\t') != std::string::npos) {
      add_finding(findings, program, i, "tab character (mainframe text has blanks only)");
      continue;
    }
    switch (program.kinds[i]) {
      case CheckLineKind::kJcl:
        // Column 72 is the continuation column of a JCL comment; statements stop at 71.
        if (size_t col = first_text_column(line, 71))
          add_finding(findings, program, i,
                      "JCL text past column 71 (column " + std::to_string(col) + ")");
        break;
      case CheckLineKind::kInstreamData:
        if (size_t col = first_text_column(line, 80))
          add_finding(findings, program, i,
                      "in-stream data past column 80 (column " + std::to_string(col) + ")");
        break;
      case CheckLineKind::kSource:
        if (program.language == CheckLanguage::kEasytrieve) {
          if (size_t col = first_text_column(line, 72))
            add_finding(findings, program, i,
                        "Easytrieve text past column 72 (column " + std::to_string(col) + ")");
        } else {
          size_t sequence_end = line.size() < 6 ? line.size() : 6;
          if (line.find_first_not_of(' ') < sequence_end)
            add_finding(findings, program, i, "COBOL text in the sequence area (columns 1-6)");
          else if (size_t col = first_text_column(line, 72))
            add_finding(findings, program, i,
                        "COBOL text past column 72 (column " + std::to_string(col) + ")");
        }
        break;
    }
  }
  return findings;
}

}  // namespace quorva
