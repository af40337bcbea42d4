#pragma once

#include <string>
#include <vector>

namespace quorva {

/// One fault found in a generated program: its 1-based line, what is wrong, and the line.
/// `file` names another file the fault lies in (a DCLGEN member or copybook); empty for
/// the program itself.
struct CheckFinding {
  int line = 0;
  std::string message;
  std::string text;
  std::string file;
};

/// Language of a generated program's source part.
enum class CheckLanguage { kCobol, kEasytrieve };

/// What each line of a generated program is.
enum class CheckLineKind { kSource, kJcl, kInstreamData };

/// A generated program split into its source, JCL and in-stream data lines.
struct CheckedProgram {
  std::string name;  ///< program name (the file name without ".txt")
  CheckLanguage language = CheckLanguage::kCobol;
  std::vector<std::string> lines;
  std::vector<CheckLineKind> kinds;  ///< one per line
};

/// Splits program text into lines ("\n" ends, a "\r" before it dropped) and classifies them:
/// a line starting "//" or "/*" is JCL; for COBOL, the lines after a "DD *" or "DD DATA"
/// statement up to "/*", the next JCL line or an IDENTIFICATION DIVISION are in-stream
/// data. Easytrieve lines are source wherever they stand, as the interpreter's SYSIN is
/// the program itself.
CheckedProgram split_program(const std::string& name, CheckLanguage language,
                             const std::string& text);

/// True when a JCL line opens in-stream data ("DD *" or "DD DATA").
bool opens_instream_data(const std::string& jcl_line);

/// At most the first kScanLimit characters of a line: mainframe lines are 80 columns, and
/// the standard regular expressions recurse once per character, so longer text (already a
/// layout finding) is never handed to them whole.
constexpr size_t kScanLimit = 256;
std::string scan_text(const std::string& line);

/// The text with every run of blanks, tabs and line ends made one blank.
std::string collapse_blanks(const std::string& text);

/// Adds a finding for line index `index` (0-based) of the program.
void add_finding(std::vector<CheckFinding>& findings, const CheckedProgram& program, size_t index,
                 std::string message);

}  // namespace quorva
