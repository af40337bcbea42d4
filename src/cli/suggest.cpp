#include "cli/suggest.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>

namespace quorva::cli {
namespace {

std::string lower(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return out;
}

std::string command_path(const CLI::App& app) {
  std::string path;
  for (const CLI::App* a = &app; a; a = a->get_parent())
    path = a->get_parent() ? " " + a->get_name() + path : "quorva" + path;
  return path;
}

std::vector<std::string> subcommand_names(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* sub : app.get_subcommands([](const CLI::App*) { return true; }))
    names.push_back(sub->get_name());
  return names;
}

// The option a word names, looked for in the command and, as its options fall through to
// the subcommands, in the commands above it.
const CLI::Option* find_option(const CLI::App& app, const std::string& name) {
  for (const CLI::App* a = &app; a; a = a->get_parent())
    if (const CLI::Option* option = a->get_option_no_throw(name)) return option;
  return nullptr;
}

std::vector<std::string> long_option_names(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* a = &app; a; a = a->get_parent())
    for (const CLI::Option* option : a->get_options())
      for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  return names;
}

std::string join(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

std::string unknown_command(const CLI::App& app, const std::string& word) {
  const std::string path = command_path(app);
  const std::vector<std::string> names = subcommand_names(app);
  std::string message = "\"" + word + "\" is not a command of " + path + ".";
  if (std::optional<std::string> meant = nearest_word(word, names))
    message += " Did you mean: " + path + " " + *meant + " ?";
  return message + "\nThe subcommands of " + path + ": " + join(names) + " (see " + path +
         " --help).";
}

std::string unknown_option(const CLI::App& app, const std::string& name) {
  const std::string path = command_path(app);
  std::string message = "Unknown option " + name + " of " + path + ".";
  if (std::optional<std::string> meant = nearest_word(name, long_option_names(app)))
    message += " Did you mean: " + *meant + " ?";
  return message + "\nSee " + path + " --help.";
}

}  // namespace

std::size_t edit_distance(std::string_view a, std::string_view b) {
  // One row of the classic table at a time.
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t above = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
      diagonal = above;
    }
  }
  return row[b.size()];
}

std::optional<std::string> nearest_word(std::string_view word,
                                        const std::vector<std::string>& candidates) {
  const std::string typed = lower(word);
  std::optional<std::string> best;
  std::size_t best_distance = 0;
  std::vector<std::string> begun;
  for (const std::string& candidate : candidates) {
    const std::string name = lower(candidate);
    const std::size_t distance = edit_distance(typed, name);
    if (!best || distance < best_distance) {
      best = candidate;
      best_distance = distance;
    }
    if (!typed.empty() && name.compare(0, typed.size(), typed) == 0) begun.push_back(candidate);
  }
  // A slip: a third of the word's letters, and at least two, may be wrong.
  const std::size_t allowed = std::max<std::size_t>(2, (typed.size() + 2) / 3);
  if (best && best_distance <= allowed) return best;
  if (begun.size() == 1) return begun.front();
  return std::nullopt;
}

std::optional<std::string> unknown_word_message(const CLI::App& root,
                                                const std::vector<std::string>& words) {
  const CLI::App* app = &root;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (word == "--") return std::nullopt;
    if (word.size() > 1 && word[0] == '-') {
      const std::string name = word.substr(0, word.find('='));
      // Grouped short flags and the like are left to CLI11.
      if (name.size() < 3 || name[1] != '-') return std::nullopt;
      const CLI::Option* option = find_option(*app, name);
      if (!option) return unknown_option(*app, name);
      if (option->get_items_expected_max() > 1) return std::nullopt;
      if (option->get_items_expected_max() == 1 && name.size() == word.size()) ++i;
      continue;
    }
    // A command with no subcommands takes words of its own: CLI11 checks them.
    const std::vector<std::string> names = subcommand_names(*app);
    if (names.empty()) continue;
    const CLI::App* next = nullptr;
    for (const CLI::App* sub : app->get_subcommands([](const CLI::App*) { return true; }))
      if (sub->check_name(word)) next = sub;
    if (!next) return unknown_command(*app, word);
    app = next;
  }
  return std::nullopt;
}

}  // namespace quorva::cli
