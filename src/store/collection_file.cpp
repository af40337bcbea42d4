#include "store/collection_file.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "store/config_file.h"
#include "store/key2value_file.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

constexpr std::string_view kExtension = ".txt";

}  // namespace

const CollectionFormat& collection_format(CollectionKind kind) {
  static const CollectionFormat kFormats[] = {
      {"Custom_", "temp/customused.dat", 30, nullptr},
      {"Flags_Coll_", "temp/Flags.dat", 25, "desc_flags"},
      {"Key2Value_", kCustomK2VFile, kCollectionSlots, "desc_key2value"}};
  return kFormats[static_cast<int>(kind)];
}

std::string chosen_slot_tag(CollectionKind kind, int slot) {
  const std::string number = std::to_string(slot);
  switch (kind) {
    case CollectionKind::kSnippets:
      return "Custom_code_" + number;
    case CollectionKind::kFlags:
      return "FlagsColl_" + std::string(slot < 10 ? "0" : "") + number;
    case CollectionKind::kKeyToValue:
      break;
  }
  return collection_tag(slot);
}

std::string other_slot_tag(CollectionKind kind, int slot) {
  if (slot >= 10) return "";
  const std::string tag = chosen_slot_tag(kind, slot);
  if (kind == CollectionKind::kSnippets) return tag.substr(0, tag.size() - 1) + "0" + tag.back();
  return tag.substr(0, tag.size() - 2) + tag.back();
}

std::vector<std::string> read_chosen_slots(CollectionKind kind) {
  const CollectionFormat& format = collection_format(kind);
  const std::string text = read_whole_file(format.chosen_file).value_or("");
  std::vector<std::string> slots(format.slot_count);
  for (int n = 1; n <= format.slot_count; ++n) {
    const std::string tag = chosen_slot_tag(kind, n);
    std::optional<std::string> file = Leggi_tag_in(text, format.chosen_file, false, tag);
    if (!file && n < 10)
      file = Leggi_tag_in(text, format.chosen_file, false, other_slot_tag(kind, n));
    if (file) slots[n - 1] = *file;
  }
  return slots;
}

std::string collection_file_name(CollectionKind kind, const std::string& name) {
  return collection_format(kind).prefix + name + std::string(kExtension);
}

std::optional<std::string> collection_name(CollectionKind kind, std::string_view file_name) {
  const std::string_view prefix = collection_format(kind).prefix;
  if (file_name.size() <= prefix.size() + kExtension.size() || !file_name.starts_with(prefix) ||
      !file_name.ends_with(kExtension))
    return std::nullopt;
  return std::string(
      file_name.substr(prefix.size(), file_name.size() - prefix.size() - kExtension.size()));
}

std::vector<std::string> list_collections(CollectionKind kind, const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (!entry.is_regular_file(error)) continue;
    if (std::optional<std::string> name = collection_name(kind, entry.path().filename().string()))
      names.push_back(*name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

void parse_flag_text(std::string_view text, std::string& description, std::vector<FlagRow>& rows) {
  const std::string description_key =
      std::string(collection_format(CollectionKind::kFlags).description) + "=";
  for (const KeyValue& pair : key2value_pairs(text)) {
    if (pair.key + "=" == description_key) {
      if (description.empty()) description = pair.value;
      continue;
    }
    // The generator drops the key's first and last characters, the delimiters.
    if (pair.key.size() < 2) continue;
    std::string code = pair.key.substr(1, pair.key.size() - 2);
    while (!code.empty() && code.back() == ' ') code.pop_back();
    rows.push_back({code, std::atoi(pair.value.c_str())});
  }
}

std::string flag_text(const std::string& description, const std::vector<FlagRow>& rows) {
  std::string text;
  if (!description.empty())
    append_tag_line(text, collection_format(CollectionKind::kFlags).description, description);
  for (const FlagRow& row : rows)
    append_tag_line(text, "<" + row.code + ">", std::to_string(row.count));
  return text;
}

void parse_key_value_text(std::string_view text, char off, std::string& description,
                          std::vector<KeyValueRow>& rows) {
  const std::string description_key = collection_format(CollectionKind::kKeyToValue).description;
  for (KeyValue& pair : key2value_pairs(text)) {
    KeyValueRow row{std::move(pair.key), std::move(pair.value)};
    if (row.key == description_key) {
      if (description.empty()) description = row.value;
      continue;
    }
    if (off && row.key.size() > 1 && row.key[0] == off) {
      row.key.erase(0, 1);
      row.enabled = false;
    }
    rows.push_back(std::move(row));
  }
}

std::string key_value_text(const std::string& description, const std::vector<KeyValueRow>& rows,
                           char off) {
  std::string text;
  if (!description.empty())
    append_tag_line(text, collection_format(CollectionKind::kKeyToValue).description, description);
  for (const KeyValueRow& row : rows)
    append_tag_line(text, (row.enabled || !off ? "" : std::string(1, off)) + row.key, row.value);
  return text;
}

char key_value_switch_character() {
  std::optional<std::string> value = Leggi_tag(kConfigFile, false, "enable_disable_k2v_char");
  return value && (*value)[0] != ' ' ? (*value)[0] : 0;
}

}  // namespace quorva
