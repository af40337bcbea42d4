#pragma once

#include <string>
#include <string_view>

#include "port/status.h"

namespace quorva {

/// Checks a file before it is sent to a library of records of at most `limit` characters:
/// the host would cut a longer line or fail the transfer, and a character its code page
/// cannot hold (a control character, or the currency sign on a euro page) would arrive
/// changed. The first such place is refused with the file, line and column.
Status check_host_lines(const std::string& file, std::string_view text, int limit,
                        const std::string& code_pages);

}  // namespace quorva
