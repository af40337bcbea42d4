#include "host/ftp_script.h"

#include "store/user_file.h"
#include "tagfile/disk.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

std::string quoted(const std::string& file) {
  return "\"" + file + "\"";
}

// Splits a command line into words; a word may be enclosed in "..." (a local file, quotes
// dropped) or in '...' (a host name, quotes kept, as the host wants them).
std::vector<std::string> words_of(std::string_view line, bool& closed) {
  std::vector<std::string> words;
  closed = true;
  std::size_t at = 0;
  while (at < line.size()) {
    if (line[at] == ' ' || line[at] == '\t') {
      ++at;
      continue;
    }
    std::string word;
    if (line[at] == '"') {
      const std::size_t end = line.find('"', at + 1);
      if (end == std::string_view::npos) closed = false;
      word = std::string(line.substr(at + 1, end == std::string_view::npos ? end : end - at - 1));
      at = end == std::string_view::npos ? line.size() : end + 1;
    } else if (line[at] == '\'') {
      const std::size_t end = line.find('\'', at + 1);
      if (end == std::string_view::npos) closed = false;
      word = std::string(line.substr(at, end == std::string_view::npos ? end : end - at + 1));
      at = end == std::string_view::npos ? line.size() : end + 1;
    } else {
      const std::size_t end = line.find_first_of(" \t", at);
      word = std::string(line.substr(at, end == std::string_view::npos ? end : end - at));
      at = end == std::string_view::npos ? line.size() : end;
    }
    words.push_back(std::move(word));
  }
  return words;
}

std::string more_sends(const std::vector<MemberSend>& more) {
  std::string text;
  for (const MemberSend& member : more)
    text += "\n\nrecv " + member.remote + " " + quoted(member.backup) + "\n\nsend " +
            quoted(member.local) + " " + member.remote;
  return text;
}

Status script_error(int line, const std::string& english, const std::string& italian) {
  return Status::failure(bilingual("FTP script, line " + std::to_string(line) + ": " + english,
                                   "Script FTP, riga " + std::to_string(line) + ": " + italian));
}

}  // namespace

std::string remote_member(std::string_view library, std::string_view member) {
  std::string name(library);
  if (!name.empty() && name.front() == '\'') name.erase(0, 1);
  if (!name.empty() && name.back() == '\'') name.pop_back();
  return "'" + name + "(" + std::string(member) + ")'";
}

std::string backup_name(const std::string& folder, const std::string& program) {
  for (int n = 1;; ++n) {
    std::string candidate = folder + program + "_" + std::to_string(n) + ".BKP";
    if (!disk().exists(candidate)) return candidate;
  }
}

std::string send_script(const std::string& host, const std::string& user,
                        const std::string& password, const std::string& remote,
                        const std::string& program_file, const std::string& backup_file,
                        const std::vector<MemberSend>& more) {
  return "open " + host + "\n" + user + "\n" + password + "\n\nrecv " + remote + " " +
         quoted(backup_file) + "\n\nsend " + quoted(program_file) + " " + remote +
         more_sends(more) + "\n\nbye";
}

std::string download_script(const std::string& host, const std::string& user,
                            const std::string& password,
                            const std::vector<std::pair<std::string, std::string>>& members) {
  std::string text = "open " + host + "\n" + user + "\n" + password + "\n";
  for (const auto& [remote, local] : members) text += "\nrecv " + remote + " " + quoted(local);
  return text + "\n\nbye";
}

Result<FtpScript> parse_ftp_script(std::string_view text) {
  std::vector<std::string_view> lines;
  for (std::size_t start = 0; start <= text.size();) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.push_back(line);
    start = end + 1;
  }
  FtpScript script;
  std::size_t at = 0;
  while (at < lines.size() && lines[at].find_first_not_of(" \t") == std::string_view::npos) ++at;
  bool closed = true;
  std::vector<std::string> open =
      at < lines.size() ? words_of(lines[at], closed) : std::vector<std::string>{};
  if (open.size() < 2 || open.size() > 3 || open[0] != "open")
    return script_error(static_cast<int>(at + 1), "\"open\" and the host address expected.",
                        "attesi \"open\" e l'indirizzo dell'host.");
  script.host = open.size() == 3 ? open[1] + " " + open[2] : open[1];
  if (at + 2 >= lines.size())
    return script_error(static_cast<int>(at + 2), "the user and the password are missing.",
                        "mancano l'utente e la password.");
  script.user = std::string(lines[at + 1]);
  script.password = std::string(lines[at + 2]);
  for (std::size_t i = at + 3; i < lines.size(); ++i) {
    const int number = static_cast<int>(i + 1);
    std::vector<std::string> words = words_of(lines[i], closed);
    if (words.empty()) continue;
    if (!closed) return script_error(number, "a quote is not closed.", "un apice non e' chiuso.");
    const std::string& verb = words[0];
    if (verb == "bye" || verb == "quit") break;
    if ((verb == "recv" || verb == "get" || verb == "send" || verb == "put") && words.size() == 3) {
      FtpCommand command;
      command.line = number;
      const bool receive = verb == "recv" || verb == "get";
      command.kind = receive ? FtpCommand::kRecv : FtpCommand::kSend;
      command.remote = receive ? words[1] : words[2];
      command.local = receive ? words[2] : words[1];
      script.commands.push_back(std::move(command));
      continue;
    }
    return script_error(number,
                        "\"recv HOST-NAME FILE\", \"send FILE HOST-NAME\" or \"bye\" expected.",
                        "attesi \"recv NOME-HOST FILE\", \"send FILE NOME-HOST\" o \"bye\".");
  }
  return script;
}

Status write_ftp_script(const std::string& text) {
  const std::string file = kFtpScriptFile;
  Status made;
  // Empty and owner-only first: the replacement keeps the permissions, so the password is
  // never in a file others can read.
  made = Scrivi_file(file, false, "");
  if (made && !restrict_to_owner(file)) made = Status::failure("chmod");
  if (made) made = Scrivi_file(file, false, text);
  if (made) return made;
  std::string reason;
  disk().remove(file, reason);
  const std::string message = bilingual("I didn't reach to create the file:\t" + file,
                                        "Non sono riuscito a Creare il file:\t" + file);
  Mostra_popup(message);
  return Status::failure(message);
}

Status remove_transfer_files() {
  Status removed = remove_if_present(kFtpScriptFile, true);
  removed &= remove_if_present(kTransferMarkerFile, false);
  return removed;
}

}  // namespace quorva
