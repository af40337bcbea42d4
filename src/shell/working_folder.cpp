#include "shell/working_folder.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string_view>
#include <system_error>

#include "shell/skeleton.h"
#include "tagfile/tag_file.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace fs = std::filesystem;

namespace quorva {
namespace {

constexpr const char* kUserTags[] = {"ipaddress", "tsolibrary",  "sourcedirectory", "pswtso",
                                     "tsouser",   "nomecognome", "societa"};

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

bool write_bytes(const fs::path& path, const unsigned char* data, std::size_t size) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  out.close();
  return static_cast<bool>(out);
}

std::string source_folder_text(const fs::path& programs) {
  std::string text = programs.generic_string();
  if (text.empty() || text.back() != '/') text += '/';
  return text;
}

// User.dat holds a password: readable by its owner only.
void restrict_to_owner(const fs::path& path) {
#ifndef _WIN32
  ::chmod(path.c_str(), 0600);
#else
  (void)path;
#endif
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

FolderResult init_working_folder(const fs::path& folder, bool force) {
  std::error_code ec;
  if (is_working_folder(folder) && !force)
    return {false,
            "A working folder already exists in " + folder.string() +
                "\nUse --force to restore the shipped Resource files; your program definition, "
                "members and user data are kept."};
  fs::create_directories(folder, ec);
  if (ec) return {false, "I cannot create the folder " + folder.string() + ": " + ec.message()};
  for (const SkeletonEntry& entry : skeleton_entries()) {
    fs::path target = folder / entry.path;
    if (entry.directory) {
      fs::create_directories(target, ec);
    } else {
      // The sample definition and members are only a start: once there, they are the user's.
      const bool users_own = std::string_view(entry.path).substr(0, 9) != "Resource/";
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
    std::string text;
    for (const char* tag : kUserTags)
      text +=
          std::string(tag) + "=" +
          (std::string(tag) == "sourcedirectory" ? source_folder_text(programs.lexically_normal())
                                                 : "") +
          "\n";
    if (!write_bytes(user, reinterpret_cast<const unsigned char*>(text.data()), text.size()))
      return {false, "I cannot write the file " + user};
    restrict_to_owner(user);
  }
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
