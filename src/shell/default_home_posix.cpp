#include <cstdlib>

#include "shell/working_folder.h"

namespace quorva {

std::filesystem::path default_home() {
  if (const char* data = std::getenv("XDG_DATA_HOME"); data && *data)
    return std::filesystem::path(data) / "quorva";
  if (const char* home = std::getenv("HOME"); home && *home)
    return std::filesystem::path(home) / ".local" / "share" / "quorva";
  return {};
}

}  // namespace quorva
