#include "panels/user_data.h"

namespace quorva {

bool normalize_source_folder(std::string& folder) {
  if (folder.empty() || folder.back() != '/') folder += '/';
  return folder[0] == '/';
}

const char* source_folder_example() {
  return "/home/user/programs/";
}

}  // namespace quorva
