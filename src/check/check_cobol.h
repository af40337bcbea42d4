#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "check/check_finding.h"

namespace quorva {

/// Rewrites the EXEC SQL blocks of COBOL source lines so a COBOL compiler can read them, line
/// for line (the result has as many lines as the input): INCLUDE becomes COPY, DECLARE
/// becomes comment lines, any other statement a CALL that names every host variable
/// (":NAME" as NAME, ":NAME.SUB" as SUB OF NAME, indicators as their own item).
std::vector<std::string> stub_precompile(const std::vector<std::string>& lines);

/// True when a COBOL compiler (cobc) answers on this machine.
bool cobol_compiler_available();

/// Where the compiler looks for copybooks: the folder of DCLGEN members (NAME.DCL) and the
/// folder of the shipped copybooks (SQLCA.cpy).
struct CobolCopyFolders {
  std::filesystem::path dclgen_folder;
  std::filesystem::path resource_folder;
};

/// Result of a compiler run: its findings on the program, or a failure to run it.
struct CobolCheckResult {
  bool ran = false;
  std::string message;  ///< why it did not run
  std::vector<CheckFinding> findings;
};

/// Syntax-checks the program's COBOL source lines with cobc (IBM dialect) after the stub
/// precompiler, and maps the compiler's errors back to the program's lines.
CobolCheckResult check_cobol(const CheckedProgram& program, const CobolCopyFolders& folders);

}  // namespace quorva
