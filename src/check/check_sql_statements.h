#pragma once

#include <vector>

#include "check/check_finding.h"

namespace quorva {

/// The SQL statements of a program as complete as the precompiler wants them: the select,
/// INTO, SET, column and VALUES lists hold at least one item and none begins with a comma,
/// a WHERE has a condition that does not begin with AND or OR, and an UPDATE or DELETE has
/// a WHERE (without one it changes every row of the table). COBOL statements run from EXEC
/// SQL to END-EXEC; Easytrieve ones begin with SQL and go on while a line ends with "+" or
/// "-". Comment lines are skipped.
std::vector<CheckFinding> check_sql_statements(const CheckedProgram& program);

}  // namespace quorva
