#pragma once

#include <string>

namespace quorva {

// What the host refuses in the names typed into the detail panels, checked when they are
// typed so that the program never reaches the compiler, the precompiler or the JCL with
// them. Each returns the message to show, empty when the name is fine; an empty name is
// always fine (the template's default stays).

/// A file's name is its DD name in the JCL and its ASSIGN name in the program: 1 to 8 of
/// A-Z, 0-9, @ # $, not starting with a digit, and not holding one of the keys the
/// generator replaces with file names (a file named FILEIN2 would become row 2's name).
std::string file_name_problem(const std::string& name);

/// A cursor is an SQL identifier: a letter first, then letters, digits and "_".
std::string cursor_problem(const std::string& name);

/// An owner or a table name holds no blank (the generator writes them undelimited).
std::string blank_name_problem(const char* label, const std::string& name);

/// The first file name given to two rows, with the message; empty when all differ.
std::string duplicate_file_name_problem(const std::string names[], int count);

}  // namespace quorva
