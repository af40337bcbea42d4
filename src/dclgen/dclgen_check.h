#pragma once

#include <array>
#include <string>
#include <vector>

#include "dclgen/dclgen_column.h"

namespace quorva {

/// The four problems a parsed column can show, in the order they are checked.
enum class DclgenProblem { kName = 0, kDefinition = 1, kType = 2, kPicture = 3 };

/// What the check found: the status line and the detail text under the column tree, both
/// empty when nothing was found.
struct DclgenCheck {
  int total = 0;
  std::array<int, 4> by_kind{};  ///< counts indexed by DclgenProblem
  std::string status;
  std::string detail;
};

/// Checks every column; problems never reject the member, they are only reported.
DclgenCheck check_columns(const std::vector<DclgenColumn>& columns);

/// The status line after the person forced a column nullable.
std::string forced_null_status();

/// The "Null" box of the column details, bound to the 1-based `index`: sets not null to the
/// opposite of the box. False, changing nothing, when the index names no column (the view
/// then undoes the toggle).
bool toggle_forced_null(std::vector<DclgenColumn>& columns, int index, bool null_checked);

}  // namespace quorva
