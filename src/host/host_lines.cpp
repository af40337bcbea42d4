#include "host/host_lines.h"

#include <cstdio>

#include "tagfile/messages.h"

namespace quorva {
namespace {

// The euro pages of the host (IBM-1140 to IBM-1149) put the euro where Latin-1 has the
// currency sign.
bool euro_page(const std::string& code_pages) {
  const std::size_t at = code_pages.find("114");
  return at != std::string::npos && at + 3 < code_pages.size() && code_pages[at + 3] >= '0' &&
         code_pages[at + 3] <= '9';
}

bool host_can_hold(unsigned char c, bool euro) {
  if (c < 0x20 || (c >= 0x7F && c <= 0x9F)) return false;
  return !(euro && c == 0xA4);
}

std::string place(const std::string& file, int line, int column) {
  return file + bilingual(", line ", ", riga ") + std::to_string(line) +
         bilingual(", column ", ", colonna ") + std::to_string(column);
}

}  // namespace

Status check_host_lines(const std::string& file, std::string_view text, int limit,
                        const std::string& code_pages) {
  const bool euro = euro_page(code_pages);
  int line = 1;
  for (std::size_t start = 0; start < text.size(); ++line) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view record = text.substr(start, end - start);
    if (!record.empty() && record.back() == '\r') record.remove_suffix(1);
    for (std::size_t i = 0; i < record.size(); ++i) {
      const auto c = static_cast<unsigned char>(record[i]);
      if (host_can_hold(c, euro)) continue;
      char code[8];
      std::snprintf(code, sizeof code, "X'%02X'", c);
      return Status::failure(
          bilingual("The host code page cannot hold the character " + std::string(code) + " at ",
                    "La code page dell'host non puo' contenere il carattere " + std::string(code) +
                        " in ") +
          place(file, line, static_cast<int>(i + 1)) + ".");
    }
    if (static_cast<int>(record.size()) > limit)
      return Status::failure(
          bilingual("The line is longer than the record length of the library (" +
                        std::to_string(limit) + "): the host would cut it at ",
                    "La riga supera la lunghezza record della libreria (" + std::to_string(limit) +
                        "): l'host la troncherebbe in ") +
          place(file, line, limit + 1) + ".");
    start = end + 1;
  }
  return {};
}

}  // namespace quorva
