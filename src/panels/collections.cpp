#include "panels/collections.h"

#include "panels/collection_rules.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

#include "port/user_interface.h"
#include "store/tag_edit.h"
#include "store/user_file.h"
#include "tagfile/disk.h"
#include "tagfile/folder_lock.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

bool same_ignoring_case(const std::string& a, const std::string& b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](unsigned char x, unsigned char y) {
           return std::tolower(x) == std::tolower(y);
         });
}

void no_such(const std::string& name) {
  Mostra_popup(bilingual("There is no collection named ", "Non esiste una collezione di nome ") +
               name);
}

Status refused(const std::string& message) {
  Mostra_popup(message);
  return Status::failure(message);
}

}  // namespace

const char* collection_kind_word(CollectionKind kind) {
  static const char* const kWords[] = {"snippets", "flags", "k2v"};
  return kWords[static_cast<int>(kind)];
}

std::string collection_kind_title(CollectionKind kind) {
  switch (kind) {
    case CollectionKind::kSnippets:
      return bilingual("Custom Code", "Codice Custom");
    case CollectionKind::kFlags:
      return bilingual("Custom Flags", "Flag Custom");
    case CollectionKind::kKeyToValue:
      break;
  }
  return bilingual("Key to Value", "Chiave a Valore");
}

Collections::Collections(CollectionKind kind, std::string folder)
    : kind_(kind), folder_(std::move(folder)) {}

Result<Collections> Collections::open(CollectionKind kind) {
  std::optional<std::string> folder = read_source_directory(false);
  if (!folder)
    return refused(
        bilingual("The source folder is not set: give it in the User Data first (sourcedirectory).",
                  "La cartella dei sorgenti non e' impostata: indicarla prima nei Dati Utente "
                  "(sourcedirectory)."));
  Collections collections(kind, *folder);
  for (const std::string& name : list_collections(kind, *folder)) {
    collections.entries_.push_back({name, name, std::nullopt, false});
    collections.originals_.push_back(name);
  }
  collections.slots_ = read_chosen_slots(kind);
  if (kind == CollectionKind::kKeyToValue) collections.off_ = key_value_switch_character();
  return collections;
}

std::vector<std::string> Collections::names() const {
  std::vector<std::string> names;
  for (const Entry& entry : entries_) names.push_back(entry.name);
  std::sort(names.begin(), names.end());
  return names;
}

Collections::Entry* Collections::find(const std::string& name) {
  for (Entry& entry : entries_)
    if (entry.name == name) return &entry;
  return nullptr;
}

const Collections::Entry* Collections::find(const std::string& name) const {
  return const_cast<Collections*>(this)->find(name);
}

std::string Collections::path_of(const std::string& name) const {
  return folder_ + collection_file_name(kind_, name);
}

bool Collections::name_allowed(const std::string& name) const {
  std::string problem = collection_name_problem(name);
  for (const Entry& entry : entries_)
    if (problem.empty() && same_ignoring_case(entry.name, name))
      problem = bilingual("A collection with this name already exists: ",
                          "Esiste gia' una collezione con questo nome: ") +
                entry.name;
  if (problem.empty()) return true;
  Mostra_popup(problem);
  return false;
}

bool Collections::create(const std::string& name) {
  if (!name_allowed(name)) return false;
  entries_.push_back({name, "", CollectionContent{}, true});
  return true;
}

bool Collections::copy(const std::string& from, const std::string& to) {
  if (!content(from) || !name_allowed(to)) return false;
  const Entry& source = *find(from);
  entries_.push_back({to, source.source, source.content, source.edited || source.source.empty()});
  return true;
}

bool Collections::rename(const std::string& from, const std::string& to) {
  if (!content(from)) return false;
  if (from == to) return true;
  if (!name_allowed(to)) return false;
  const int slot = slot_of(from);
  find(from)->name = to;
  if (slot) slots_[slot - 1] = path_of(to);
  return true;
}

bool Collections::remove(const std::string& name) {
  if (!find(name)) {
    no_such(name);
    return false;
  }
  const int slot = slot_of(name);
  const std::string title = bilingual("Delete the collection", "Cancellazione della collezione");
  const std::string question =
      slot ? bilingual("The collection " + name + " is in use (slot " + std::to_string(slot) +
                           "): delete it and free its slot?",
                       "La collezione " + name + " e' in uso (posizione " + std::to_string(slot) +
                           "): cancellarla e liberare la posizione?")
           : bilingual("Delete the collection " + name + "?",
                       "Cancellare la collezione " + name + "?");
  if (!ui().ask_yes_no(title, question)) return false;
  if (slot) slots_[slot - 1].clear();
  std::erase_if(entries_, [&name](const Entry& entry) { return entry.name == name; });
  return true;
}

std::string Collections::slot_label(int slot) const {
  const std::string& file = slots_[slot - 1];
  if (file.starts_with(folder_))
    if (std::optional<std::string> name = collection_name(kind_, file.substr(folder_.size())))
      return *name;
  return file;
}

int Collections::slot_of(const std::string& name) const {
  const std::string path = path_of(name);
  for (std::size_t n = 0; n < slots_.size(); ++n)
    if (slots_[n] == path) return static_cast<int>(n) + 1;
  return 0;
}

bool Collections::use(const std::string& name) {
  if (!find(name)) {
    no_such(name);
    return false;
  }
  if (const int slot = slot_of(name)) {
    Mostra_popup(bilingual("The collection " + name + " is already in use (slot ",
                           "La collezione " + name + " e' gia' in uso (posizione ") +
                 std::to_string(slot) + ").");
    return false;
  }
  for (std::string& slot : slots_) {
    if (!slot.empty()) continue;
    slot = path_of(name);
    return true;
  }
  const std::string limit = std::to_string(slots_.size());
  Mostra_popup(bilingual("All the " + limit + " places of " + collection_kind_title(kind_) +
                             " collections are in use: free one before choosing " + name + ".",
                         "Tutte le " + limit + " posizioni delle collezioni " +
                             collection_kind_title(kind_) +
                             " sono in uso: liberarne una prima di scegliere " + name + "."));
  return false;
}

bool Collections::unuse(const std::string& name) {
  const int slot = slot_of(name);
  if (!slot) {
    Mostra_popup(bilingual("The collection " + name + " is not in use.",
                           "La collezione " + name + " non e' in uso."));
    return false;
  }
  free_slot(slot);
  return true;
}

void Collections::free_slot(int slot) {
  slots_[slot - 1].clear();
}

std::vector<int> Collections::missing_chosen() const {
  std::vector<int> missing;
  for (std::size_t n = 0; n < slots_.size(); ++n) {
    if (slots_[n].empty()) continue;
    const bool pending = std::any_of(entries_.begin(), entries_.end(), [&](const Entry& entry) {
      return path_of(entry.name) == slots_[n];
    });
    if (!pending && !disk().exists(slots_[n])) missing.push_back(static_cast<int>(n) + 1);
  }
  return missing;
}

std::string Collections::missing_message() const {
  std::string text;
  for (int slot : missing_chosen()) text += "\n" + std::to_string(slot) + ": " + slots_[slot - 1];
  if (text.empty()) return text;
  return bilingual("These collections in use have not been found:",
                   "Queste collezioni in uso non sono state trovate:") +
         text;
}

std::optional<std::string> Collections::file_text(const Entry& entry) const {
  if (entry.source.empty()) return std::string();
  FileRead read = disk().read(folder_ + collection_file_name(kind_, entry.source));
  if (read.status != FileRead::kRead) return std::nullopt;
  return std::move(read.text);
}

std::optional<CollectionContent> Collections::content(const std::string& name) {
  Entry* entry = find(name);
  if (!entry) {
    no_such(name);
    return std::nullopt;
  }
  if (entry->content) return entry->content;
  std::optional<std::string> text = file_text(*entry);
  if (!text) {
    Mostra_popup(
        bilingual("WARNING, I cannot open the file:", "ATTENZIONE, impossibile aprire il file:") +
        path_of(entry->source));
    return std::nullopt;
  }
  CollectionContent content;
  if (kind_ == CollectionKind::kFlags)
    parse_flag_text(*text, content.description, content.flags);
  else if (kind_ == CollectionKind::kKeyToValue)
    parse_key_value_text(*text, off_, content.description, content.pairs);
  else
    content.text = *text;
  entry->content = content;
  return content;
}

bool Collections::set_content(const std::string& name, CollectionContent content) {
  Entry* entry = find(name);
  if (!entry) {
    no_such(name);
    return false;
  }
  std::string problem;
  if (has_line_break(content.description))
    problem = line_break_message(collection_format(kind_).description
                                     ? collection_format(kind_).description
                                     : "description");
  for (std::size_t i = 0; i < content.flags.size() && problem.empty(); ++i) {
    problem = collection_flag_problem(content.flags[i]);
    for (std::size_t j = 0; j < i && problem.empty(); ++j)
      if (content.flags[j].code == content.flags[i].code)
        problem = bilingual("Double directives upon this Flag (discard):",
                            "Doppia direttiva su questo Flag (scarta) :") +
                  content.flags[i].code;
  }
  for (std::size_t i = 0; i < content.pairs.size() && problem.empty(); ++i)
    problem = collection_pair_problem(content.pairs[i], off_);
  if (problem.empty() && kind_ == CollectionKind::kSnippets)
    problem = collection_snippets_problem(content.text);
  if (!problem.empty()) {
    Mostra_popup(problem);
    return false;
  }
  entry->content = std::move(content);
  entry->edited = true;
  return true;
}

std::string Collections::content_text(const CollectionContent& content) const {
  if (kind_ == CollectionKind::kFlags) return flag_text(content.description, content.flags);
  if (kind_ == CollectionKind::kKeyToValue)
    return key_value_text(content.description, content.pairs, off_);
  return content.text;
}

Status Collections::confirm() {
  FolderLock lock;
  if (!lock.held()) return lock.status();
  // Every text first, so a rename onto a name just freed reads the old file before any
  // write replaces it.
  std::vector<std::pair<std::string, std::string>> writes;
  for (const Entry& entry : entries_) {
    if (!entry.edited && entry.source == entry.name) continue;
    std::optional<std::string> text =
        entry.edited && entry.content ? content_text(*entry.content) : file_text(entry);
    if (!text)
      return refused(
          bilingual("WARNING, I cannot open the file:", "ATTENZIONE, impossibile aprire il file:") +
          path_of(entry.source));
    writes.emplace_back(path_of(entry.name), std::move(*text));
  }
  for (const auto& [path, text] : writes)
    if (Status written = Scrivi_file(path, true, text); !written) return written;

  const CollectionFormat& format = collection_format(kind_);
  const std::vector<std::string> before = read_chosen_slots(kind_);
  if (before != slots_) {
    TagEdit chosen(format.chosen_file);
    for (int n = 1; n <= format.slot_count; ++n) {
      if (const std::string other = other_slot_tag(kind_, n); !other.empty()) chosen.remove(other);
      chosen.set_or_remove(chosen_slot_tag(kind_, n), slots_[n - 1]);
    }
    if (Status written = chosen.apply(true); !written) return written;
  }

  for (const std::string& original : originals_) {
    const bool still = std::any_of(entries_.begin(), entries_.end(), [&](const Entry& entry) {
      if (entry.name == original) return true;
      // On a file system blind to case, a new "ABC" is the file "abc" that went away.
      std::error_code error;
      return same_ignoring_case(entry.name, original) &&
             std::filesystem::equivalent(path_of(entry.name), path_of(original), error);
    });
    if (still) continue;
    if (Status removed = remove_if_present(path_of(original), true); !removed) return removed;
  }
  originals_.clear();
  for (Entry& entry : entries_) {
    entry.source = entry.name;
    entry.edited = false;
    originals_.push_back(entry.name);
  }
  return {};
}

}  // namespace quorva
