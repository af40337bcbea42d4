#pragma once

#include <string>

namespace quorva {

/// Plays the platform FTP client's part on a transfer script, as the transfer batch asks
/// (`ftp-run`): each transfer's outcome is said through the port, a failed one logged.
/// True only when every transfer asked was done.
bool run_script_file(const std::string& file);

}  // namespace quorva
