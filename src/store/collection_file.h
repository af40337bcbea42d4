#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorva {

// The owner of the collection files of the source folder ("Custom_", "Flags_Coll_",
// "Key2Value_" + a name + ".txt") and of the files that name the chosen ones
// (temp/customused.dat, temp/Flags.dat, temp/customK2V.dat). The texts written here are
// the ones the generator reads: custom-code sections, "<CODE>=count" flag rows and
// "key=value" pairs.

enum class CollectionKind { kSnippets, kFlags, kKeyToValue };

/// What tells one kind of collection from another on the disk.
struct CollectionFormat {
  const char* prefix;       ///< of the file name in the source folder
  const char* chosen_file;  ///< the file of the chosen collections
  int slot_count;           ///< how many may be chosen
  const char* description;  ///< the tag of the description line; null for snippets
};
const CollectionFormat& collection_format(CollectionKind kind);

/// The slot's tag, as the generator reads it: "Custom_code_" + n, "FlagsColl_" + two digits,
/// "Key2Value_" + two digits.
std::string chosen_slot_tag(CollectionKind kind, int slot);
/// The other spelling of a one-digit slot that readers also accept ("FlagsColl_3",
/// "Custom_code_03"); empty from slot 10 on.
std::string other_slot_tag(CollectionKind kind, int slot);
/// The chosen file of each slot (index 0 is slot 1); empty where the slot is free. A slot
/// written with a bare number ("FlagsColl_3") is read too.
std::vector<std::string> read_chosen_slots(CollectionKind kind);

/// The file name of a collection: prefix + name + ".txt".
std::string collection_file_name(CollectionKind kind, const std::string& name);
/// The collection's name for a file name of its kind, else nullopt.
std::optional<std::string> collection_name(CollectionKind kind, std::string_view file_name);
/// The collections of a folder (ending in "/"), by name; empty when it cannot be read.
std::vector<std::string> list_collections(CollectionKind kind, const std::string& folder);

/// One row of a flag collection: the code the template lines carry and how many times
/// their block is written.
struct FlagRow {
  std::string code;
  int count = 0;
  bool operator==(const FlagRow&) const = default;
};
/// One pair of a key-to-value collection; a switched-off pair keeps its place in the file
/// behind the switch character, so the generator never finds its key in a template line.
struct KeyValueRow {
  std::string key;
  std::string value;
  bool enabled = true;
  bool operator==(const KeyValueRow&) const = default;
};

/// The description and rows of a flag file's text.
void parse_flag_text(std::string_view text, std::string& description, std::vector<FlagRow>& rows);
std::string flag_text(const std::string& description, const std::vector<FlagRow>& rows);
/// The same for a key-to-value collection; `off` is the switch character (0 for none).
void parse_key_value_text(std::string_view text, char off, std::string& description,
                          std::vector<KeyValueRow>& rows);
std::string key_value_text(const std::string& description, const std::vector<KeyValueRow>& rows,
                           char off);

/// The character that switches a key-to-value pair off (enable_disable_k2v_char in the
/// configuration); 0 when none is set.
char key_value_switch_character();

}  // namespace quorva
