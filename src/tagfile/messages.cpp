#include "tagfile/messages.h"

#include "port/user_interface.h"
#include "tagfile/tag_file.h"

namespace quorva {

namespace {

// -1: read the configuration at each call; 0 Italian, 1 English while a LanguageRead lives.
thread_local int held_language = -1;

bool read_language() {
  std::optional<std::string> language =
      Leggi_tag("Resource/QVconfig.ini", false, "target_language");
  return language && *language == "ENG";
}

}  // namespace

LanguageRead::LanguageRead() : previous_(held_language) {
  held_language = read_language() ? 1 : 0;
}

LanguageRead::~LanguageRead() {
  held_language = previous_;
}

bool Lingua_inglese() {
  return held_language >= 0 ? held_language == 1 : read_language();
}

std::string bilingual(std::string_view english, std::string_view italian) {
  return std::string(Lingua_inglese() ? english : italian);
}

void Mostra_popup(const std::string& text) {
  ui().show_message(text);
}

}  // namespace quorva
