#pragma once

#include <functional>
#include <string>
#include <vector>

#include "store/config_file.h"

namespace quorva {

/// The client version this system is; templates name the one they need under `client`.
constexpr const char* kClientVersion = "1.33";

/// The declared code-line count (`numlines`), -1 when missing (the person is told).
int read_declared_count(const std::string& template_name);

/// The code lines of a template, in file order, as read.
using LoadedTemplate = std::vector<std::string>;

/// Loads the code lines after the marker, checking the client version and the declared
/// count (rewriting `numlines` when it differs). `step` is called once per line up to the
/// declared count; `version`, when given, receives the template's `quormem`. False when
/// the template cannot be opened.
bool preallocate(const std::string& template_name, int declared, LoadedTemplate& lines,
                 const std::function<void(int)>& step, std::string* version = nullptr);

/// Splits template text the way the loader reads it (for tests and the fuzz target).
LoadedTemplate code_lines_of(const std::string& text);

}  // namespace quorva
