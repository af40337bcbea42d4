#include "host/script_run.h"

#include "host/ftp_client.h"
#include "host/ftp_script.h"
#include "host/host_options.h"
#include "port/user_interface.h"
#include "tagfile/disk.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"

namespace quorva {

bool run_script_file(const std::string& file) {
  FileRead text = disk().read(file);
  if (text.status != FileRead::kRead) {
    Mostra_popup(
        bilingual("I cannot find the following file:\n", "Non trovo il seguente file :\n") + file);
    return false;
  }
  Result<FtpScript> script = parse_ftp_script(text.text);
  if (!script) {
    Mostra_popup(script.message());
    return false;
  }
  const HostOptions options = read_host_options();
  auto progress = [](const FtpCommand& command, long long done, long long total) {
    const std::string bar =
        (command.kind == FtpCommand::kRecv ? "recv " : "send ") + command.remote;
    if (total > 0)
      ui().set_progress(bar, static_cast<int>(done / 1024), static_cast<int>(total / 1024));
  };
  const ScriptOutcome outcome = run_ftp_script(*script, options, progress);
  for (std::size_t i = 0; i < outcome.outcomes.size(); ++i) {
    const TransferOutcome& one = outcome.outcomes[i];
    const FtpCommand& command = script->commands[i];
    if (one.kind == TransferOutcome::kDone) {
      ui().set_status((command.kind == FtpCommand::kRecv ? "recv " : "send ") + command.remote +
                      bilingual(": done", ": eseguito"));
      continue;
    }
    if (one.kind == TransferOutcome::kNoMember) {
      ui().set_status(one.message);
      continue;
    }
    Mostra_popup(one.message);
    Scrivi_log_dettaglio("Trasferimento FTP non riuscito: ", one.message, kNoNumber, kNoNumber,
                         LogKind::kError);
  }
  return outcome.all_done(*script);
}

}  // namespace quorva
