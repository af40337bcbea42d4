#pragma once

#include <optional>
#include <string>
#include <vector>

#include "port/status.h"
#include "store/collection_file.h"

namespace quorva {

/// What one collection holds: a description and rows (flags, key-to-value pairs), or the
/// text of custom-code sections (snippets).
struct CollectionContent {
  std::string description;
  std::vector<FlagRow> flags;
  std::vector<KeyValueRow> pairs;
  std::string text;
  bool operator==(const CollectionContent&) const = default;
};

/// The manager of one kind of collection: the collections of the source folder, their
/// content and the slots of the chosen ones. Every change is kept in memory until confirm()
/// writes them all, as a dialog's OK does; a refused change shows why and changes nothing.
class Collections {
 public:
  /// The collections of the source folder named in Resource/User.dat; fails (said) when
  /// none is named.
  static Result<Collections> open(CollectionKind kind);

  CollectionKind kind() const { return kind_; }
  /// The source folder, ending in "/".
  const std::string& folder() const { return folder_; }
  /// The collections' names, sorted.
  std::vector<std::string> names() const;
  bool exists(const std::string& name) const { return find(name) != nullptr; }

  bool create(const std::string& name);
  bool copy(const std::string& from, const std::string& to);
  /// A chosen collection keeps its slot under the new name.
  bool rename(const std::string& from, const std::string& to);
  /// Asks first; a chosen collection is deleted only when the person agrees to free its
  /// slot as well. False when refused or declined.
  bool remove(const std::string& name);

  /// The chosen file of each slot (index 0 is slot 1); empty where free.
  const std::vector<std::string>& chosen() const { return slots_; }
  /// A slot's collection name, or its file when that is no collection of this folder.
  std::string slot_label(int slot) const;
  /// The slot (1 on) that holds the collection; 0 when not chosen.
  int slot_of(const std::string& name) const;
  /// Chooses the collection into the first free slot.
  bool use(const std::string& name);
  bool unuse(const std::string& name);
  void free_slot(int slot);
  /// Slots (1 on) whose file is missing.
  std::vector<int> missing_chosen() const;
  /// The message that names them; empty when none is missing.
  std::string missing_message() const;

  /// The content, read from its file the first time; nullopt (said) for an unknown name or
  /// a file that cannot be read.
  std::optional<CollectionContent> content(const std::string& name);
  /// Replaces the content after checking every row; false (said) leaves it as it was.
  bool set_content(const std::string& name, CollectionContent content);

  /// Writes what changed: the collections' files, the file of the chosen ones, and last the
  /// removal of deleted or renamed files, under the working folder's lock.
  Status confirm();

 private:
  struct Entry {
    std::string name;
    std::string source;  ///< the file's name at open; empty for a new collection
    std::optional<CollectionContent> content;
    bool edited = false;
  };

  Collections(CollectionKind kind, std::string folder);
  Entry* find(const std::string& name);
  const Entry* find(const std::string& name) const;
  std::string path_of(const std::string& name) const;
  bool name_allowed(const std::string& name) const;
  std::optional<std::string> file_text(const Entry& entry) const;
  std::string content_text(const CollectionContent& content) const;

  CollectionKind kind_;
  std::string folder_;
  char off_ = 0;
  std::vector<Entry> entries_;
  std::vector<std::string> originals_;
  std::vector<std::string> slots_;
};

/// The kind's name on the command line ("snippets", "flags", "k2v") and in titles.
const char* collection_kind_word(CollectionKind kind);
std::string collection_kind_title(CollectionKind kind);

}  // namespace quorva
