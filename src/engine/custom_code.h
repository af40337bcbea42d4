#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/program_definition.h"

namespace quorva {

constexpr const char* kCustomUsedFile = "temp/customused.dat";
constexpr int kCustomCodeSlots = 30;

/// The custom code chosen for one generation: the sections of every chosen file, by their
/// section line ("[COBOL CUSTOM name]"), in slot order.
class CustomCode {
 public:
  /// Reads the chosen files of temp/customused.dat; a missing one is noted in warning.log.
  static CustomCode load();

  /// Adds the sections of one custom-code file's text.
  void add_file_text(const std::string& text);

  /// For a template line whose text from column 7, trimmed, is a section line: the lines
  /// to insert in its place for this program (possibly none). nullopt for other lines.
  std::optional<const std::vector<std::string>*> tag_lines(std::string_view line,
                                                           const ProgramDefinition& def) const;

 private:
  std::map<std::string, std::vector<std::string>> sections_;
};

/// True when `text` (already trimmed) is a section line of any language.
bool is_section_line(const std::string& text);

}  // namespace quorva
