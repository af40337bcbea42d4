#include "dclgen/picture_compression.h"

#include <cctype>

namespace quorva {
namespace {

std::string two_digits(std::size_t count) {
  std::string digits = std::to_string(count);
  return digits.size() < 2 ? "0" + digits : digits;
}

// Collapses the runs of `symbol` outside parentheses that some other character follows.
// A run that an "(" follows already carries its count, and a run at the very end is kept.
bool collapse_runs(std::string& picture, char symbol) {
  std::string out;
  bool changed = false;
  std::size_t i = 0;
  while (i < picture.size()) {
    if (picture[i] == '(') {
      std::size_t close = picture.find(')', i);
      std::size_t end = close == std::string::npos ? picture.size() : close + 1;
      out.append(picture, i, end - i);
      i = end;
      continue;
    }
    if (picture[i] != symbol) {
      out += picture[i++];
      continue;
    }
    std::size_t end = i;
    while (end < picture.size() && picture[end] == symbol) ++end;
    if (end < picture.size() && picture[end] != '(') {
      out += symbol;
      out += "(" + two_digits(end - i) + ")";
      changed = true;
    } else {
      out.append(picture, i, end - i);
    }
    i = end;
  }
  picture = out;
  return changed;
}

bool zero_fill_counts(std::string& picture) {
  bool changed = false;
  for (std::size_t open = picture.find('('); open != std::string::npos;
       open = picture.find('(', open + 1)) {
    if (open + 2 < picture.size() && picture[open + 2] == ')' &&
        std::isdigit(static_cast<unsigned char>(picture[open + 1]))) {
      picture.insert(open + 1, "0");
      changed = true;
    }
  }
  return changed;
}

}  // namespace

bool normalise_picture(std::string& picture) {
  bool collapsed = collapse_runs(picture, '9');
  collapsed = collapse_runs(picture, 'X') || collapsed;
  bool changed = collapsed || zero_fill_counts(picture);
  std::size_t alpha = picture.find("X(");
  if (alpha != std::string::npos) {
    picture.insert(alpha, " ");
    changed = true;
  }
  return changed;
}

}  // namespace quorva
