#pragma once

#include "engine/column_file.h"
#include "panels/base_parameters.h"

namespace quorva::cli {

/// What the rows of a detail panel are, for the message about a row it does not have.
struct RowFamily {
  Count count;          ///< the base parameter that sets how many there are
  const char* english;  ///< "input files", "SELECT accesses"
  const char* italian;  ///< "file di input", "accessi SELECT"
  bool access = false;  ///< numbered as accesses ("Access 3") rather than rows ("Row 3")
};

/// The base parameter that counts the accesses of a kind.
Count access_count(AccessKind kind);

/// True when `row` is one of the `count` rows of the family; otherwise says which row was
/// asked for, how many the program has, and which base parameter changes that.
bool row_in_range(int row, int count, const RowFamily& family);

}  // namespace quorva::cli
