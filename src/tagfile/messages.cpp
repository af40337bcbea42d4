#include "tagfile/messages.h"

#include "tagfile/tag_file.h"
#include "port/user_interface.h"

namespace quorva {

bool Lingua_inglese() {
  std::optional<std::string> language =
      Leggi_tag("Resource/QVconfig.ini", false, "target_language");
  return language && *language == "ENG";
}

std::string bilingual(std::string_view english, std::string_view italian) {
  return std::string(Lingua_inglese() ? english : italian);
}

void Mostra_popup(const std::string& text) {
  ui().show_message(text);
}

}  // namespace quorva
