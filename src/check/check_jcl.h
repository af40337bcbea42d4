#pragma once

#include <string>
#include <vector>

#include "check/check_finding.h"
#include "check/check_program_files.h"

namespace quorva {

/// One JCL statement with its continuations joined.
struct JclStatement {
  size_t first = 0;  ///< line index of the statement's first line
  size_t last = 0;   ///< line index of its last continuation
  std::string name;
  std::string operation;
  std::string operands;                 ///< operand field, continuations appended
  std::vector<std::string> data_lines;  ///< in-stream data after a "DD *" / "DD DATA"
};

/// The JCL statements of a program; continuation faults go to `findings`.
std::vector<JclStatement> parse_jcl(const CheckedProgram& program,
                                    std::vector<CheckFinding>& findings);

/// Splits an operand field at its top-level commas (quotes and parentheses kept whole).
std::vector<std::string> split_operands(const std::string& operands);

/// Rule-based lint of the program's JCL: names, operations, continuations, DISP/SPACE/DCB
/// coherence of DD statements, and the run step: a DD for every file the program names, the
/// SYSIN cards and PARM it reads, and for DB2 runs through the TSO batch monitor the DSN
/// SYSTEM, RUN PROGRAM, PLAN and LIB.
std::vector<CheckFinding> check_jcl(const CheckedProgram& program);
/// The same for JCL kept apart from its program: `files` are what the program reads. Also
/// each DD once per step, each SET symbol once, and SDSNEXIT ahead of SDSNLOAD.
std::vector<CheckFinding> check_jcl(const CheckedProgram& jcl, const ProgramFiles& files);

}  // namespace quorva
