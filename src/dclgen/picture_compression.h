#pragma once

#include <string>

namespace quorva {

/// Normalises a COBOL picture when ENABLE_COBOL_VARS_COMPRESSION is on: runs of "9" and
/// "X" followed by another character become counts ("S9999." -> "S9(04)."); when no run
/// collapsed, single-digit counts are zero-filled ("X(4)" -> "X(04)"); then one blank goes
/// before the first "X(" so alphanumeric pictures line up with signed ones. True when the
/// picture changed.
bool normalise_picture(std::string& picture);

}  // namespace quorva
