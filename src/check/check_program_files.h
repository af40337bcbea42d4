#pragma once

#include <string>
#include <vector>

#include "check/check_finding.h"

namespace quorva {

/// What a program needs from the step that runs it.
struct ProgramFiles {
  std::vector<std::string> dd_names;  ///< COBOL ASSIGN names, Easytrieve FILE names
  bool reads_sysin = false;           ///< COBOL ACCEPT from SYSIN
  int sysin_accepts = 0;              ///< how many ACCEPT statements read SYSIN
  bool reads_parm = false;            ///< a main COBOL program with PROCEDURE DIVISION USING
};

/// The files and parameters a program's source reads, in order of appearance.
ProgramFiles program_files(const CheckedProgram& program);

/// The program's Easytrieve statements: continuations ("+", "-") joined, comments and
/// blank lines left out; each with the index of its first line.
struct EasytrieveStatement {
  size_t line = 0;
  std::string text;
};
std::vector<EasytrieveStatement> easytrieve_statements(const CheckedProgram& program);

/// Upper-case words of a statement, parentheses and commas as words of their own.
std::vector<std::string> easytrieve_words(const std::string& text);

}  // namespace quorva
