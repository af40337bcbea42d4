#pragma once

#include <vector>

#include "check/check_finding.h"

namespace quorva {

/// The unit of work of a COBOL program with SQL: a main program (STOP RUN) that changes
/// DB2 must roll back somewhere, since ending normally after an SQL error commits the
/// partial work under the DSN monitor; a routine (GOBACK without STOP RUN) must neither
/// COMMIT nor ROLLBACK, which would end its caller's unit of work.
std::vector<CheckFinding> check_unit_of_work(const CheckedProgram& program);

}  // namespace quorva
