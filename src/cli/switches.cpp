#include "cli/switches.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>

#include "tagfile/messages.h"

namespace quorva::cli {

std::optional<bool> switch_value(std::string_view text) {
  std::string word(text);
  std::transform(word.begin(), word.end(), word.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (word == "on" || word == "yes" || word == "true" || word == "1") return true;
  if (word == "off" || word == "no" || word == "false" || word == "0") return false;
  return std::nullopt;
}

std::string switch_refusal(const std::string& setting, const std::string& value, bool upper) {
  const std::string words = upper ? "ON or OFF" : "on or off";
  return bilingual(
      setting + " must be " + words + " (or yes/no, true/false, 1/0), not: " + value,
      setting + " deve essere " + words + " (o yes/no, true/false, 1/0), non: " + value);
}

CLI::Validator switch_words() {
  return CLI::Validator(
      [](std::string& text) -> std::string {
        std::optional<bool> on = switch_value(text);
        if (!on) return "must be on or off (or yes/no, true/false, 1/0), not: " + text;
        text = *on ? "true" : "false";
        return {};
      },
      "on|off", "switch");
}

}  // namespace quorva::cli
