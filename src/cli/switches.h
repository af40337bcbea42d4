#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace CLI {
class Validator;
}

namespace quorva::cli {

/// The one reading of a switch typed on the command line: on/off, yes/no, true/false and
/// 1/0, in any case. nullopt for any other word.
std::optional<bool> switch_value(std::string_view text);

/// The refusal of a word that is no switch, naming the setting; `upper` names the words as
/// the configuration stores them (ON/OFF) rather than as the program files do (on/off).
std::string switch_refusal(const std::string& setting, const std::string& value, bool upper);

/// For an option of type bool or std::optional<bool>: turns every switch word into what
/// CLI11 reads as a bool, and refuses the others with switch_refusal's words.
CLI::Validator switch_words();

}  // namespace quorva::cli
