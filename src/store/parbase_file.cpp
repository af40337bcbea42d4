#include "store/parbase_file.h"

#include <algorithm>

#include "store/program_name.h"
#include "store/tag_text.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

constexpr const char* kNameTag = "nomeprogr";
constexpr const char* kLanguageTag = "linguaggio";
constexpr const char* kKindTag = "tipoprogr";
constexpr const char* kDescriptionTag = "descprogr";

constexpr const char* kSwitchTags[kSwitchCount] = {"costanti", "thru", "buffering", "stream",
                                                   "commenti", "jcl",  "rollback",  "commit"};
constexpr const char* kCountTags[kCountCount] = {"filein", "fileout", "report", "select",   "fetch",
                                                 "update", "insert",  "delete", "parametri"};

std::optional<ProgramKind> kind_of(const std::optional<std::string>& word) {
  if (!word) return std::nullopt;
  if (*word == "match") return ProgramKind::kMatch;
  if (*word == "routine") return ProgramKind::kRoutine;
  return ProgramKind::kBatch;
}

// A count as every reader takes it: within 0-9, kNoCount when missing, and a missing
// parameter-card count 0 (files older than the cards have none).
int count_in(const TagText& tags, Count c) {
  if (!tags.value(count_tag(c))) return c == Count::kParameters ? 0 : kNoCount;
  return std::clamp(tags.integer(count_tag(c)), 0, kMaxCount);
}

void missing_count(const std::string& file, Count c) {
  const std::string tag = count_tag(c);
  Mostra_popup("WARNING, the Tag (" + tag + ") cannot be found inside the file:" + file,
               "ATTENZIONE, Tag (" + tag + ") non trovato nel file indicato :" + file);
}

}  // namespace

const char* switch_tag(Switch s) {
  return kSwitchTags[static_cast<int>(s)];
}

const char* count_tag(Count c) {
  return kCountTags[static_cast<int>(c)];
}

const char* language_word(ProgramLanguage language) {
  switch (language) {
    case ProgramLanguage::kCobol:
      return "cobol";
    case ProgramLanguage::kEasytrieve:
      return "easytrieve";
    case ProgramLanguage::kNone:
      break;
  }
  return "";
}

const char* kind_word(ProgramKind kind) {
  switch (kind) {
    case ProgramKind::kRoutine:
      return "routine";
    case ProgramKind::kMatch:
      return "match";
    case ProgramKind::kBatch:
      break;
  }
  return "batch";
}

ProgramLanguage language_of(const std::optional<std::string>& word) {
  if (!word) return ProgramLanguage::kNone;
  return *word == "cobol" ? ProgramLanguage::kCobol : ProgramLanguage::kEasytrieve;
}

std::optional<ProgramRecord> read_parbase(bool popup, const std::string& file) {
  std::optional<std::string> text = read_whole_file(file);
  if (!text) return std::nullopt;
  const TagText tags(*text);
  ProgramRecord record;
  record.name = tags.value(kNameTag).value_or("");
  if (!record.name.empty() && !is_member_name(record.name)) {
    Mostra_popup(member_name_message(record.name));
    record.name.clear();
  }
  record.language = language_of(tags.value(kLanguageTag));
  record.kind = kind_of(tags.value(kKindTag));
  for (int s = 0; s < kSwitchCount; ++s) record.switches[s] = tags.on(kSwitchTags[s]);
  for (int c = 0; c < kCountCount; ++c) {
    const Count count = static_cast<Count>(c);
    record.counts[c] = count_in(tags, count);
    if (popup && record.counts[c] == kNoCount) missing_count(file, count);
  }
  for (int n = 0; n <= kLastDescriptionLine; ++n) {
    std::optional<std::string> line = tags.value(kDescriptionTag + std::to_string(n));
    if (!line) break;
    record.description.push_back(std::move(*line));
  }
  return record;
}

std::string parbase_text(const ProgramRecord& record) {
  std::string text;
  auto put_switch = [&](Switch s) {
    append_tag_line(text, switch_tag(s), record.switch_on(s) ? "on" : "off");
  };
  auto put_count = [&](Count c) {
    append_tag_line(text, count_tag(c), std::to_string(std::max(record.count(c), 0)));
  };
  append_tag_line(text, kNameTag, record.name);
  if (record.language != ProgramLanguage::kNone)
    append_tag_line(text, kLanguageTag, language_word(record.language));
  if (record.kind) append_tag_line(text, kKindTag, kind_word(*record.kind));
  for (Switch s : {Switch::kConstants, Switch::kThru, Switch::kBuffering, Switch::kStream,
                   Switch::kComments, Switch::kJcl})
    put_switch(s);
  for (Count c : {Count::kFilein, Count::kFileout, Count::kReport, Count::kSelect, Count::kFetch,
                  Count::kUpdate, Count::kInsert, Count::kDelete})
    put_count(c);
  put_switch(Switch::kRollback);
  put_switch(Switch::kCommit);
  put_count(Count::kParameters);
  if (record.description.empty())
    append_tag_line(text, kDescriptionTag + std::string("0"), kEmptyDescription);
  for (std::size_t n = 0; n < record.description.size(); ++n)
    append_tag_line(text, kDescriptionTag + std::to_string(n), record.description[n]);
  return text;
}

Status write_parbase(const ProgramRecord& record, const std::string& file) {
  if (!record.name.empty() && !is_member_name(record.name)) {
    const std::string message = member_name_message(record.name);
    Mostra_popup(message);
    return Status::failure(message);
  }
  if (!valid_tag_value(true, kNameTag, record.name))
    return Status::failure(line_break_message(kNameTag));
  for (std::size_t n = 0; n < record.description.size(); ++n) {
    const std::string tag = kDescriptionTag + std::to_string(n);
    if (!valid_tag_value(true, tag, record.description[n]))
      return Status::failure(line_break_message(tag));
  }
  return Scrivi_file(file, true, parbase_text(record));
}

ProgramLanguage read_program_language() {
  std::optional<std::string> text = read_whole_file(kParbaseFile);
  if (!text) return ProgramLanguage::kNone;
  return language_of(TagText(*text).value(kLanguageTag));
}

int read_program_count(Count c) {
  std::optional<std::string> text = read_whole_file(kParbaseFile);
  if (!text) return kNoCount;
  return count_in(TagText(*text), c);
}

}  // namespace quorva
