#include "engine/custom_code.h"

#include <fstream>
#include <sstream>

#include "store/tag_text.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

const char* const kLanguages[] = {"COBOL", "EASYTRIEVE", "JCL"};

std::string trimmed(std::string text) {
  if (!text.empty() && text.back() == '\r') text.pop_back();
  Trim_spazi(text);
  return text;
}

// "COBOL", "EASYTRIEVE" or "JCL" for a section line, else empty.
std::string section_language(const std::string& text) {
  if (text.size() < 3 || text.front() != '[' || text.back() != ']') return "";
  for (const char* language : kLanguages) {
    const std::string head = std::string("[") + language + " CUSTOM ";
    if (text.size() > head.size() && text.compare(0, head.size(), head) == 0) return language;
  }
  return "";
}

}  // namespace

bool is_section_line(const std::string& text) {
  return !section_language(text).empty();
}

CustomCode CustomCode::load() {
  CustomCode code;
  // The choices read once, not once per slot.
  const TagText chosen(read_whole_file(kCustomUsedFile).value_or(""));
  for (int slot = 1; slot <= kCustomCodeSlots; ++slot) {
    std::optional<std::string> file = chosen.value("Custom_code_" + std::to_string(slot));
    if (!file) continue;
    std::ifstream in(*file, std::ios::binary);
    if (!in) {
      Scrivi_log_dettaglio(
          bilingual("Custom code file not found:", "File di codice custom non trovato:"), *file,
          kNoNumber, kNoNumber, LogKind::kWarning);
      continue;
    }
    std::ostringstream text;
    text << in.rdbuf();
    code.add_file_text(text.str());
  }
  return code;
}

void CustomCode::add_file_text(const std::string& text) {
  std::istringstream in(text);
  std::string line;
  std::vector<std::string>* section = nullptr;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::string head = trimmed(line);
    if (is_section_line(head)) {
      section = &sections_[head];
      continue;
    }
    if (section) section->push_back(line);
  }
}

std::optional<const std::vector<std::string>*> CustomCode::tag_lines(
    std::string_view line, const ProgramDefinition& def) const {
  static const std::vector<std::string> kNone;
  if (line.size() <= 6 || line.find('[', 6) == std::string_view::npos) return std::nullopt;
  const std::string head = trimmed(std::string(line.substr(6)));
  const std::string language = section_language(head);
  if (language.empty()) return std::nullopt;
  const bool wanted = (language == "COBOL" && def.cobol()) ||
                      (language == "EASYTRIEVE" && !def.cobol()) || (language == "JCL" && def.jcl);
  auto found = sections_.find(head);
  if (!wanted || found == sections_.end()) return &kNone;
  return &found->second;
}

}  // namespace quorva
