#include "store/user_file.h"

#include "store/tag_text.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

// The fields in the order of kUserTags.
constexpr std::string UserData::*kFields[kUserTagCount] = {
    &UserData::ipaddress, &UserData::tsolibrary,  &UserData::sourcedirectory, &UserData::pswtso,
    &UserData::tsouser,   &UserData::nomecognome, &UserData::societa};

}  // namespace

UserData read_user_data() {
  UserData data;
  std::optional<std::string> text = read_whole_file(kUserDataFile);
  if (!text) return data;
  const TagText tags(*text);
  for (int i = 0; i < kUserTagCount; ++i) data.*kFields[i] = tags.value(kUserTags[i]).value_or("");
  return data;
}

std::optional<std::string> read_source_directory(bool popup) {
  return Leggi_tag(kUserDataFile, popup, "sourcedirectory");
}

std::string source_folder_file(const std::string& name) {
  return read_source_directory(false).value_or("") + name;
}

std::string user_data_text(const UserData& data) {
  std::string text;
  for (int i = 0; i < kUserTagCount; ++i) append_tag_line(text, kUserTags[i], data.*kFields[i]);
  return text;
}

Status write_user_data(const UserData& data) {
  for (int i = 0; i < kUserTagCount; ++i)
    if (!valid_tag_value(true, kUserTags[i], data.*kFields[i]))
      return Status::failure(line_break_message(kUserTags[i]));
  Status written;
  if (!Esiste_file(kUserDataFile)) written = Crea_file(kUserDataFile, false);
  if (written && !restrict_to_owner(kUserDataFile))
    written =
        Status::failure(bilingual("I cannot make the file readable by its owner only: ",
                                  "Impossibile rendere il file leggibile solo dal proprietario: ") +
                        kUserDataFile);
  if (written) written = Scrivi_file(kUserDataFile, false, user_data_text(data));
  return written;
}

}  // namespace quorva
