#pragma once

#include <optional>
#include <string>

#include "port/status.h"

namespace quorva {

// The owner of Resource/User.dat: the user's identity, host account and source folder. It
// holds the host password: the file is readable by its owner only, and the password never
// reaches a log, a message or a terminal.

constexpr const char* kUserDataFile = "Resource/User.dat";
constexpr int kUserTagCount = 7;
/// The tags, in the order they are written.
constexpr const char* kUserTags[kUserTagCount] = {
    "ipaddress", "tsolibrary", "sourcedirectory", "pswtso", "tsouser", "nomecognome", "societa"};
/// The password's tag.
constexpr const char* kPasswordTag = "pswtso";

/// The seven values, in the order they are written.
struct UserData {
  std::string ipaddress;
  std::string tsolibrary;
  std::string sourcedirectory;
  std::string pswtso;
  std::string tsouser;
  std::string nomecognome;
  std::string societa;
};

/// Reads the file once; a missing tag or file gives an empty value.
UserData read_user_data();
/// `sourcedirectory`, the folder of the generated programs and the DCLGEN members;
/// nullopt when missing (said with `popup`).
std::optional<std::string> read_source_directory(bool popup);
/// A file of the source folder: the folder + `name` (just `name` without a folder).
std::string source_folder_file(const std::string& name);

/// The file's text: each tag, "=", its value, "\n", in the fixed order.
std::string user_data_text(const UserData& data);
/// Replaces the file in one write, made owner-only before the password reaches it. Refused,
/// writing nothing, when a value holds a line break or a NUL. A failure logs the file and
/// the tag, never a value.
Status write_user_data(const UserData& data);

/// Makes the file readable and writable by its owner only (nothing to do on Windows, where
/// the folder's own permissions apply). False when that could not be done.
bool restrict_to_owner(const std::string& file);

}  // namespace quorva
