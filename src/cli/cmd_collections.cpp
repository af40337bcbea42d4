#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <iterator>

#include "cli/cli.h"
#include "cli/commands.h"
#include "engine/custom_code.h"
#include "panels/collections.h"
#include "tagfile/latin1.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva::cli {
namespace {

struct CollectionArgs {
  std::string kind;
  std::string name;
  std::string other;
  std::vector<std::string> rows;
  std::optional<std::string> description;
  std::vector<std::string> off;
  std::vector<std::string> on;
  int slot = 0;
};

CollectionKind kind_of(const std::string& word) {
  if (word == "snippets") return CollectionKind::kSnippets;
  if (word == "flags") return CollectionKind::kFlags;
  return CollectionKind::kKeyToValue;
}

// The typed words in the files' single-byte text; false when one is refused.
bool typed_words(CollectionArgs& args) {
  for (std::string* word : {&args.name, &args.other}) {
    std::optional<std::string> text = typed_text(*word);
    if (!text) return false;
    *word = *text;
  }
  for (auto* list : {&args.rows, &args.off, &args.on})
    for (std::string& word : *list) {
      std::optional<std::string> text = typed_text(word);
      if (!text) return false;
      word = *text;
    }
  return to_latin1(args.description);
}

void print_list(const Collections& collections) {
  for (const std::string& name : collections.names()) {
    std::cout << latin1_to_utf8(name);
    if (const int slot = collections.slot_of(name))
      std::cout << "  (" << bilingual("in use, slot ", "in uso, posizione ") << slot << ")";
    std::cout << '\n';
  }
  for (std::size_t n = 1; n <= collections.chosen().size(); ++n) {
    const std::string label = collections.slot_label(static_cast<int>(n));
    if (label.empty() || collections.exists(label)) continue;
    std::cout << latin1_to_utf8(label) << "  (" << bilingual("in use, slot ", "in uso, posizione ")
              << n << ")\n";
  }
  if (const std::string missing = collections.missing_message(); !missing.empty())
    ui().show_message(missing);
}

void print_content(CollectionKind kind, const CollectionContent& content) {
  if (kind == CollectionKind::kSnippets) {
    std::cout << latin1_to_utf8(content.text);
    return;
  }
  if (!content.description.empty())
    std::cout << "DESCRIPTION : " << latin1_to_utf8(content.description) << '\n';
  for (const FlagRow& row : content.flags)
    std::cout << latin1_to_utf8(row.code) << '=' << row.count << '\n';
  for (const KeyValueRow& row : content.pairs)
    std::cout << latin1_to_utf8(row.key) << '=' << latin1_to_utf8(row.value)
              << (row.enabled ? "" : bilingual("  (off)", "  (disattivata)")) << '\n';
}

// A section of custom code: the lines that follow its section line, up to the next one.
struct Section {
  std::size_t start;
  std::size_t end;
};
std::optional<Section> find_section(const std::string& text, const std::string& head) {
  std::optional<Section> found;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    end = end == std::string::npos ? text.size() : end + 1;
    std::string line = text.substr(start, end - start);
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
    Trim_spazi(line);
    if (found && is_section_line(line)) {
      found->end = start;
      return found;
    }
    if (!found && line == head) found = Section{start, text.size()};
    start = end;
  }
  return found;
}

bool no_row(const std::string& key) {
  Mostra_popup(bilingual("There is no row ", "Non esiste la riga ") + key);
  return false;
}

// Applies the rows of `set` or `unset` to the content; false when one is refused.
bool change_rows(CollectionKind kind, CollectionContent& content, const CollectionArgs& args,
                 bool set) {
  for (const std::string& row : args.rows) {
    const std::size_t equals = row.find('=');
    if (kind == CollectionKind::kSnippets) {
      // The parser takes "[...]" for a list and hands its inside: the brackets go back on.
      const std::string head = row.starts_with('[') ? row : "[" + row + "]";
      std::optional<Section> section = find_section(content.text, head);
      std::string lines;
      if (set) {
        lines = head + "\n" + std::string(std::istreambuf_iterator<char>(std::cin), {});
        if (!lines.empty() && lines.back() != '\n') lines += '\n';
      }
      if (!content.text.empty() && content.text.back() != '\n') content.text += '\n';
      if (section)
        content.text.replace(section->start, section->end - section->start, lines);
      else if (set)
        content.text += lines;
      else
        return no_row(head);
      continue;
    }
    const std::string key = set ? row.substr(0, equals) : row;
    if (set && equals == std::string::npos) {
      Mostra_popup(
          bilingual("Write each row as KEY=VALUE: ", "Scrivere ogni riga come CHIAVE=VALORE: ") +
          row);
      return false;
    }
    const std::string value = set ? row.substr(equals + 1) : "";
    if (kind == CollectionKind::kFlags) {
      auto found = std::find_if(content.flags.begin(), content.flags.end(),
                                [&](const FlagRow& flag) { return flag.code == key; });
      const bool digits = !value.empty() && value.size() <= 5 &&
                          value.find_first_not_of("0123456789") == std::string::npos;
      const FlagRow changed{key, digits ? std::stoi(value) : 0};
      if (found == content.flags.end() && !set) return no_row(key);
      if (!set)
        content.flags.erase(found);
      else if (found != content.flags.end())
        *found = changed;
      else
        content.flags.push_back(changed);
    } else {
      auto found = std::find_if(content.pairs.begin(), content.pairs.end(),
                                [&](const KeyValueRow& pair) { return pair.key == key; });
      if (found == content.pairs.end() && !set) return no_row(key);
      if (!set)
        content.pairs.erase(found);
      else if (found != content.pairs.end())
        found->value = value;
      else
        content.pairs.push_back({key, value, true});
    }
  }
  for (const auto& [keys, enabled] : {std::pair{&args.off, false}, std::pair{&args.on, true}})
    for (const std::string& key : *keys) {
      auto found = std::find_if(content.pairs.begin(), content.pairs.end(),
                                [&](const KeyValueRow& pair) { return pair.key == key; });
      if (found == content.pairs.end()) return no_row(key);
      found->enabled = enabled;
    }
  if (args.description) content.description = *args.description;
  return true;
}

int run_collections(const std::string& action, CollectionArgs args) {
  if (!typed_words(args)) return kFailed;
  const CollectionKind kind = kind_of(args.kind);
  if (args.description && kind == CollectionKind::kSnippets) {
    Mostra_popup("Custom code has no description: --desc is for flags and k2v.",
                 "Il codice custom non ha descrizione: --desc vale per flags e k2v.");
    return kFailed;
  }
  Result<Collections> opened = Collections::open(kind);
  if (!opened) return exit_status(opened.status());
  Collections& collections = *opened;
  bool changed = true;
  if (action == "list") {
    print_list(collections);
    return kOk;
  }
  if (action == "show") {
    std::optional<CollectionContent> content = collections.content(args.name);
    if (!content) return kFailed;
    print_content(kind, *content);
    return kOk;
  }
  if (action == "new") {
    changed = collections.create(args.name);
    if (changed && args.description) {
      CollectionContent content{*args.description, {}, {}, ""};
      changed = collections.set_content(args.name, content);
    }
  } else if (action == "copy") {
    changed = collections.copy(args.name, args.other);
  } else if (action == "rename") {
    changed = collections.rename(args.name, args.other);
  } else if (action == "delete") {
    changed = collections.remove(args.name);
  } else if (action == "use") {
    changed = collections.use(args.name);
  } else if (action == "unuse") {
    if (args.slot < 0 || args.slot > static_cast<int>(collections.chosen().size())) {
      Mostra_popup(bilingual("There is no slot ", "Non esiste la posizione ") +
                   std::to_string(args.slot));
      return kFailed;
    }
    if (args.slot)
      collections.free_slot(args.slot);
    else
      changed = collections.unuse(args.name);
  } else {
    std::optional<CollectionContent> content = collections.content(args.name);
    changed = content && change_rows(kind, *content, args, action == "set") &&
              collections.set_content(args.name, *content);
  }
  if (!changed) return kFailed;
  return exit_status(collections.confirm());
}

}  // namespace

void add_collections_commands(CLI::App& app, Cli& cli) {
  auto* group = app.add_subcommand(
      "collections",
      "Collections of the source folder: custom code (snippets), custom flags (flags) and key "
      "to value pairs (k2v), and the ones in use for the generation");
  group->require_subcommand(1);
  const struct {
    const char* action;
    const char* help;
    const char* other;  // the second name, when the action has one
    bool rows;
  } actions[] = {
      {"list", "List the collections of a kind, with the slot of those in use", nullptr, false},
      {"show", "Print a collection's description and rows, or its custom code", nullptr, false},
      {"new", "Make a new empty collection (Prefix + NAME + .txt in the source folder)", nullptr,
       false},
      {"copy", "Copy a collection under a new name", "TO", false},
      {"rename", "Rename a collection; one in use keeps its slot", "TO", false},
      {"delete", "Delete a collection (asks; one in use also frees its slot)", nullptr, false},
      {"use", "Choose a collection for the generation, in the first free slot", nullptr, false},
      {"unuse", "Free the slot of a collection (or --slot N, for a file that is gone)", nullptr,
       false},
      {"set",
       "Add or change rows: CODE=COUNT (flags), KEY=VALUE (k2v), or a section line such as "
       "'[COBOL CUSTOM NAME]' (brackets optional) whose lines are read from stdin (snippets)",
       nullptr, true},
      {"unset", "Remove rows: CODE (flags), KEY (k2v), or a section line (snippets)", nullptr,
       true},
  };
  for (const auto& entry : actions) {
    const std::string action = entry.action;
    auto args = std::make_shared<CollectionArgs>();
    auto* cmd = group->add_subcommand(action, entry.help);
    cmd->add_option("KIND", args->kind, "snippets, flags or k2v")
        ->required()
        ->check(CLI::IsMember({"snippets", "flags", "k2v"}));
    if (action != "list") {
      auto* name = cmd->add_option("NAME", args->name, "Name of the collection");
      if (action != "unuse") name->required();
    }
    if (entry.other) cmd->add_option(entry.other, args->other, "New name")->required();
    if (entry.rows) cmd->add_option("ROWS", args->rows, "Rows")->required();
    if (action == "new" || action == "set")
      cmd->add_option("--desc", args->description, "Description of the collection (not snippets)");
    if (action == "set") {
      cmd->add_option("--off", args->off, "Switch a key off, keeping it (k2v)");
      cmd->add_option("--on", args->on, "Switch a key back on (k2v)");
    }
    if (action == "unuse") cmd->add_option("--slot", args->slot, "Slot to free, 1 on");
    cmd->callback([&cli, args, action] {
      cli.run_in_working_folder([args, action] { return run_collections(action, *args); });
    });
  }
}

}  // namespace quorva::cli
