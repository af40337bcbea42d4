#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorva {

/// A program name is a member name of a partitioned data set: 1 to 8 of A-Z, 0-9, @ # $,
/// not starting with a digit. Whatever the files hold, no other name becomes a path.
bool is_member_name(std::string_view name);

/// A partitioned data set's name as a library is typed: qualifiers of 1 to 8 characters
/// among A-Z (either case), 0-9, @ # $ -, not starting with a digit or "-", joined by dots,
/// at most 44 in all; the whole may stand between apostrophes. No member.
bool is_library_name(std::string_view name);

/// The refusal of a name that is not a member name, naming it.
std::string member_name_message(const std::string& name);

/// `nomeprogr` of temp/Parbase.dat when it is a member name; nullopt when missing (said
/// with `popup`) or not a member name (always said: the file was edited by hand).
std::optional<std::string> read_program_name(bool popup);
/// The generated program: sourcedirectory + nomeprogr + ".txt"; nullopt when either is
/// missing or the name is not a member name (said with `popup`).
std::optional<std::string> read_program_file(bool popup);

}  // namespace quorva
