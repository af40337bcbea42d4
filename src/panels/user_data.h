#pragma once

#include <cstddef>
#include <string>

#include "port/status.h"
#include "store/user_file.h"

namespace quorva {

constexpr std::size_t kSourceDirectoryLimit = 230;

/// How the source directory check ended.
enum class FolderCheck {
  kExists,      ///< the folder is there
  kCreated,     ///< missing, created after a Yes
  kNotCreated,  ///< missing, the make-directory failed (parent missing)
  kDeclined,    ///< missing, the person answered No
  kTooLong,     ///< over 230 characters
  kInvalid,     ///< control characters: the field was emptied
  kBadForm,     ///< not in the platform's folder form
  kEmpty,       ///< nothing typed: left to the required-fields summary
};

/// True when no character is a NUL or has a code from 1 to 31.
bool valid_characters(const std::string& text);

/// The "User Data and FTP Settings" dialog (WindowFtpData).
class UserDataPanel {
 public:
  /// Fills each field from its tag in Resource/User.dat.
  static UserDataPanel open();

  const UserData& data() const { return data_; }

  /// Each setter applies the field's length rule (cut and reported) and character check
  /// (emptied and reported); false when the text was changed or emptied. The password is
  /// never repeated in a message.
  bool set_tso_user(const std::string& text);
  bool set_password(const std::string& text);
  bool set_name(const std::string& text);
  bool set_company(const std::string& text);
  bool set_library(const std::string& text);
  /// The host address and the folder are checked on save; a line break or a NUL empties
  /// them at once.
  bool set_ip_address(const std::string& text);
  bool set_source_directory(const std::string& text);

  /// The source directory check: length, characters, final separator, form, existence (with
  /// the create-folder question and a single make-directory). The folder is looked at where
  /// it is: the current directory never changes.
  FolderCheck check_source_directory();

  /// "SAVE CONFIGURATION": the check, then the summary when a field is empty, else the file
  /// is rebuilt in one write (owner-only on Linux and macOS). A failure, with the message
  /// shown, when nothing was written.
  Status save();
  /// The summary of the fields, the password hidden.
  std::string summary() const;

 private:
  UserData data_;
};

/// The platform's folder form: on Windows "X:\...\", elsewhere "/.../". Adds the missing
/// final separator; false when the form is wrong.
bool normalize_source_folder(std::string& folder);
/// The example shown with a wrong form.
const char* source_folder_example();

}  // namespace quorva
