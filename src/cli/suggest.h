#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace quorva::cli {

/// Levenshtein distance: the fewest insertions, deletions and replacements of one
/// character that turn `a` into `b`.
std::size_t edit_distance(std::string_view a, std::string_view b);

/// The candidate a mistyped `word` most likely meant (case aside): the nearest by edit
/// distance when near enough to be a slip of the keyboard, else the only candidate that
/// `word` begins; nullopt when none is a likely meaning.
std::optional<std::string> nearest_word(std::string_view word,
                                        const std::vector<std::string>& candidates);

/// Walks the words of a command line down the command tree of `root` and returns the
/// message for the first word that names no subcommand where a subcommand is expected, or
/// for an option that no command on the way has, with the nearest name to use instead.
/// nullopt when the words lead to a command; CLI11 then checks the rest.
std::optional<std::string> unknown_word_message(const CLI::App& root,
                                                const std::vector<std::string>& words);

}  // namespace quorva::cli
