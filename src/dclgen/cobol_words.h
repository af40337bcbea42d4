#pragma once

#include <string_view>

namespace quorva {

/// True for a word COBOL reserves (any case). DCLGEN cannot name a field after such a
/// column and appends "1" to it (STATUS becomes STATUS1).
bool is_cobol_reserved_word(std::string_view word);

}  // namespace quorva
