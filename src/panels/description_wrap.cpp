#include "panels/description_wrap.h"

#include <algorithm>

#include "tagfile/tag_file.h"

namespace quorva {
namespace {

std::string trimmed(std::string text) {
  Trim_spazi(text);
  return text;
}

// Each box line followed by one blank, as the box is read line by line.
std::string joined_box_lines(const std::string& box_text) {
  std::string text;
  if (box_text.empty()) return text;
  std::size_t start = 0;
  for (;;) {
    std::size_t end = box_text.find('\n', start);
    std::string line = box_text.substr(start, end == std::string::npos ? end : end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    text.append(line, 0, std::min(line.size(), kDescriptionBoxLine));
    text.push_back(' ');
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return text;
}

}  // namespace

int description_width() {
  int width = Leggi_tag_int("Resource/QVconfig.ini", false, "DESCR_BREAK_POINT");
  return width > 0 ? width : kDefaultDescriptionWidth;
}

std::vector<std::string> wrap_description(const std::string& box_text, int width) {
  std::string text = joined_box_lines(box_text);
  // 0xC8 is the box's own line-break residue; a typed "È" goes with it.
  if (text == "\xC8") text.clear();
  for (char& c : text)
    if (c == '\xC8') c = ' ';

  std::vector<std::string> lines;
  if (text.empty()) return lines;
  const std::size_t limit = width > 0 ? static_cast<std::size_t>(width) : 0;
  std::string line;
  std::string word;
  for (char c : text) {
    if (c == ' ') {
      if (line.size() + word.size() > limit) {
        lines.push_back(trimmed(line));
        line.assign(word);
      } else {
        line.append(word);
      }
      word.assign(1, ' ');
    } else if (word.size() <= limit) {
      word += c;
    }
  }
  if (line.size() + word.size() > limit) {
    lines.push_back(trimmed(line));
    lines.push_back(trimmed(word));
  } else {
    line.append(word);
    lines.push_back(trimmed(line));
  }
  return lines;
}

}  // namespace quorva
