#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quorva {

/// Where the working folder was named: the folder named by the person must already be
/// installed, the per-user default is created on first start.
enum class HomeSource { kOption, kEnvironment, kDefault };

struct HomeChoice {
  std::filesystem::path folder;
  HomeSource source;
};

/// `--home DIR`, else $QUORVA_HOME, else the per-user default folder of the platform.
HomeChoice choose_home(const std::optional<std::string>& home_option);

/// The per-user default: $XDG_DATA_HOME/quorva or ~/.local/share/quorva (on Windows the
/// Install_Dir value of the registry). Empty when the platform gives none.
std::filesystem::path default_home();

struct FolderResult {
  bool ok = false;
  std::string message;  ///< in the system's words, for the person; when ok, a note or empty
};

/// What `init` writes beside the shipped files.
enum class InitContent {
  kEmpty,   ///< no program defined: a new program starts from nothing
  kSample,  ///< the demo program (temp/) and its two DCLGEN members (programs/)
};

/// Writes the skeleton into `folder`, plus Resource/User.dat whose source folder is the new
/// folder's programs/. Refuses an existing working folder (one with Resource/) unless
/// `force`, which rewrites the shipped files and keeps every other file. The sample's
/// definition is written whole or not at all: a folder that already defines a program
/// keeps it (the note says so); the sample members are added where missing.
FolderResult init_working_folder(const std::filesystem::path& folder, bool force,
                                 InitContent content = InitContent::kEmpty);

/// Checks the chosen folder (creating the per-user default on first start) and changes
/// into it. On failure the message is the installation message, by language.
FolderResult enter_working_folder(const HomeChoice& choice);

/// True when `folder` holds a Resource/ folder.
bool is_working_folder(const std::filesystem::path& folder);

}  // namespace quorva
