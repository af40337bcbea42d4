#include "store/key2value_file.h"

#include "tagfile/tag_file.h"

namespace quorva {

std::optional<std::string> read_key2value(const std::string& key) {
  return Leggi_tag(kKey2ValueFile, false, key);
}

TagText read_key2value_file() {
  return TagText(read_whole_file(kKey2ValueFile).value_or(""));
}

std::vector<KeyValue> key2value_pairs(std::string_view text) {
  std::vector<KeyValue> pairs;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    const std::size_t equals = line.find('=');
    if (equals != std::string_view::npos && equals + 1 < line.size())
      pairs.push_back({std::string(line.substr(0, equals)), std::string(line.substr(equals + 1))});
    start = end + 1;
  }
  return pairs;
}

std::optional<std::vector<KeyValue>> read_key2value_pairs(const std::string& file) {
  std::optional<std::string> text = read_whole_file(file);
  if (!text) return std::nullopt;
  return key2value_pairs(*text);
}

std::string collection_tag(int slot) {
  return std::string("Key2Value_") + (slot < 10 ? "0" : "") + std::to_string(slot);
}

std::optional<std::string> chosen_collection(int slot) {
  return Leggi_tag(kCustomK2VFile, false, collection_tag(slot));
}

}  // namespace quorva
