#include "store/program_name.h"

#include "store/parbase_file.h"
#include "store/user_file.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {

bool is_member_name(std::string_view name) {
  if (name.empty() || name.size() > 8) return false;
  if (name[0] >= '0' && name[0] <= '9') return false;
  for (char c : name) {
    const bool allowed =
        (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '@' || c == '#' || c == '$';
    if (!allowed) return false;
  }
  return true;
}

bool is_library_name(std::string_view name) {
  if (name.size() >= 2 && name.front() == '\'' && name.back() == '\'')
    name = name.substr(1, name.size() - 2);
  if (name.empty() || name.size() > 44) return false;
  std::size_t length = 0;
  for (std::size_t i = 0; i <= name.size(); ++i) {
    const char c = i < name.size() ? name[i] : '.';
    if (c == '.') {
      if (length == 0 || length > 8) return false;
      length = 0;
      continue;
    }
    const bool letter =
        (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '@' || c == '#' || c == '$';
    const bool other = (c >= '0' && c <= '9') || c == '-';
    if (!letter && !(other && length > 0)) return false;
    ++length;
  }
  return true;
}

std::string member_name_message(const std::string& name) {
  return bilingual(
             "The Program Name must be a member name: 1 to 8 characters among A-Z, 0-9, "
             "@ # $, not starting with a digit. Found: ",
             "Il Nome Programma deve essere un nome di membro: da 1 a 8 caratteri tra A-Z, "
             "0-9, @ # $, non iniziando con una cifra. Trovato: ") +
         name;
}

std::optional<std::string> read_program_name(bool popup) {
  std::optional<std::string> name = Leggi_tag(kParbaseFile, popup, "nomeprogr");
  if (!name) return std::nullopt;
  if (!is_member_name(*name)) {
    Mostra_popup(member_name_message(*name));
    return std::nullopt;
  }
  return name;
}

std::optional<std::string> read_program_file(bool popup) {
  std::optional<std::string> folder = read_source_directory(popup);
  if (!folder) return std::nullopt;
  std::optional<std::string> name = read_program_name(popup);
  if (!name) return std::nullopt;
  return *folder + *name + ".txt";
}

}  // namespace quorva
