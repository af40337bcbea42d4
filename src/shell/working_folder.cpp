#include "shell/working_folder.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include "shell/skeleton.h"
#include "store/user_file.h"
#include "tagfile/disk.h"
#include "tagfile/tag_file.h"

namespace fs = std::filesystem;

namespace quorva {
namespace {

std::string installation_message(const fs::path& folder) {
  // A broken folder has no configuration of its own: the person's usual one, in the
  // per-user folder, tells the language then.
  std::optional<std::string> language =
      Leggi_tag((folder / "Resource" / "QVconfig.ini").string(), false, "target_language");
  if (!language)
    language = Leggi_tag((default_home() / "Resource" / "QVconfig.ini").string(), false,
                         "target_language");
  if (language && *language != "ENG")
    return "Programma non installato correttamente. Ripetere l'installazione";
  return "The program isn't correctly installed. Repeat the install again";
}

// Replaced whole, so a --force that fails half-way leaves each file old or new.
bool write_bytes(const fs::path& path, const unsigned char* data, std::size_t size) {
  return disk()
      .replace(path.string(), std::string_view(reinterpret_cast<const char*>(data), size))
      .ok();
}

// Skeleton entries under this folder are the demo program, written only when asked for.
constexpr std::string_view kSampleFolder = "sample/";

std::string source_folder_text(const fs::path& programs) {
  std::string text = programs.generic_string();
  if (text.empty() || text.back() != '/') text += '/';
  return text;
}

}  // namespace

HomeChoice choose_home(const std::optional<std::string>& home_option) {
  if (home_option && !home_option->empty()) return {fs::path(*home_option), HomeSource::kOption};
  if (const char* env = std::getenv("QUORVA_HOME"); env && *env)
    return {fs::path(env), HomeSource::kEnvironment};
  return {default_home(), HomeSource::kDefault};
}

bool is_working_folder(const fs::path& folder) {
  std::error_code ec;
  return fs::is_directory(folder / "Resource", ec);
}

FolderResult init_working_folder(const fs::path& folder, bool force, InitContent content) {
  std::error_code ec;
  if (is_working_folder(folder) && !force)
    return {false,
            "A working folder already exists in " + folder.string() +
                "\nUse --force to restore the shipped Resource files; your program definition, "
                "members and user data are kept."};
  fs::create_directories(folder, ec);
  if (ec) return {false, "I cannot create the folder " + folder.string() + ": " + ec.message()};
  const bool sample = content == InitContent::kSample;
  // The sample program is one definition: never laid over the files of another.
  const bool keep_definition = sample && fs::exists(folder / "temp" / "Parbase.dat", ec);
  for (const SkeletonEntry& entry : skeleton_entries()) {
    std::string_view path = entry.path;
    if (path == kSampleFolder.substr(0, kSampleFolder.size() - 1)) continue;
    if (path.substr(0, kSampleFolder.size()) == kSampleFolder) {
      path.remove_prefix(kSampleFolder.size());
      if (!sample || (keep_definition && path.substr(0, 5) == "temp/")) continue;
    }
    fs::path target = folder / path;
    if (entry.directory) {
      fs::create_directories(target, ec);
    } else {
      // The sample definition and members are only a start: once there, they are the user's.
      const bool users_own = path.substr(0, 9) != "Resource/";
      if (users_own && fs::exists(target, ec)) continue;
      fs::create_directories(target.parent_path(), ec);
      if (!ec && !write_bytes(target, entry.data, entry.size))
        return {false, "I cannot write the file " + target.string()};
    }
    if (ec) return {false, "I cannot create the folder " + target.string() + ": " + ec.message()};
  }
  fs::path programs = fs::absolute(folder, ec) / "programs";
  fs::create_directories(programs, ec);
  if (ec) return {false, "I cannot create the folder " + programs.string() + ": " + ec.message()};

  const std::string user = (folder / "Resource" / "User.dat").string();
  if (!Esiste_file(user)) {
    UserData data;
    data.sourcedirectory = source_folder_text(programs.lexically_normal());
    const std::string text = user_data_text(data);
    if (!write_bytes(user, reinterpret_cast<const unsigned char*>(text.data()), text.size()))
      return {false, "I cannot write the file " + user};
    restrict_to_owner(user);
  }
  if (keep_definition)
    return {true, "The program already defined in " + folder.string() +
                      " is kept: the sample is written only where no program is defined (after "
                      "quorva program new, or into a new folder)."};
  return {true, ""};
}

FolderResult enter_working_folder(const HomeChoice& choice) {
  if (choice.folder.empty()) return {false, installation_message(choice.folder)};
  if (choice.source == HomeSource::kDefault && !is_working_folder(choice.folder)) {
    FolderResult made = init_working_folder(choice.folder, false);
    if (!made.ok) return made;
  }
  if (!is_working_folder(choice.folder)) return {false, installation_message(choice.folder)};
  std::error_code ec;
  fs::current_path(choice.folder, ec);
  if (ec) return {false, installation_message(choice.folder)};
  return {true, ""};
}

}  // namespace quorva
