#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/batch_run.h"
#include "port/status.h"
#include "store/dclgen_members.h"

namespace quorva {

/// Sends the current program (source folder + nomeprogr + ".txt") to its member of the TSO
/// library, after fetching the member already there into the first free NAME_n.BKP: the
/// user data and the program are checked, every line is checked against the library's
/// record length and the host's code page, the script is written owner-only, the batch
/// runs, the script and the marker are removed whatever happened, and a backup is
/// reported, logged and offered for opening. With NAME.jcl beside the program, the member
/// is the program without that JCL, and when a JCL library is set (FTP_JCL_LIBRARY) NAME.jcl
/// goes to LIBRARY(NAME) in the same script, after a backup of its own (NAME_J_n.BKP).
/// Done only when every transfer was done.
/// `password`, when given, is used instead of the one of User.dat (typed at each transfer).
Status send_program(const TransferRunner& run = run_transfer_batch,
                    const std::optional<std::string>& password = std::nullopt);

/// Fetches from `library` every INCLUDE member of the DB2 accesses whose source folder +
/// member + ".DCL" is not there yet; "no new INCLUDE" when there is none. A member still
/// missing afterwards is named with the likely causes. Done when every member is there.
Status download_dclgens(const std::string& library, const TransferRunner& run = run_transfer_batch,
                        const std::optional<std::string>& password = std::nullopt);

/// As above, for the members named (the access details' rows before their OK).
Status download_dclgens(const std::string& library, const std::vector<std::string>& members,
                        const TransferRunner& run = run_transfer_batch,
                        const std::optional<std::string>& password = std::nullopt);

}  // namespace quorva
