#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "port/status.h"

namespace quorva {

// What Quorva last sent to each member, so that a member changed on the host since then
// is noticed before it is overwritten. Kept in temp/FtpSent.dat, one tag per member
// ('LIB(MEMBER)'), its value a fingerprint of the text as the host keeps it.

constexpr const char* kSentRecordFile = "temp/FtpSent.dat";

/// The fingerprint of a member's text: line ends and trailing blanks, which the host does
/// not keep, do not count.
std::string member_fingerprint(std::string_view text);

/// The fingerprint recorded for `remote`; nullopt when nothing was sent to it yet.
std::optional<std::string> last_sent(const std::string& remote);
/// Records `text` as sent to `remote`.
Status record_sent(const std::string& remote, std::string_view text);

/// The lines that differ between `before` and `after`, "- " for a line of `before` only and
/// "+ " for a line of `after` only, with their line numbers; at most `limit` lines shown.
std::string line_diff(std::string_view before, std::string_view after, int limit = 40);

}  // namespace quorva
