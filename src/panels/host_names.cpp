#include "panels/host_names.h"

#include <string_view>

#include "tagfile/messages.h"

namespace quorva {
namespace {

bool national(char c) {
  return c == '@' || c == '#' || c == '$';
}

bool upper_letter(char c) {
  return c >= 'A' && c <= 'Z';
}

bool digit(char c) {
  return c >= '0' && c <= '9';
}

// The file keys of the conversion list, each followed by a row number.
constexpr std::string_view kFileKeys[] = {"FILEOUT", "FILEIN", "STAMPA", "UOUT", "UIN"};

}  // namespace

std::string file_name_problem(const std::string& name) {
  if (name.empty()) return {};
  // The length has the field's own rule.
  bool valid = !digit(name[0]);
  for (char c : name) valid = valid && (upper_letter(c) || digit(c) || national(c));
  if (!valid)
    return bilingual(
               "FILE NAME must be a DD name: 1 to 8 capital letters, digits, @ # $, not "
               "starting with a digit: ",
               "FILE NAME deve essere un nome DD: da 1 a 8 lettere maiuscole, cifre, "
               "@ # $, senza una cifra in testa: ") +
           name;
  for (std::string_view key : kFileKeys)
    for (std::size_t at = name.find(key); at != std::string::npos; at = name.find(key, at + 1))
      if (at + key.size() < name.size() && digit(name[at + key.size()]))
        return bilingual("FILE NAME cannot hold ", "FILE NAME non puo' contenere ") +
               std::string(key) +
               bilingual(
                   " and a digit: the generator would replace it with "
                   "another file's name: ",
                   " e una cifra: il generatore lo sostituirebbe con "
                   "il nome di un altro file: ") +
               name;
  return {};
}

std::string cursor_problem(const std::string& name) {
  if (name.empty()) return {};
  bool valid = upper_letter(name[0]) || (name[0] >= 'a' && name[0] <= 'z');
  for (char c : name)
    valid =
        valid && (upper_letter(c) || (c >= 'a' && c <= 'z') || digit(c) || c == '_' || c == '-');
  if (valid) return {};
  return bilingual(
             "CURSOR must start with a letter and hold only letters, digits, \"_\" and "
             "\"-\": ",
             "CURSOR deve iniziare con una lettera e contenere solo lettere, cifre, \"_\" "
             "e \"-\": ") +
         name;
}

std::string blank_name_problem(const char* label, const std::string& name) {
  if (name.find_first_of(" \t") == std::string::npos) return {};
  return std::string(label) + bilingual(" cannot hold blanks: ", " non puo' contenere spazi: ") +
         name;
}

std::string duplicate_file_name_problem(const std::string names[], int count) {
  for (int a = 0; a < count; ++a)
    for (int b = a + 1; b < count; ++b)
      if (!names[a].empty() && names[a] == names[b])
        return bilingual("Rows ", "Le righe ") + std::to_string(a + 1) + bilingual(" and ", " e ") +
               std::to_string(b + 1) +
               bilingual(" have the same FILE NAME, and a DD name is used once in a step: ",
                         " hanno lo stesso FILE NAME, e un nome DD compare una volta sola in uno "
                         "step: ") +
               names[a];
  return {};
}

}  // namespace quorva
