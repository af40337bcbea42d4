#pragma once

#include <span>
#include <string>

#include "port/status.h"

namespace quorva {

class BaseParameters;

/// The program files of temp/ that a new program resets, in deletion order.
std::span<const char* const> new_program_deleted_files();
/// The eleven files that have a default in temp/default/, in restore order.
std::span<const char* const> default_program_files();

/// "NEW Program": after a Yes to "Erasing Fields", deletes the program files (Flags.dat
/// survives) and restores every default that exists. False, changing nothing, on No; a
/// failure when a file could not be deleted or restored (the others are still done).
Result<bool> new_program();

/// "Save as Default": after a Yes, replaces the defaults with `panel`'s state (written,
/// not copied) and copies of the other program files. False, changing nothing, on No; a
/// failure when a default could not be written (the others are still done).
Result<bool> save_as_default(const BaseParameters& panel);

}  // namespace quorva
