#pragma once

#include <vector>

#include "check/check_finding.h"

namespace quorva {

/// Template placeholders and markers the generation left in the program, each reported with
/// what writes its value.
std::vector<CheckFinding> check_leftovers(const CheckedProgram& program);

}  // namespace quorva
