#pragma once

#include <string>

#include "store/collection_file.h"

namespace quorva {

// What a collection's name and rows may be. Each check gives the refusal in the user's
// language, or an empty text when the input is good.

/// A name that makes a file name of the source folder and a tag value: not empty, at most
/// 40 characters, no path or wildcard characters, no "=", no blanks at its ends.
std::string collection_name_problem(const std::string& name);
/// A flag row as the generator takes it: three characters, the first J, C or E (either
/// case), a count from 1 to 9999.
std::string collection_flag_problem(const FlagRow& row);
/// A key-to-value row: a key without "=", not the description's key nor beginning with
/// the switch character `off`, and a value; switched off only when `off` is set.
std::string collection_pair_problem(const KeyValueRow& row, char off);
/// Custom code: no NUL, and nothing but blank lines before its first section line.
std::string collection_snippets_problem(const std::string& text);

}  // namespace quorva
