#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "store/config_file.h"

namespace quorva {

/// The client version this system is; templates name the one they need under `client`.
constexpr const char* kClientVersion = "1.33";

/// The declared code-line count (`numlines`), -1 when missing (the person is told).
int read_declared_count(const std::string& template_name);

/// The code lines of a template, in file order, as read: views into the template's text,
/// which is kept whole, so loading costs one read and no copy per line.
class LoadedTemplate {
 public:
  LoadedTemplate() = default;
  /// Takes the text; add() then names its lines.
  explicit LoadedTemplate(std::string text);
  /// Shares a file's bytes as read.
  LoadedTemplate(std::shared_ptr<const char[]> bytes, std::size_t size)
      : bytes_(std::move(bytes)), text_(bytes_.get(), size) {}

  std::string_view text() const { return text_; }
  void add(std::string_view line) { lines_.push_back(line); }
  /// Room for `count` lines, backed at once.
  void reserve(std::size_t count);

  std::size_t size() const { return lines_.size(); }
  bool empty() const { return lines_.empty(); }
  std::string_view operator[](std::size_t index) const { return lines_[index]; }
  auto begin() const { return lines_.begin(); }
  auto end() const { return lines_.end(); }

  friend bool operator==(const LoadedTemplate& a, const std::vector<std::string>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
  }

 private:
  // Shared so that copies keep their views valid (a short string moves its bytes).
  std::shared_ptr<const char[]> bytes_;
  std::string_view text_;
  std::vector<std::string_view> lines_;
};

/// Loads the code lines after the marker, checking the client version and the declared
/// count (rewriting `numlines` when it differs). `step` is called once per line up to the
/// declared count; `version`, when given, receives the template's `quormem`. False when
/// the template cannot be opened.
bool preallocate(const std::string& template_name, int declared, LoadedTemplate& lines,
                 const std::function<void(int)>& step, std::string* version = nullptr);

/// Splits template text the way the loader reads it (for tests and the fuzz target).
LoadedTemplate code_lines_of(const std::string& text);

}  // namespace quorva
