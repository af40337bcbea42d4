#include "engine/conversion_list.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <ctime>
#include <iterator>
#include <optional>

#include "store/program_jcl.h"
#include "store/tag_text.h"
#include "store/user_file.h"
#include "tagfile/latin1.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

void add_user_value(ConversionList& list, const char* key, const std::string& value) {
  if (!value.empty()) list.push_back({key, value});
}

}  // namespace

bool Leggi_all_K2V_tag(const std::string& file, bool report, ConversionList& list) {
  if (file.empty()) {
    Scrivi_log("Errore nella richiesta di lettura Leggi_all_K2V_tag.", kNoNumber, LogKind::kError);
    Mostra_popup("nomefile:");
    return false;
  }
  std::optional<std::vector<KeyValue>> pairs = read_key2value_pairs(file);
  if (!pairs) {
    if (report)
      Mostra_popup("WARNING, I cannot open the file:" + file,
                   "ATTENZIONE, impossibile aprire il file:" + file);
    return false;
  }
  for (KeyValue& pair : *pairs) list.push_back({std::move(pair.key), std::move(pair.value)});
  return true;
}

bool Leggi_all_K2Value_coll(bool report, int slots, ConversionList& list) {
  bool ok = true;
  // The choices read once, not once per slot.
  const TagText chosen(read_whole_file(kCustomK2VFile).value_or(""));
  for (int n = 1; n <= slots; ++n) {
    std::optional<std::string> file = chosen.value(collection_tag(n));
    if (!file) continue;
    if (!Esiste_file(*file)) {
      if (report)
        Mostra_popup("The Collection of Key to Value file has not been found!!" + *file,
                     "Il file Collezione Chiave a Valore non e' stato trovato!!!!" + *file);
      else
        Scrivi_log("Errore file non trovato in Leggi_all_K2Value_coll.", kNoNumber,
                   LogKind::kError);
      continue;
    }
    if (!Leggi_all_K2V_tag(*file, report, list)) {
      ok = false;
      break;
    }
  }
  std::erase_if(list, [](const ConversionPair& pair) { return pair.key == "desc_key2value"; });
  return ok;
}

std::string header_date() {
  std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  static const char* const kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  // Month names fixed in English, as the C locale prints them, whatever the desktop locale.
  char text[32];
  std::snprintf(text, sizeof text, "%02d/%s/%04d", local.tm_mday, kMonths[local.tm_mon],
                local.tm_year + 1900);
  return text;
}

std::string access_list_value(const ProgramDefinition& def) {
  std::string text = "[";
  if (def.select > 0) text += "SEL/";
  if (def.fetch > 0) text += "FET/";
  if (def.update > 0) text += "UPD/";
  if (def.insert > 0) text += "INS/";
  if (def.remove > 0) text += "DEL/";
  if (def.commit) text += "COMM/";
  if (def.rollback) text += "ROLL/";
  text.back() = ']';
  return text;
}

void build_conversion_list(const ProgramDefinition& def, const HeaderValues& header,
                           ConversionList& list) {
  list.clear();
  if (!header.template_version.empty()) list.push_back({"<VRS>", header.template_version});
  list.push_back({"<++++++>", def.name});
  for (std::size_t i = 0; i < def.description.size(); ++i) {
    list.push_back(
        {"<DESCRIZIONE-PROGRAMMA" + std::to_string(i + 1) + ">", latin1_upper(def.description[i])});
  }
  list.push_back({"//.///.////", header.date});
  const UserData user = read_user_data();
  add_user_value(list, "<----->", user.tsouser);
  add_user_value(list, "<NOME-COGNOME>", user.nomecognome);
  add_user_value(list, "<NOME-SOCIETA>", user.societa);
  list.push_back({"<SEL/FET/DEL/INS/UPD/ROL/COM>", access_list_value(def)});
  // The library the program is sent to, where a compile-and-go step reads it, and the
  // copybook of a routine's linkage area, which its callers copy as it is.
  add_user_value(list, "<TSO-LIBRARY>", user.tsolibrary);
  if (!def.name.empty()) list.push_back({"<LINK-COPY>", linkage_member(def.name)});
  Leggi_all_K2V_tag(kKey2ValueFile, true, list);
  Leggi_all_K2Value_coll(true, kCollectionSlots, list);
}

namespace {

// A value with an apostrophe goes into a literal with the apostrophe doubled, as COBOL,
// Easytrieve and JCL write one there; elsewhere (comments) as it is. Empty when the value
// holds none.
std::string in_literal_of(std::string_view value) {
  if (value.find('\'') == std::string_view::npos) return {};
  std::string doubled;
  for (char c : value) {
    doubled += c;
    if (c == '\'') doubled += c;
  }
  return doubled;
}

ColumnReplacement replace_pair(std::string& line, std::size_t first, const ConversionPair& pair,
                               const std::string& in_literal) {
  return replace_in_columns(line, first, pair.key, pair.value,
                            in_literal.empty() ? std::string_view(pair.value) : in_literal);
}

ColumnReplacement replace_pair(std::string& line, std::size_t first, const ConversionPair& pair) {
  return replace_pair(line, first, pair, in_literal_of(pair.value));
}

}  // namespace

void apply_conversions(const ConversionList& list, std::string& line) {
  if (line.find('#') != std::string::npos) Sostituisci_in_colonna(line, "#", "1");
  for (const ConversionPair& pair : list)
    if (!pair.key.empty())
      if (const std::size_t first = line.find(pair.key); first != std::string::npos)
        replace_pair(line, first, pair);
}

namespace {

std::vector<std::string_view> keys_of(const ConversionList& list) {
  std::vector<std::string_view> keys;
  keys.reserve(list.size());
  for (const ConversionPair& pair : list) keys.emplace_back(pair.key);
  return keys;
}

std::vector<std::string> in_literals_of(const ConversionList& list) {
  std::vector<std::string> values;
  values.reserve(list.size());
  for (const ConversionPair& pair : list) values.push_back(in_literal_of(pair.value));
  return values;
}

bool any_key_holds_blank(const ConversionList& list) {
  for (const ConversionPair& pair : list)
    if (pair.key.find(' ') != std::string::npos) return true;
  return false;
}

}  // namespace

ConversionFilter::ConversionFilter(const ConversionList& list)
    : list_(list),
      built_for_(list.size()),
      matcher_(keys_of(list)),
      keys_hold_blank_(any_key_holds_blank(list)),
      in_literal_(in_literals_of(list)),
      starts_(list.size()) {}

void ConversionFilter::apply(std::string& line) const {
  if (built_for_ != list_.size()) return apply_conversions(list_, line);  // list changed
  if (line.find('#') != std::string::npos) Sostituisci_in_colonna(line, "#", "1");
  matcher_.find(line, -1, found_, starts_);
  bool changed = false;  // the starts found hold until the line changes
  // Pairs in list order, as the plain pass applies them; only those whose key is in the
  // line can change it. A replacement leaves the line before its first occurrence as it
  // was, so only what follows is looked at again for keys it may have brought in; a key
  // found before and since replaced away is passed over.
  std::size_t next = 0;
  while (next < found_.size()) {
    const std::uint32_t index = found_[next++];
    const ConversionPair& pair = list_[index];
    const std::size_t first = changed ? line.find(pair.key) : starts_[index];
    if (first == std::string::npos || (pair.key == pair.value && in_literal_[index].empty()))
      continue;
    const ColumnReplacement done = replace_pair(line, first, pair, in_literal_[index]);
    changed = true;
    const std::size_t from = first + 1 > matcher_.longest() ? first + 1 - matcher_.longest() : 0;
    // One occurrence whose value, with what precedes it, holds no byte a key starts with
    // brings in no key: the rest of the line only gained or lost blanks between words,
    // which no key without a blank can notice.
    if (done.count == 1 && !keys_hold_blank_ && !matcher_.may_start(line, from, done.first_end))
      continue;
    matcher_.find(std::string_view(line).substr(from), static_cast<long>(index), fresh_);
    merged_.clear();
    std::set_union(found_.begin() + static_cast<std::ptrdiff_t>(next), found_.end(), fresh_.begin(),
                   fresh_.end(), std::back_inserter(merged_));
    found_.swap(merged_);
    next = 0;
  }
}

}  // namespace quorva
