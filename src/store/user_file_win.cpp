#include "store/user_file.h"

namespace quorva {

bool restrict_to_owner(const std::string&) {
  return true;
}

}  // namespace quorva
