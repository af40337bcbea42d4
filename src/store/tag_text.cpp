#include "store/tag_text.h"

#include <climits>
#include <cstdlib>

// Implementation details: these are the store's own reading and rewriting rules applied to
// a text in memory, so that an owner can make several changes to a file and replace it
// once: the bytes come out exactly as the same changes made one call at a time would leave
// them.

namespace quorva {
namespace {

bool begins_with_key(const std::string& line, std::string_view tag) {
  return line.size() > tag.size() && line.compare(0, tag.size(), tag) == 0 &&
         line[tag.size()] == '=';
}

}  // namespace

std::vector<std::string> tag_lines(std::string_view text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) {
      lines.emplace_back(text.substr(start));
      return lines;
    }
    std::size_t length = end - start;
    if (length > 0 && text[end - 1] == '\r') --length;
    lines.emplace_back(text.substr(start, length));
    start = end + 1;
  }
}

int tag_integer(const std::string& value) {
  if (value == "on" || value == "ON") return 1;
  if (value == "off" || value == "OFF") return 0;
  const long n = std::strtol(value.c_str(), nullptr, 10);
  if (n > INT_MAX) return INT_MAX;
  if (n < INT_MIN) return INT_MIN;
  return static_cast<int>(n);
}

TagText::TagText(std::string_view text) : lines_(tag_lines(text)) {}

std::optional<std::string> TagText::value(std::string_view tag) const {
  for (const std::string& line : lines_) {
    if (!begins_with_key(line, tag)) continue;
    if (line.size() == tag.size() + 1) return std::nullopt;
    return line.substr(tag.size() + 1);
  }
  return std::nullopt;
}

int TagText::integer(std::string_view tag) const {
  std::optional<std::string> text = value(tag);
  return text ? tag_integer(*text) : -1;
}

bool TagText::on(std::string_view tag) const {
  std::optional<std::string> text = value(tag);
  return text && (*text == "on" || *text == "ON");
}

std::string with_tag_set(std::string_view text, std::string_view tag, std::string_view value,
                         bool add) {
  std::string result;
  result.reserve(text.size() + tag.size() + value.size() + 2);
  bool found = false;
  for (const std::string& line : tag_lines(text)) {
    if (begins_with_key(line, tag)) {
      result.append(tag).append("=").append(value).append("\n");
      found = true;
    } else if (!line.empty()) {
      result.append(line).append("\n");
    }
  }
  if (!found && add) result.append(tag).append("=").append(value).append("\n");
  return result;
}

std::optional<std::string> without_tag(std::string_view text, std::string_view tag) {
  std::string result;
  result.reserve(text.size() + 1);
  bool removed = false;
  for (const std::string& line : tag_lines(text)) {
    if (begins_with_key(line, tag)) {
      removed = true;
      continue;
    }
    result.append(line).append("\n");
  }
  if (!removed) return std::nullopt;
  return result;
}

}  // namespace quorva
