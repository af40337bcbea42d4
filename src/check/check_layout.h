#pragma once

#include <vector>

#include "check/check_finding.h"

namespace quorva {

/// Column rules: COBOL text within columns 7-72, JCL statements within 1-71, Easytrieve
/// within 1-72, and no tab character anywhere.
std::vector<CheckFinding> check_layout(const CheckedProgram& program);

}  // namespace quorva
