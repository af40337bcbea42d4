#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "port/status.h"

namespace quorva {

// The transfer script temp/FtpQuorva.ini: written by the send and the DCLGEN download,
// read back by `quorva ftp-run`, which plays the platform FTP client's part. It holds the
// password while it exists, so it is made owner-only before that is written and is always
// deleted after the run.

constexpr const char* kFtpScriptFile = "temp/FtpQuorva.ini";
/// Present while a transfer runs.
constexpr const char* kTransferMarkerFile = "temp/dummy_file.txt";

/// The remote member in the quoted form the host expects: 'LIBRARY(MEMBER)'. A library
/// typed with its apostrophes keeps them; one typed without gets them.
std::string remote_member(std::string_view library, std::string_view member);

/// folder + program + "_" + n + ".BKP" for the first n from 1 whose file does not exist.
std::string backup_name(const std::string& folder, const std::string& program);

/// A member a send script carries after the program's: fetched into its backup, then sent.
struct MemberSend {
  std::string remote;
  std::string local;
  std::string backup;
};

/// The script of a program send: fetch the member into the backup, then send the program;
/// then the same for each of `more` (the run JCL to its own library).
std::string send_script(const std::string& host, const std::string& user,
                        const std::string& password, const std::string& remote,
                        const std::string& program_file, const std::string& backup_file,
                        const std::vector<MemberSend>& more = {});

/// The script of a DCLGEN download: one recv per (remote member, local file).
std::string download_script(const std::string& host, const std::string& user,
                            const std::string& password,
                            const std::vector<std::pair<std::string, std::string>>& members);

/// One transfer of a script.
struct FtpCommand {
  enum Kind { kRecv, kSend };
  Kind kind = kRecv;
  std::string remote;  ///< as written, quotes included: sent to the host as it stands
  std::string local;   ///< without its double quotes
  int line = 0;
};

/// A script read back.
struct FtpScript {
  std::string host;  ///< the "open" line's address, "host", "host:port" or "host port"
  std::string user;
  std::string password;
  std::vector<FtpCommand> commands;
};

/// Reads a script: "open HOST", the user, the password, then recv/send/get/put lines and
/// "bye"; blank lines are skipped. A line it cannot read is refused with its number.
Result<FtpScript> parse_ftp_script(std::string_view text);

/// Writes the script owner-only before the password reaches it. "I didn't reach to create
/// the file:\t" + name when it cannot be made.
Status write_ftp_script(const std::string& text);

/// Removes the script and the marker, whatever became of the transfer; a script that
/// cannot be removed is said (the password would stay on disk).
Status remove_transfer_files();

}  // namespace quorva
