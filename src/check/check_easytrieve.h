#pragma once

#include <vector>

#include "check/check_finding.h"

namespace quorva {

/// Structure lint of an Easytrieve program: PARM first, FILE and field definitions before
/// the first activity, REPORT after the activity's logic, balanced IF/END-IF, DO/END-DO,
/// PROC/END-PROC, CASE/END-CASE, no dangling continuation, and every file named by JOB
/// INPUT, GET, PUT, READ, WRITE, POINT or a REPORT's PRINTER defined by a FILE statement.
std::vector<CheckFinding> check_easytrieve(const CheckedProgram& program);

}  // namespace quorva
