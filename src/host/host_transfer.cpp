#include "host/host_transfer.h"

#include "host/ftp_script.h"
#include "host/host_lines.h"
#include "host/host_options.h"
#include "host/member_text.h"
#include "host/sent_record.h"
#include "port/user_interface.h"
#include "store/config_file.h"
#include "store/dclgen_members.h"
#include "store/key2value_file.h"
#include "store/program_jcl.h"
#include "store/program_name.h"
#include "store/user_file.h"
#include "tagfile/disk.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

// The user data a transfer needs; refused, with the message shown, when any is missing.
Result<UserData> transfer_user_data(const std::optional<std::string>& password) {
  UserData data = read_user_data();
  if (password) data.pswtso = has_line_break(*password) ? "" : *password;
  if (data.ipaddress.empty() || data.tsouser.empty() || data.pswtso.empty() ||
      data.tsolibrary.empty() || data.sourcedirectory.empty()) {
    const std::string message = bilingual(
        "The user informations results incomplete\n"
        "Exit from the current panel and control the FTP configuration",
        "Le informazioni utente non sono complete\n"
        "Uscire dal corrente pannello e controllare le impostazioni FTP");
    Mostra_popup(message);
    return Status::failure(message);
  }
  return data;
}

Status shown_failure(const std::string& message) {
  Mostra_popup(message);
  return Status::failure(message);
}

// Runs the written script and removes it and the marker, whatever became of the run.
int run_and_clean(const TransferRunner& run) {
  const int status = run ? run() : -1;
  Status removed = remove_transfer_files();
  return removed ? status : (status == 0 ? 1 : status);
}

std::string not_completed_message(int status) {
  if (status < 0)
    return bilingual(std::string("I cannot start the transfer batch ") + transfer_batch_name() +
                         " of the working folder (missing? \"quorva init\" on a new folder "
                         "writes it).",
                     std::string("Impossibile avviare il batch di trasferimento ") +
                         transfer_batch_name() +
                         " della cartella di lavoro (manca? \"quorva init\" su una cartella "
                         "nuova lo scrive).");
  return bilingual("The FTP transfer did not complete: not every transfer asked was done.",
                   "Il trasferimento FTP non e' terminato: non tutti i trasferimenti richiesti "
                   "sono stati eseguiti.");
}

// A member Quorva sent before is looked at first: when it was changed on the host since,
// the person sees how and decides. False when the send must not go ahead.
bool changed_member_accepted(const UserData& user, const std::string& remote,
                             const std::string& program_text, const TransferRunner& run) {
  std::optional<std::string> sent = last_sent(remote);
  if (!sent) return true;
  const std::string scratch = "temp/FtpCheck.tmp";
  if (!remove_if_present(scratch, false)) return true;
  if (!write_ftp_script(
          download_script(user.ipaddress, user.tsouser, user.pswtso, {{remote, scratch}})))
    return true;  // the send's own script will fail and say why
  run_and_clean(run);
  FileRead host = disk().read(scratch);
  (void)remove_if_present(scratch, false);
  if (host.status != FileRead::kRead || member_fingerprint(host.text) == *sent) return true;
  if (ui().ask_yes_no("FTP", bilingual("The member " + remote +
                                           " was changed on the host since Quorva last sent "
                                           "it.\nDo you want to see the differences ?",
                                       "Il membro " + remote +
                                           " e' stato modificato sull'host dopo l'ultimo invio "
                                           "di Quorva.\nVuoi vedere le differenze ?")))
    Mostra_popup(
        bilingual("- on the host, + in the program:\n", "- sull'host, + nel programma:\n") +
        line_diff(host.text, program_text));
  return ui().ask_yes_no(
      "FTP", bilingual("Do you want to overwrite the member changed on the host ?\n(A backup of "
                       "it is fetched first.)",
                       "Vuoi sovrascrivere il membro modificato sull'host ?\n(Prima ne viene "
                       "scaricato un backup.)"));
}

// A member of a send: where it goes, the file it comes from, what it holds, its backup.
struct SentMember {
  std::string remote;
  std::string local;
  std::string text;
  std::string backup;
};

}  // namespace

Status send_program(const TransferRunner& run, const std::optional<std::string>& password) {
  Result<UserData> user = transfer_user_data(password);
  if (!user) return user.status();
  std::optional<std::string> program = read_program_name(true);
  if (!program) return Status::failure("");  // already said
  const std::string folder = user->sourcedirectory;
  const std::string local = folder + *program + ".txt";
  FileRead text = disk().read(local);
  if (text.status != FileRead::kRead)
    return shown_failure(
        bilingual("I cannot find the following file:\n", "Non trovo il seguente file :\n") + local);
  const HostOptions options = read_host_options();
  const std::string not_sent =
      bilingual("\nThe program was not sent.", "\nIl programma non e' stato inviato.");
  // The source library gets the program alone when its JCL stands beside it.
  Result<std::string> member = member_text(local, std::move(text.text));
  if (!member) return shown_failure(member.message() + not_sent);
  if (Status lines = check_host_lines(local, *member, options.line_limit(), options.code_pages);
      !lines)
    return shown_failure(lines.message() + not_sent);

  // Each member sent: the program, then its run JCL when there is a library for it.
  std::vector<SentMember> members{{remote_member(user->tsolibrary, *program), local, *member, ""}};
  const std::string jcl_local = jcl_file_of(local);
  FileRead jcl = disk().read(jcl_local);
  if (jcl.status == FileRead::kRead && !options.jcl_library.empty()) {
    if (Status lines =
            check_host_lines(jcl_local, jcl.text, options.line_limit(), options.code_pages);
        !lines)
      return shown_failure(lines.message() + not_sent);
    members.push_back({remote_member(options.jcl_library, *program), jcl_local, jcl.text, ""});
  } else if (jcl.status == FileRead::kRead) {
    ui().set_status(
        bilingual(*program + ".jcl is not sent: no JCL library is set (FTP_JCL_LIBRARY).",
                  *program + ".jcl non viene inviato: nessuna libreria JCL impostata "
                             "(FTP_JCL_LIBRARY)."));
  }
  // A routine's linkage copybook, which its callers and its compile copy, to the copy library.
  const std::string linkage_local = linkage_file_of(local);
  FileRead linkage = disk().read(linkage_local);
  std::size_t linkage_at = 0;
  if (linkage.status == FileRead::kRead && !options.copy_library.empty()) {
    if (Status lines =
            check_host_lines(linkage_local, linkage.text, options.line_limit(), options.code_pages);
        !lines)
      return shown_failure(lines.message() + not_sent);
    linkage_at = members.size();
    members.push_back({remote_member(options.copy_library, linkage_member(*program)), linkage_local,
                       linkage.text, ""});
  } else if (linkage.status == FileRead::kRead) {
    const std::string shown = linkage_member(*program) + ".cpy";
    ui().set_status(bilingual(shown + " is not sent: no copy library is set (FTP_COPY_LIBRARY).",
                              shown + " non viene inviato: nessuna libreria copy impostata "
                                      "(FTP_COPY_LIBRARY)."));
  }
  for (const SentMember& one : members)
    if (!changed_member_accepted(*user, one.remote, one.text, run))
      return shown_failure(
          bilingual("The program was not sent: the member on the host is left as "
                    "it is.",
                    "Il programma non e' stato inviato: il membro sull'host resta "
                    "com'e'."));
  // The JCL's backups are NAME_J_n.BKP and the copybook's NAME_C_n.BKP, apart from the
  // program's NAME_n.BKP.
  members[0].backup = backup_name(folder, *program);
  std::vector<MemberSend> more;
  for (std::size_t i = 1; i < members.size(); ++i) {
    members[i].backup = backup_name(folder, *program + (i == linkage_at ? "_C" : "_J"));
    more.push_back({members[i].remote, members[i].local, members[i].backup});
  }
  const std::string script = send_script(user->ipaddress, user->tsouser, user->pswtso,
                                         members[0].remote, local, members[0].backup, more);
  if (Status written = write_ftp_script(script); !written) return written;
  const int status = run_and_clean(run);

  Status outcome;
  if (status != 0) {
    std::string message = not_completed_message(status);
    for (const SentMember& one : members)
      if (disk().exists(one.backup))
        message += bilingual("\nThe member's previous version is kept in the backup:\n",
                             "\nLa versione precedente del membro e' conservata nel backup:\n") +
                   one.backup;
    outcome = shown_failure(message);
  } else {
    for (const SentMember& one : members)
      if (Status recorded = record_sent(one.remote, one.text); !recorded)
        Scrivi_log_dettaglio("Invio non registrato: ", kSentRecordFile, kNoNumber, kNoNumber,
                             LogKind::kWarning);
  }
  for (const SentMember& one : members) {
    if (!disk().exists(one.backup)) continue;
    Mostra_popup(bilingual("The file you sent to Host was already existent and produced a "
                           "backup version:\n\n",
                           "Il file inviato all'Host era gia' esistente ed e' stata prodotta una "
                           "versione di backup:\n\n") +
                 one.backup +
                 bilingual("\n(Control if you have overwritten an important program...)",
                           "\n(Controllare di non aver sovrascritto un programma importante...)"));
    Scrivi_log_dettaglio("Backup of the host member before the send: ", one.backup, kNoNumber,
                         kNoNumber, LogKind::kWarning);
    if (ui().ask_yes_no("FTP", bilingual("Do you want to Open the Backup just downloaded ?\n",
                                         "Vuoi aprire il Backup appena scaricato ?\n")))
      ui().open_file(one.backup);
  }
  return outcome;
}

Status download_dclgens(const std::string& library, const TransferRunner& run,
                        const std::optional<std::string>& password) {
  return download_dclgens(library, include_members(), run, password);
}

Status download_dclgens(const std::string& library, const std::vector<std::string>& members,
                        const TransferRunner& run, const std::optional<std::string>& password) {
  Result<UserData> user = transfer_user_data(password);
  if (!user) return user.status();
  if (library.empty() || has_line_break(library))
    return shown_failure(bilingual("The library of the DCLGEN members is not set.",
                                   "La libreria delle DCLGEN non e' impostata."));
  std::vector<std::pair<std::string, std::string>> wanted;
  for (const std::string& member : members) {
    if (!is_member_name(member)) continue;
    const std::string local = user->sourcedirectory + member + ".DCL";
    if (!disk().exists(local)) wanted.emplace_back(remote_member(library, member), local);
  }
  if (wanted.empty()) {
    Mostra_popup(
        bilingual("You haven't specified any new INCLUDE!!\nFill the corresponding "
                  "fields with the correct name of the Cobol DCLGen and retry...",
                  "Non hai specificato nessuna nuova INCLUDE!!\nRiempi i campi "
                  "corrispondenti con il nome corretto della DCLGen Cobol e riprova..."));
    return {};
  }
  const std::string script = download_script(user->ipaddress, user->tsouser, user->pswtso, wanted);
  if (Status written = write_ftp_script(script); !written) return written;
  const int status = run_and_clean(run);
  Status outcome;
  for (const auto& [remote, local] : wanted)
    if (!disk().exists(local) && outcome) outcome = shown_failure(missing_dclgen_message(local));
  if (outcome && status != 0) outcome = shown_failure(not_completed_message(status));
  return outcome;
}

}  // namespace quorva
