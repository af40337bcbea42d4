#pragma once

#include <string>
#include <string_view>

namespace quorva {

// Reading the host's replies and its records, for the FTP client.

/// The last reply line of the host, without its line end.
std::string last_reply(const std::string& replies);
/// True when `text` holds `what` (lower case), in any case.
bool contains(const std::string& text, const char* what);
/// Records ended by CRLF, as TYPE A wants them; a last line without its end gets one.
std::string to_crlf(std::string_view text);
/// CRLF record ends back to line feeds.
std::string from_crlf(std::string_view text);

/// What a failed command means for the rest of the script.
enum class Failure { kNone, kStopScript, kThisOnly };

/// The host's answer to a command (libcurl's result `code` and the reply lines) in the
/// system's words, into `why`, and whether the rest of the script can run.
Failure explain(int code, const std::string& replies, const std::string& host, int timeout,
                std::string& why);

}  // namespace quorva
