#include "host/host_reply.h"

#include <curl/curl.h>

#include <cctype>

#include "host/curl_library.h"
#include "tagfile/messages.h"

namespace quorva {
namespace {

std::string curl_error_text(int code) {
  const Result<const CurlLibrary*> curl = curl_library();
  if (!curl) return "libcurl error " + std::to_string(code);
  return (*curl)->easy_strerror(static_cast<CURLcode>(code));
}

}  // namespace

std::string last_reply(const std::string& replies) {
  std::string text = replies;
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  const std::size_t start = text.find_last_of('\n');
  return start == std::string::npos ? text : text.substr(start + 1);
}

bool contains(const std::string& text, const char* what) {
  std::string lower = text;
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower.find(what) != std::string::npos;
}

std::string to_crlf(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 40 + 2);
  for (std::size_t start = 0; start < text.size();) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    out.append(line);
    out += "\r\n";
    start = end + 1;
  }
  return out;
}

std::string from_crlf(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i)
    if (!(text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')) out += text[i];
  return out;
}

Failure explain(int code, const std::string& replies, const std::string& host, int timeout,
                std::string& why) {
  const std::string reply = last_reply(replies);
  switch (static_cast<CURLcode>(code)) {
    case CURLE_OK:
      return Failure::kNone;
    case CURLE_COULDNT_CONNECT:
    case CURLE_COULDNT_RESOLVE_HOST:
      why = bilingual("the host " + host + " does not answer (FTP server down or wrong address).",
                      "l'host " + host + " non risponde (server FTP spento o indirizzo errato).");
      return Failure::kStopScript;
    case CURLE_LOGIN_DENIED:
      why = bilingual(
          "the host refused the user or the password (check the FTP panel and "
          "update your password).",
          "l'host ha rifiutato l'utente o la password (controllare il pannello FTP "
          "e aggiornare la password).");
      return Failure::kStopScript;
    case CURLE_ABORTED_BY_CALLBACK:
    case CURLE_OPERATION_TIMEDOUT:
      why = bilingual("the host did not answer within " + std::to_string(timeout) + " seconds.",
                      "l'host non ha risposto entro " + std::to_string(timeout) + " secondi.");
      return Failure::kStopScript;
    case CURLE_USE_SSL_FAILED:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
      why = bilingual("the secure connection (TLS) to the host failed: ",
                      "la connessione sicura (TLS) con l'host non e' riuscita: ") +
            curl_error_text(code);
      return Failure::kStopScript;
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_FTP_WEIRD_SERVER_REPLY:
    case CURLE_FTP_WEIRD_PASV_REPLY:
    case CURLE_FTP_WEIRD_227_FORMAT:
    case CURLE_FTP_ACCEPT_TIMEOUT:
    case CURLE_FTP_CANT_GET_HOST:
      why = bilingual("the connection to the host was dropped in the middle of the transfer.",
                      "la connessione con l'host si e' interrotta durante il trasferimento.");
      return Failure::kStopScript;
    default:
      break;
  }
  if (!reply.empty()) {
    if (contains(reply, "allocated") || reply.rfind("450", 0) == 0)
      why = bilingual("the data set is in use on the host (", "il data set e' in uso sull'host (") +
            reply + ").";
    else if (contains(reply, "not found"))
      why = bilingual("the library does not exist on the host (",
                      "la libreria non esiste sull'host (") +
            reply + ").";
    else
      why = bilingual("the host answered: ", "l'host ha risposto: ") + reply;
  } else {
    why = curl_error_text(code);
  }
  return Failure::kThisOnly;
}

}  // namespace quorva
