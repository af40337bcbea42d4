#pragma once

#include <cstddef>
#include <string>

namespace quorva {

/// The check both detail panels make before a field of a row takes a typed value: the row
/// must be one of the `rows` the program has, and the text must fit the field. Says why not.
bool row_field_allowed(bool row_enabled, int row, int rows, const std::string& text,
                       std::size_t limit, const char* label);

}  // namespace quorva
