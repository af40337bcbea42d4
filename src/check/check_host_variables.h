#pragma once

#include <string>
#include <vector>

#include "check/check_cobol.h"
#include "check/check_finding.h"

namespace quorva {

/// What the host-variable check found: faults on the program's lines, and the members it
/// could not read (their fields then count as unknown, so nothing is reported against them).
struct HostVariableCheck {
  std::vector<CheckFinding> findings;
  std::vector<std::string> notes;
};

/// Checks, without a compiler, that every host variable of the program's SQL statements
/// (":NAME", ":GROUP.NAME") names exactly one data item of the program or of a member it
/// INCLUDEs from `folders.dclgen_folder` (NAME.DCL): undefined and ambiguous ones are
/// findings, with the qualification that would settle an ambiguous one.
HostVariableCheck check_host_variables(const CheckedProgram& program,
                                       const CobolCopyFolders& folders);

}  // namespace quorva
