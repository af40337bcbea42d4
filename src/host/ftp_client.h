#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/ftp_script.h"
#include "host/host_options.h"

namespace quorva {

/// What became of one transfer of a script.
struct TransferOutcome {
  enum Kind {
    kDone,
    kNoMember,  ///< recv: the host says the member does not exist (550 nonexistent member)
    kFailed,
    kSkipped,  ///< not tried: an earlier failure made it unsafe or pointless
  };
  Kind kind = kFailed;
  std::string message;  ///< why, in the person's language; never the password
};

/// Bytes moved so far by the running command, and its size when known (0: unknown).
using TransferProgress =
    std::function<void(const FtpCommand& command, long long done, long long total)>;

/// The outcomes of a script, one per command.
struct ScriptOutcome {
  std::vector<TransferOutcome> outcomes;
  /// True when every transfer asked was done; a recv that found no member counts as done
  /// only when it was the backup of a member the script then sends.
  bool all_done(const FtpScript& script) const;
};

/// Runs the script against its host with libcurl: passive mode, ASCII (TYPE A) with CRLF
/// record ends, names sent as they stand in the script (no CWD, so 'HLQ.LIB(MEMBER)' is
/// fully qualified), the SITE parameters of the options sent and their reply read before
/// the first send. A send runs only after the recv of the same member in the script
/// fetched a backup or found no member; a host that cannot be reached, refuses the login
/// or stays silent past the time-out ends the script. A fetched file is written whole or
/// not at all. Messages say what happened, never the password.
ScriptOutcome run_ftp_script(const FtpScript& script, const HostOptions& options,
                             const TransferProgress& progress = {});

}  // namespace quorva
