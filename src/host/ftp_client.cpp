#include "host/ftp_client.h"

#include <curl/curl.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <map>

#include "host/curl_library.h"
#include "host/host_lines.h"
#include "host/host_reply.h"
#include "host/member_text.h"
#include "tagfile/disk.h"
#include "tagfile/messages.h"

// Implementation details: one easy handle serves the whole script, so the login and the
// control connection are made once. The host's reply lines reach the header callback; they
// are kept per command because the host's verdict is in their text, not only in the code
// (a rejected SITE parameter still ends in 200, a missing member and a missing data set
// are both 550).

namespace quorva {
namespace {

// libcurl's functions; run_ftp_script stops before any session when they cannot be loaded.
const CurlLibrary& api() {
  return **curl_library();
}

struct Transfer {
  std::string replies;  ///< the host's reply lines of this command
  std::string data;     ///< what is fetched, or what is sent
  std::size_t sent = 0;
  const FtpCommand* command = nullptr;
  const TransferProgress* progress = nullptr;
  long timeout_seconds = 60;
  // The last time bytes moved, and how many had moved by then.
  std::chrono::steady_clock::time_point last_move = std::chrono::steady_clock::now();
  curl_off_t moved = 0;
  bool timed_out = false;
};

std::size_t on_reply(char* text, std::size_t size, std::size_t count, void* user) {
  static_cast<Transfer*>(user)->replies.append(text, size * count);
  return size * count;
}

std::size_t on_data(char* text, std::size_t size, std::size_t count, void* user) {
  static_cast<Transfer*>(user)->data.append(text, size * count);
  return size * count;
}

std::size_t on_read(char* buffer, std::size_t size, std::size_t count, void* user) {
  auto* transfer = static_cast<Transfer*>(user);
  const std::size_t n = std::min(size * count, transfer->data.size() - transfer->sent);
  std::memcpy(buffer, transfer->data.data() + transfer->sent, n);
  transfer->sent += n;
  return n;
}

int on_progress(void* user, curl_off_t down_total, curl_off_t down_now, curl_off_t up_total,
                curl_off_t up_now) {
  auto* transfer = static_cast<Transfer*>(user);
  const auto now = std::chrono::steady_clock::now();
  if (down_now + up_now != transfer->moved) {
    transfer->moved = down_now + up_now;
    transfer->last_move = now;
  } else if (now - transfer->last_move > std::chrono::seconds(transfer->timeout_seconds)) {
    transfer->timed_out = true;
    return 1;  // the host has been silent too long
  }
  if (transfer->progress && *transfer->progress && transfer->command) {
    if (transfer->command->kind == FtpCommand::kRecv)
      (*transfer->progress)(*transfer->command, down_now, down_total);
    else
      (*transfer->progress)(*transfer->command, up_now, up_total);
  }
  return 0;
}

// "host", "host:port" or "host port" into the URL's authority.
std::string authority(const std::string& host) {
  std::string text = host;
  const std::size_t blank = text.find(' ');
  if (blank != std::string::npos) text = text.substr(0, blank) + ":" + text.substr(blank + 1);
  if (std::count(text.begin(), text.end(), ':') > 1 && text.front() != '[') text = "[" + text + "]";
  return text;
}

class Session {
 public:
  Session(const FtpScript& script, const HostOptions& options, const TransferProgress& progress)
      : script_(script), options_(options), progress_(progress), curl_(api().easy_init()) {
    const char* scheme = options.tls == HostOptions::Tls::kImplicit ? "ftps://" : "ftp://";
    base_ = scheme + authority(script.host) + "/";
  }
  ~Session() {
    if (curl_) api().easy_cleanup(curl_);
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Sets what every request shares and `path` as its target.
  void prepare(Transfer& transfer, const std::string& path) {
    api().easy_reset(curl_);
    char* escaped = api().easy_escape(curl_, path.c_str(), static_cast<int>(path.size()));
    const std::string url = base_ + (escaped ? escaped : "");
    api().free(escaped);
    api().easy_setopt(curl_, CURLOPT_URL, url.c_str());
    api().easy_setopt(curl_, CURLOPT_USERNAME, script_.user.c_str());
    api().easy_setopt(curl_, CURLOPT_PASSWORD, script_.password.c_str());
    api().easy_setopt(curl_, CURLOPT_FTP_FILEMETHOD, static_cast<long>(CURLFTPMETHOD_NOCWD));
    api().easy_setopt(curl_, CURLOPT_TRANSFERTEXT, 1L);
    // PASV, which every z/OS server answers; with EPSV libcurl waited up to a second
    // before each data connection.
    api().easy_setopt(curl_, CURLOPT_FTP_USE_EPSV, 0L);
    api().easy_setopt(curl_, CURLOPT_NOSIGNAL, 1L);
    const long timeout = options_.timeout_seconds;
    // The time-out is kept by the progress callback, which libcurl calls in every phase:
    // libcurl's own connect and low-speed timers hold each data connection back by up to
    // a second.
    transfer.timeout_seconds = timeout;
    if (options_.tls == HostOptions::Tls::kExplicit)
      api().easy_setopt(curl_, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
    if (options_.tls != HostOptions::Tls::kOff) {
      api().easy_setopt(curl_, CURLOPT_FTP_SSL_CCC, static_cast<long>(CURLFTPSSL_CCC_NONE));
      if (!options_.ca_file.empty())
        api().easy_setopt(curl_, CURLOPT_CAINFO, options_.ca_file.c_str());
    }
    api().easy_setopt(curl_, CURLOPT_HEADERFUNCTION, on_reply);
    api().easy_setopt(curl_, CURLOPT_HEADERDATA, &transfer);
    api().easy_setopt(curl_, CURLOPT_NOPROGRESS, 0L);
    api().easy_setopt(curl_, CURLOPT_XFERINFOFUNCTION, on_progress);
    api().easy_setopt(curl_, CURLOPT_XFERINFODATA, &transfer);
    transfer.progress = &progress_;
  }

  CURLcode perform() { return api().easy_perform(curl_); }
  CURL* handle() { return curl_; }
  const std::string& host() const { return script_.host; }

 private:
  const FtpScript& script_;
  const HostOptions& options_;
  const TransferProgress& progress_;
  CURL* curl_;
  std::string base_;
};

}  // namespace

bool ScriptOutcome::all_done(const FtpScript& script) const {
  for (std::size_t i = 0; i < outcomes.size() && i < script.commands.size(); ++i) {
    const TransferOutcome& outcome = outcomes[i];
    if (outcome.kind == TransferOutcome::kDone) continue;
    if (outcome.kind != TransferOutcome::kNoMember) return false;
    bool sent_later = false;
    for (std::size_t j = i + 1; j < script.commands.size(); ++j)
      sent_later |= script.commands[j].kind == FtpCommand::kSend &&
                    script.commands[j].remote == script.commands[i].remote;
    if (!sent_later) return false;
  }
  return outcomes.size() >= script.commands.size();
}

ScriptOutcome run_ftp_script(const FtpScript& script, const HostOptions& options,
                             const TransferProgress& progress) {
  ScriptOutcome result;
  const Result<const CurlLibrary*> loaded = curl_library();
  if (!loaded) {
    for (const FtpCommand& command : script.commands) {
      (void)command;
      result.outcomes.push_back({TransferOutcome::kSkipped, loaded.status().message()});
    }
    return result;
  }
  Session session(script, options, progress);
  // The backup each member got in this script: its file, or "" for no member on the host;
  // a member whose recv failed is missing here and marked unsafe.
  std::map<std::string, std::string> backups;
  std::map<std::string, bool> unsafe;
  bool stopped = false;
  bool site_sent = false;
  std::string stop_reason;
  if (!session.handle()) stopped = true, stop_reason = "libcurl";

  for (const FtpCommand& command : script.commands) {
    TransferOutcome outcome;
    const bool receive = command.kind == FtpCommand::kRecv;
    const std::string what = receive ? bilingual("Fetching ", "Prelievo di ") + command.remote +
                                           bilingual(" into ", " in ") + command.local
                                     : bilingual("Sending ", "Invio di ") + command.local +
                                           bilingual(" to ", " a ") + command.remote;
    if (stopped) {
      outcome.kind = TransferOutcome::kSkipped;
      outcome.message = what + bilingual(": not tried, ", ": non tentato, ") + stop_reason;
      result.outcomes.push_back(outcome);
      continue;
    }
    if (!receive && unsafe[command.remote]) {
      outcome.kind = TransferOutcome::kSkipped;
      outcome.message =
          what +
          bilingual(
              ": NOT sent, because the member on the host could not be saved first as a backup. "
              "The member on the host is untouched.",
              ": NON inviato, perche' il membro sull'host non e' stato prima salvato come backup. "
              "Il membro sull'host e' intatto.");
      result.outcomes.push_back(outcome);
      continue;
    }
    Transfer transfer;
    transfer.command = &command;
    std::string why;
    Failure failure = Failure::kNone;
    if (!receive) {
      FileRead local = disk().read(command.local);
      if (local.status != FileRead::kRead) {
        why = bilingual("I cannot find the following file:\n", "Non trovo il seguente file :\n") +
              command.local;
        failure = Failure::kThisOnly;
      } else if (Result<std::string> member = member_text(command.local, std::move(local.text));
                 !member) {
        why = member.message();
        failure = Failure::kThisOnly;
      } else if (Status lines = check_host_lines(command.local, *member, options.line_limit(),
                                                 options.code_pages);
                 !lines) {
        why = lines.message();
        failure = Failure::kThisOnly;
      } else {
        transfer.data = to_crlf(*member);
      }
      const std::string site = options.site_parameters();
      if (failure == Failure::kNone && !site.empty() && !site_sent) {
        Transfer quote;
        session.prepare(quote, "");
        curl_slist* commands = api().slist_append(nullptr, site.c_str());
        api().easy_setopt(session.handle(), CURLOPT_QUOTE, commands);
        api().easy_setopt(session.handle(), CURLOPT_NOBODY, 1L);
        const CURLcode code = session.perform();
        api().slist_free_all(commands);
        failure = explain(code, quote.replies, session.host(), options.timeout_seconds, why);
        if (failure == Failure::kNone &&
            (contains(quote.replies, "unrecognized") || contains(quote.replies, "invalid"))) {
          why = bilingual("the host refused the SITE parameters \"",
                          "l'host ha rifiutato i parametri SITE \"") +
                site + "\":\n" + quote.replies;
          failure = Failure::kThisOnly;
        }
        site_sent = failure == Failure::kNone;
      }
    }
    if (failure == Failure::kNone) {
      session.prepare(transfer, command.remote);
      if (receive) {
        api().easy_setopt(session.handle(), CURLOPT_WRITEFUNCTION, on_data);
        api().easy_setopt(session.handle(), CURLOPT_WRITEDATA, &transfer);
      } else {
        api().easy_setopt(session.handle(), CURLOPT_UPLOAD, 1L);
        api().easy_setopt(session.handle(), CURLOPT_READFUNCTION, on_read);
        api().easy_setopt(session.handle(), CURLOPT_READDATA, &transfer);
        api().easy_setopt(session.handle(), CURLOPT_INFILESIZE_LARGE,
                          static_cast<curl_off_t>(transfer.data.size()));
      }
      const CURLcode code = session.perform();
      if (receive && code == CURLE_REMOTE_FILE_NOT_FOUND &&
          contains(last_reply(transfer.replies), "nonexistent member")) {
        outcome.kind = TransferOutcome::kNoMember;
        outcome.message = what + bilingual(": the member does not exist on the host.",
                                           ": il membro non esiste sull'host.");
        backups[command.remote] = "";
        result.outcomes.push_back(outcome);
        continue;
      }
      failure = explain(code, transfer.replies, session.host(), options.timeout_seconds, why);
      if (failure == Failure::kNone && !receive && contains(transfer.replies, "truncated")) {
        why = bilingual("the host cut lines longer than the record length (",
                        "l'host ha troncato le righe piu' lunghe del record (") +
              last_reply(transfer.replies) + ").";
        failure = Failure::kThisOnly;
      }
      if (failure == Failure::kNone && receive) {
        FileWrite written = disk().replace(command.local, from_crlf(transfer.data));
        if (!written.ok()) {
          why = bilingual("the file could not be written (disk full or protected): ",
                          "il file non e' stato scritto (disco pieno o protetto): ") +
                command.local + (written.error.empty() ? "" : " (" + written.error + ")");
          failure = Failure::kThisOnly;
        }
      }
    }
    if (failure == Failure::kNone) {
      outcome.kind = TransferOutcome::kDone;
      if (receive) backups[command.remote] = command.local;
      result.outcomes.push_back(outcome);
      continue;
    }
    outcome.kind = TransferOutcome::kFailed;
    outcome.message = what + bilingual(" failed: ", " non riuscito: ") + why;
    if (receive) {
      unsafe[command.remote] = true;
    } else if (auto backup = backups.find(command.remote);
               backup != backups.end() && !backup->second.empty()) {
      outcome.message +=
          bilingual(
              "\nThe member on the host may be lost or incomplete: its previous version is kept in "
              "the backup ",
              "\nIl membro sull'host potrebbe essere perso o incompleto: la versione precedente e' "
              "nel backup ") +
          backup->second;
    }
    if (failure == Failure::kStopScript) {
      stopped = true;
      stop_reason = why;
    }
    result.outcomes.push_back(outcome);
  }
  return result;
}

}  // namespace quorva
