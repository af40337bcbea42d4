#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorva {

/// The JCL written alone beside a generated program: NAME.txt gives NAME.jcl.
std::string jcl_file_of(const std::string& program_file);

/// The member of a routine's linkage copybook, the area its callers pass: the program name
/// (its first seven characters) followed by "L", so it stays a member name of eight.
std::string linkage_member(const std::string& program);
/// The linkage copybook written beside a routine: .../CUSTRTN.txt gives .../CUSTRTNL.cpy.
std::string linkage_file_of(const std::string& program_file);

/// The program alone: `program_text` less the lines of `jcl_text`, found in order from the
/// end (the generation writes the JCL after the program). nullopt when some JCL line is not
/// there: the two files no longer come from one generation.
std::optional<std::string> program_without_jcl(std::string_view program_text,
                                               std::string_view jcl_text);

}  // namespace quorva
