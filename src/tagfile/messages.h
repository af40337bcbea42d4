#pragma once

#include <string>
#include <string_view>

namespace quorva {

/// True when `target_language` in Resource/QVconfig.ini is exactly "ENG". Read at every
/// call outside a LanguageRead: the user may switch language while the program runs.
bool Lingua_inglese();

/// Holds the language as read once, for this thread, while it lives: a generation's many
/// messages need not read the configuration again (it holds the folder lock, so the
/// language cannot change meanwhile).
class LanguageRead {
 public:
  LanguageRead();
  ~LanguageRead();
  LanguageRead(const LanguageRead&) = delete;
  LanguageRead& operator=(const LanguageRead&) = delete;

 private:
  int previous_;
};

/// Picks the English or the Italian text of a message pair, at its point of use.
std::string bilingual(std::string_view english, std::string_view italian);

/// Shows `text` in the modal error popup through the user-interface port.
void Mostra_popup(const std::string& text);

/// Shows the English or Italian text, by language.
inline void Mostra_popup(std::string_view english, std::string_view italian) {
  Mostra_popup(bilingual(english, italian));
}

}  // namespace quorva
