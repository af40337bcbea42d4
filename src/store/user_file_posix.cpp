#include <sys/stat.h>

#include "store/user_file.h"

namespace quorva {

bool restrict_to_owner(const std::string& file) {
  return ::chmod(file.c_str(), S_IRUSR | S_IWUSR) == 0;
}

}  // namespace quorva
