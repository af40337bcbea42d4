#include "dclgen/dclgen_member.h"

#include <cctype>
#include <sstream>

#include "dclgen/member_lines.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

bool holds_declaration(const std::string& line) {
  return line.find("EXEC") != std::string::npos && line.find("SQL") != std::string::npos &&
         line.find("DECLARE") != std::string::npos && line.find("TABLE") != std::string::npos;
}

// The word after the level number of a " 01 " line, up to a blank or a period.
std::string level01_name(const std::string& line) {
  std::size_t at = line.find(" 01 ") + 4;
  at = line.find_first_not_of(' ', at);
  if (at == std::string::npos) return {};
  std::size_t end = line.find_first_of(" .", at);
  return line.substr(at, end == std::string::npos ? std::string::npos : end - at);
}

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

}  // namespace

std::optional<std::string> table_name_mismatch(const std::string& access, const std::string& member,
                                               const std::string& table,
                                               const DclgenTableInfo& info) {
  if (table.empty() || info.table.empty() || upper(table) == upper(info.table)) return std::nullopt;
  const std::string declared = info.owner.empty() ? info.table : info.owner + "." + info.table;
  return bilingual("TABLE NAME " + table + " of " + access +
                       " is not the table its DCLGEN member " + member + " declares (" + declared +
                       "): the member's columns would be read from another table "
                       "and the bind fails.",
                   "TABLE NAME " + table + " di " + access +
                       " non e' la tabella dichiarata dal suo membro DCLGEN " + member + " (" +
                       declared +
                       "): le colonne del membro sarebbero lette da un'altra "
                       "tabella e il bind fallisce.");
}

std::optional<DclgenTableInfo> parse_table_info(std::string_view text) {
  std::optional<DclgenTableInfo> info;
  for (const std::string& line : member_cards(text)) {
    if (is_comment_line(line)) continue;
    if (!info) {
      if (!holds_declaration(line)) continue;
      std::istringstream words(line.substr(line.find("DECLARE") + 7));
      std::string name;
      words >> name;
      if (name.empty() || name == "TABLE") return std::nullopt;
      info.emplace();
      std::size_t dot = name.rfind('.');
      if (dot != std::string::npos) {
        info->owner = name.substr(0, dot);
        name.erase(0, dot + 1);
      }
      info->table = name;
    } else if (line.size() >= 8 && line.find(" 01 ") != std::string::npos) {
      info->structure = level01_name(line);
      break;
    }
  }
  return info;
}

std::optional<DclgenTableInfo> read_table_info(const std::string& path) {
  std::optional<std::string> text = read_member_file(path);
  if (!text) return std::nullopt;
  return parse_table_info(*text);
}

std::string kept_description_tag(char letter) {
  return std::string("QVDESC*") + letter;
}

std::optional<std::string> read_kept_description(const std::string& path, char letter) {
  return Leggi_tag(path, false, kept_description_tag(letter));
}

Status write_kept_description(const std::string& path, char letter, const std::string& text) {
  if (has_line_break(text))
    return Status::failure(line_break_message(bilingual("the description", "la descrizione")));
  if (!Esiste_file(path))
    return Status::failure(
        bilingual("The DCLGEN member doesn't exist: ", "Il membro DCLGEN non esiste: ") + path);
  return Modifica_tag(path, true, true, kept_description_tag(letter), text);
}

}  // namespace quorva
