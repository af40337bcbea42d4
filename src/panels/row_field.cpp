#include "panels/row_field.h"

#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {

bool set_text_field(std::string& field, const std::string& text, const std::string& label) {
  if (has_line_break(text)) {
    Mostra_popup(line_break_message(label));
    field.clear();
    return false;
  }
  field = text;
  return true;
}

bool set_row_field(std::string& field, bool row_enabled, int row, int rows, const std::string& text,
                   std::size_t limit, const char* label) {
  if (!row_enabled) {
    Mostra_popup(
        bilingual("Row ", "La riga ") + std::to_string(row) +
        bilingual(" is not available: the panel has ", " non e' disponibile: il pannello ha ") +
        std::to_string(rows) + bilingual(" rows.", " righe."));
    return false;
  }
  if (has_line_break(text)) return set_text_field(field, text, label);
  if (text.size() > limit) {
    Mostra_popup(std::string(label) + bilingual(" can hold ", " puo' contenere al massimo ") +
                 std::to_string(limit) + bilingual(" characters at most: ", " caratteri: ") + text);
    return false;
  }
  field = text;
  return true;
}

}  // namespace quorva
