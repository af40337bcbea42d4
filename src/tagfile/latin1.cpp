#include "tagfile/latin1.h"

#include "tagfile/messages.h"

namespace quorva {
namespace {

Latin1Result refuse(std::string_view utf8, std::size_t at, std::size_t length) {
  const std::string shown(utf8.substr(at, length));
  return {std::nullopt,
          bilingual("The character \"" + shown + "\" cannot be stored (only ISO-8859-1 text): ",
                    "Il carattere \"" + shown +
                        "\" non puo' essere memorizzato (solo testo "
                        "ISO-8859-1): ") +
              std::string(utf8)};
}

}  // namespace

Latin1Result utf8_to_latin1(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if (byte < 0x80) {
      out += static_cast<char>(byte);
      ++i;
      continue;
    }
    std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
    if (length == 1 || i + length > utf8.size())
      return {std::nullopt,
              bilingual("The text is not valid UTF-8: ", "Il testo non e' UTF-8 valido: ") +
                  std::string(utf8)};
    unsigned code = byte & (0xFF >> (length + 1));
    for (std::size_t k = 1; k < length; ++k) {
      const auto next = static_cast<unsigned char>(utf8[i + k]);
      if ((next & 0xC0) != 0x80)
        return {std::nullopt,
                bilingual("The text is not valid UTF-8: ", "Il testo non e' UTF-8 valido: ") +
                    std::string(utf8)};
      code = (code << 6) | (next & 0x3F);
    }
    if (code > 0xFF || code < 0x80) return refuse(utf8, i, length);
    out += static_cast<char>(code);
    i += length;
  }
  return {std::move(out), {}};
}

std::string latin1_to_utf8(std::string_view latin1) {
  std::string out;
  out.reserve(latin1.size());
  for (char c : latin1) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      out += c;
    } else {
      out += static_cast<char>(0xC0 | (byte >> 6));
      out += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return out;
}

std::string latin1_upper(std::string text) {
  for (char& c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 'a' && byte <= 'z')
      c = static_cast<char>(byte - 0x20);
    else if (byte >= 0xE0 && byte <= 0xFE && byte != 0xF7)  // 0xF7 is the division sign
      c = static_cast<char>(byte - 0x20);
  }
  return text;
}

}  // namespace quorva
