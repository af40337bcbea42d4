#include "panels/collection_rules.h"

#include <algorithm>

#include "engine/custom_code.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

// Beyond this a file name with its prefix grows past what a listing shows whole.
constexpr std::size_t kNameLimit = 40;
// The generator repeats a custom flag's block at most this many times.
constexpr int kCountLimit = 9999;

}  // namespace

std::string collection_name_problem(const std::string& name) {
  std::string problem;
  if (name.empty() || name.find_first_not_of(' ') == std::string::npos) {
    problem =
        bilingual("The name of the collection is empty.", "Il nome della collezione e' vuoto.");
  } else if (name.size() > kNameLimit) {
    problem = bilingual("The name of the collection is too long (at most ",
                        "Il nome della collezione e' troppo lungo (al massimo ") +
              std::to_string(kNameLimit) + bilingual(" characters): ", " caratteri): ") + name;
  } else if (name.find_first_of("/\\:*?\"<>|=") != std::string::npos || name.front() == ' ' ||
             name.back() == ' ' || name.front() == '.' ||
             std::any_of(name.begin(), name.end(),
                         [](unsigned char c) { return c < 32 || c == 127; })) {
    problem = bilingual(
                  "The name of the collection cannot hold / \\ : * ? \" < > | =, control "
                  "characters, blanks at its ends or a leading dot: ",
                  "Il nome della collezione non puo' contenere / \\ : * ? \" < > | =, "
                  "caratteri di controllo, spazi agli estremi o un punto iniziale: ") +
              name;
  }
  return problem;
}

std::string collection_flag_problem(const FlagRow& row) {
  if (row.code.size() != 3 || row.code.find_first_of("=<>") != std::string::npos ||
      std::string_view("JjCcEe").find(row.code[0]) == std::string_view::npos)
    return bilingual(
               "A flag is three characters, the first J (JCL), C (COBOL) or E "
               "(Easytrieve): ",
               "Un flag e' di tre caratteri, il primo J (JCL), C (COBOL) o E "
               "(Easytrieve): ") +
           row.code;
  if (row.count < 1 || row.count > kCountLimit)
    return bilingual("Limit Flag a Zero:", "Limit Flag a Zero:") + row.code + " (1-" +
           std::to_string(kCountLimit) + ")";
  return "";
}

std::string collection_pair_problem(const KeyValueRow& row, char off) {
  if (row.key.empty() || row.key.find('=') != std::string::npos || has_line_break(row.key))
    return bilingual("A key is not empty and holds no \"=\" and no line break: ",
                     "Una chiave non e' vuota e non contiene \"=\" ne' a capo: ") +
           row.key;
  if (row.key == collection_format(CollectionKind::kKeyToValue).description ||
      (off && row.key[0] == off))
    return bilingual("This key is reserved: ", "Questa chiave e' riservata: ") + row.key;
  if (row.value.empty() || has_line_break(row.value))
    return bilingual("The value of the key " + row.key + " is empty or holds a line break.",
                     "Il valore della chiave " + row.key + " e' vuoto o contiene un a capo.");
  if (!row.enabled && !off)
    return bilingual("No character switches pairs off (enable_disable_k2v_char): ",
                     "Nessun carattere disattiva le coppie (enable_disable_k2v_char): ") +
           row.key;
  return "";
}

std::string collection_snippets_problem(const std::string& text) {
  if (text.find('\0') != std::string::npos)
    return bilingual("The custom code holds a NUL character.",
                     "Il codice custom contiene un carattere NUL.");
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    std::string line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    Trim_spazi(line);
    if (is_section_line(line)) return "";
    if (line.find_first_not_of(' ') != std::string::npos)
      return bilingual(
                 "Lines before the first [COBOL CUSTOM ...], [EASYTRIEVE CUSTOM ...] or "
                 "[JCL CUSTOM ...] line are never inserted: ",
                 "Le righe prima della prima riga [COBOL CUSTOM ...], [EASYTRIEVE CUSTOM "
                 "...] o [JCL CUSTOM ...] non vengono mai inserite: ") +
             line;
    start = end + 1;
  }
  return "";
}

}  // namespace quorva
