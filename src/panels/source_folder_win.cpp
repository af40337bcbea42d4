#include "panels/user_data.h"

namespace quorva {

bool normalize_source_folder(std::string& folder) {
  if (folder.empty() || folder.back() != '\\') folder += '\\';
  return folder.size() >= 3 && folder[1] == ':' && folder[2] == '\\';
}

const char* source_folder_example() {
  return "C:\\Quorvax\\programs\\";
}

}  // namespace quorva
