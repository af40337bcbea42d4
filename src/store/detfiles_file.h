#pragma once

#include "port/status.h"

namespace quorva {

// The owner of temp/Detfiles.dat: the number of Excel outputs, which are always output
// rows 1 to that number.

constexpr const char* kDetfilesFile = "temp/Detfiles.dat";

/// `fileout_excel`, at least 0; 0 when the file or the tag is missing.
int read_excel_outputs();

/// Sets `fileout_excel` (adding it, creating the file when missing) in one write.
Status write_excel_outputs(int count);
/// Creates the file empty when it is missing, as the File Details panel's OK does.
Status create_detfiles_if_missing();

}  // namespace quorva
