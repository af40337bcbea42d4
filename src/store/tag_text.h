#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorva {

/// A tag file's text read once and looked up in memory, with the store's reading rules:
/// lines split at "\n" (a "\r" before it dropped), the first line beginning with tag + "="
/// wins, an empty value reads as missing. An owner reads its file once and takes every tag
/// from the same text, instead of opening the file again for each tag.
class TagText {
 public:
  explicit TagText(std::string_view text);

  /// As Leggi_tag: nullopt when the tag is missing or its value is empty.
  std::optional<std::string> value(std::string_view tag) const;
  /// As Leggi_tag_int: "on"/"ON" 1, "off"/"OFF" 0, else the leading decimal number; -1
  /// when missing.
  int integer(std::string_view tag) const;
  /// As Leggi_tag_onoff: true only for "on" and "ON".
  bool on(std::string_view tag) const;

 private:
  std::vector<std::string> lines_;
};

/// The lines of a tag file's text, as the store splits them (one more, empty, piece after a
/// final "\n").
std::vector<std::string> tag_lines(std::string_view text);

/// The text Modifica_tag writes: every line of the tag set to `value`, blank lines dropped,
/// the tag appended when missing and `add` is set.
std::string with_tag_set(std::string_view text, std::string_view tag, std::string_view value,
                         bool add);
/// The text Cancella_tag writes: the tag's lines left out, every other piece kept with its
/// "\n". Nullopt when the tag is absent (the file is then left untouched).
std::optional<std::string> without_tag(std::string_view text, std::string_view tag);

/// "on"/"ON" 1, "off"/"OFF" 0, else the leading decimal number (none: 0), kept within int.
int tag_integer(const std::string& value);

}  // namespace quorva
