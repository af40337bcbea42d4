#include "dclgen/picture_compression.h"

#include <cctype>

namespace quorva {
namespace {

void append_two_digits(std::string& out, std::size_t count) {
  if (count < 10) out.push_back('0');
  out.append(std::to_string(count));
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
      out.push_back(symbol);
      out.push_back('(');
      append_two_digits(out, end - i);
      out.push_back(')');
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
  std::string out;
  bool changed = false;
  for (std::size_t i = 0; i < picture.size(); ++i) {
    out.push_back(picture[i]);
    if (picture[i] == '(' && i + 2 < picture.size() && picture[i + 2] == ')' &&
        std::isdigit(static_cast<unsigned char>(picture[i + 1]))) {
      out.push_back('0');
      changed = true;
    }
  }
  if (changed) picture.swap(out);
  return changed;
}

}  // namespace

bool normalise_picture(std::string& picture) {
  bool collapsed = collapse_runs(picture, '9');
  collapsed = collapse_runs(picture, 'X') || collapsed;
  bool changed = collapsed || zero_fill_counts(picture);
  std::size_t alpha = picture.find("X(");
  if (alpha != std::string::npos) {
    std::string out;
    out.append(picture, 0, alpha);
    out.push_back(' ');
    out.append(picture, alpha, std::string::npos);
    picture.swap(out);
    changed = true;
  }
  return changed;
}

}  // namespace quorva
