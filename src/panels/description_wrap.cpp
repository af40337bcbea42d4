#include "panels/description_wrap.h"

#include "store/config_file.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

std::string trimmed(std::string text) {
  Trim_spazi(text);
  return text;
}

// Each line of the box followed by one blank, as the box hands its lines over. A line over
// the box's width is the box's word wrap: broken at its last blank within the width (the
// blank becomes the line end), or at the width when it has none.
std::string joined_box_lines(const std::string& box_text) {
  std::string text;
  if (box_text.empty()) return text;
  std::size_t start = 0;
  for (;;) {
    std::size_t end = box_text.find('\n', start);
    std::string line = box_text.substr(start, end == std::string::npos ? end : end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    while (line.size() > kDescriptionBoxLine) {
      const std::size_t blank = line.rfind(' ', kDescriptionBoxLine);
      const std::size_t cut = blank == std::string::npos ? kDescriptionBoxLine : blank;
      text.append(line, 0, cut).push_back(' ');
      line.erase(0, blank == std::string::npos ? cut : cut + 1);
    }
    text.append(line).push_back(' ');
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return text;
}

struct Wrapped {
  std::vector<std::string> lines;
  std::vector<std::string> cut;  // words that lost characters, whole
};

Wrapped wrap(const std::string& box_text, int width) {
  std::string text = joined_box_lines(box_text);
  // 0xC8 is the box's own line-break residue; a typed "È" goes with it.
  if (text == "\xC8") text.clear();
  for (char& c : text)
    if (c == '\xC8') c = ' ';

  Wrapped out;
  if (text.empty()) return out;
  const std::size_t limit = width > 0 ? static_cast<std::size_t>(width) : 0;
  std::string line;
  std::string word;
  std::string whole;  // the word as typed, to name it when it is cut
  auto end_word = [&] {
    if (whole.size() > word.size()) out.cut.push_back(trimmed(whole));
  };
  for (char c : text) {
    if (c == ' ') {
      end_word();
      if (line.size() + word.size() > limit) {
        out.lines.push_back(trimmed(line));
        line.assign(word);
      } else {
        line.append(word);
      }
      word.assign(1, ' ');
      whole.assign(1, ' ');
    } else {
      whole += c;
      if (word.size() <= limit) word += c;
    }
  }
  end_word();
  if (line.size() + word.size() > limit) {
    out.lines.push_back(trimmed(line));
    out.lines.push_back(trimmed(word));
  } else {
    line.append(word);
    out.lines.push_back(trimmed(line));
  }
  return out;
}

}  // namespace

int description_width() {
  return read_break_point(kDescriptionBreak);
}

std::vector<std::string> wrap_description(const std::string& box_text, int width) {
  return wrap(box_text, width).lines;
}

std::vector<std::string> description_cut_words(const std::string& box_text, int width) {
  return wrap(box_text, width).cut;
}

}  // namespace quorva
