#pragma once

#include <cstddef>
#include <string>

namespace quorva {

/// The rule of every panel's text field: a text with a line break or a NUL empties the
/// field and is reported under `label`; any other text is taken. False when emptied.
bool set_text_field(std::string& field, const std::string& text, const std::string& label);

/// The rule both detail panels apply when a field of a row takes a typed value: the row
/// must be one of the `rows` the program has (else refused, the field untouched), a text
/// with a line break or a NUL empties the field, and the text must fit the field (else
/// refused, the field untouched). False, with the message shown, when refused or emptied.
bool set_row_field(std::string& field, bool row_enabled, int row, int rows, const std::string& text,
                   std::size_t limit, const char* label);

}  // namespace quorva
