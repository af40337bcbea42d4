#pragma once

#include <string>
#include <vector>

namespace quorva {

/// The INCLUDE members of the access rows, each once, in row order.
std::vector<std::string> include_members();

/// "Cannot find the following DCLGEN file: ..." with the likely causes of a failed
/// download, for the column selection and the download.
std::string missing_dclgen_message(const std::string& path);

}  // namespace quorva
