#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/tag_edit.h"
#include "store/tag_text.h"

namespace quorva {

// The owner of temp/key2value.dat, the key-to-value pairs the panels record for the
// generator, and of the format it shares with the key-to-value collections ("Key2Value_"
// files); also of temp/customK2V.dat, which names the collections chosen.

constexpr const char* kKey2ValueFile = "temp/key2value.dat";
constexpr const char* kCustomK2VFile = "temp/customK2V.dat";
/// Slots of temp/customK2V.dat: Key2Value_01 ... Key2Value_25.
constexpr int kCollectionSlots = 25;

struct KeyValue {
  std::string key;
  std::string value;
};

/// The value of a key in temp/key2value.dat; nullopt when missing, empty or no file.
std::optional<std::string> read_key2value(const std::string& key);

/// The whole of temp/key2value.dat read once, for a panel that looks up many keys; empty
/// when the file is missing.
TagText read_key2value_file();

/// Every pair of a key-to-value text, in order: the lines with an "=" and a value after it
/// (a "\r" before "\n" dropped); the key is what stands before the first "=".
std::vector<KeyValue> key2value_pairs(std::string_view text);
/// The pairs of a key-to-value file; nullopt when it cannot be read.
std::optional<std::vector<KeyValue>> read_key2value_pairs(const std::string& file);

/// An edit of temp/key2value.dat, made in one read-modify-write by its apply().
inline TagEdit key2value_edit() {
  return TagEdit(kKey2ValueFile);
}

/// The file chosen in slot `slot` (1 to 25) of temp/customK2V.dat; nullopt when empty.
std::optional<std::string> chosen_collection(int slot);
/// The slot's tag: "Key2Value_" + two digits.
std::string collection_tag(int slot);

}  // namespace quorva
