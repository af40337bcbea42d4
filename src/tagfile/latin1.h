#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorva {

/// Result of turning front-end text into the single-byte text the files hold.
struct Latin1Result {
  std::optional<std::string> text;  ///< ISO-8859-1 bytes; nullopt when refused
  std::string message;              ///< why it was refused, for the person
};

/// UTF-8 to ISO-8859-1. A character outside ISO-8859-1, or a malformed sequence, is refused
/// with a message naming it: it is never replaced silently.
Latin1Result utf8_to_latin1(std::string_view utf8);

/// ISO-8859-1 to UTF-8 (every byte is a character).
std::string latin1_to_utf8(std::string_view latin1);

/// Upper case in ISO-8859-1: the accented small letters too (à to À, ñ to Ñ), which the
/// "C" locale leaves alone; ß and ÿ have no capital in the set and stay.
std::string latin1_upper(std::string text);

}  // namespace quorva
