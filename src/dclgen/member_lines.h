#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorva {

/// The whole text of a member file; nullopt when it cannot be opened.
std::optional<std::string> read_member_file(const std::string& path);

/// Splits member text into physical lines. A carriage return before the newline is
/// dropped, as text-mode reading did on the original platform; a last line without a
/// newline still counts.
std::vector<std::string> split_member_lines(std::string_view text);

/// The card images of a member: its lines, without the "nnnnnn " numbers that an ISPF
/// listing puts before every card (recognised only when every line carries one and the
/// comment stars stand 7 columns to the right).
std::vector<std::string> member_cards(std::string_view text);

/// True for a COBOL comment line: "*" in column 7.
inline bool is_comment_line(const std::string& line) {
  return line.size() > 6 && line[6] == '*';
}

/// True when the line holds nothing but blanks.
bool is_blank_line(const std::string& line);

}  // namespace quorva
