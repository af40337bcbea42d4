#include "host/host_options.h"

#include <cctype>

#include "store/config_file.h"
#include "store/program_name.h"

namespace quorva {
namespace {

int read_number(const char* key, int fallback, int low, int high) {
  std::optional<std::string> text = read_config(key);
  if (!text || text->empty() || text->size() > 9) return fallback;
  for (char c : *text)
    if (!std::isdigit(static_cast<unsigned char>(c))) return fallback;
  const int value = std::stoi(*text);
  return value < low || value > high ? fallback : value;
}

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

}  // namespace

int HostOptions::line_limit() const {
  return !recfm.empty() && recfm[0] == 'V' ? lrecl - 4 : lrecl;
}

std::string HostOptions::site_parameters() const {
  std::string site;
  if (!recfm.empty()) site += " RECFM=" + recfm;
  if (lrecl != kDefaultLrecl || !recfm.empty()) site += " LRECL=" + std::to_string(lrecl);
  if (blksize > 0) site += " BLKSIZE=" + std::to_string(blksize);
  if (trailing_blanks) site += " TRAILINGBLANKS";
  if (!code_pages.empty()) {
    const std::size_t slash = code_pages.find('/');
    site += " SBDATACONN=(" +
            (slash == std::string::npos
                 ? code_pages
                 : code_pages.substr(0, slash) + "," + code_pages.substr(slash + 1)) +
            ")";
  }
  return site.empty() ? site : "SITE" + site;
}

HostOptions read_host_options() {
  HostOptions options;
  options.lrecl = read_number(kHostLreclKey, kDefaultLrecl, 1, 32760);
  options.recfm = upper(read_config(kHostRecfmKey).value_or(""));
  if (options.recfm.find_first_not_of("FVBSA") != std::string::npos) options.recfm.clear();
  options.blksize = read_number(kHostBlksizeKey, 0, 0, 32760);
  options.trailing_blanks = config_switch(kHostTrailingBlanksKey);
  options.code_pages = read_config(kHostCodePageKey).value_or("");
  options.timeout_seconds = read_number(kHostTimeoutKey, kDefaultHostTimeout, 1, 3600);
  const std::string tls = upper(read_config(kHostTlsKey).value_or("OFF"));
  options.tls = tls == "IMPLICIT"                  ? HostOptions::Tls::kImplicit
                : tls == "EXPLICIT" || tls == "ON" ? HostOptions::Tls::kExplicit
                                                   : HostOptions::Tls::kOff;
  options.ca_file = read_config(kHostCaFileKey).value_or("");
  options.jcl_library = upper(read_config(kHostJclLibraryKey).value_or(""));
  if (!is_library_name(options.jcl_library)) options.jcl_library.clear();
  options.copy_library = upper(read_config(kHostCopyLibraryKey).value_or(""));
  if (!is_library_name(options.copy_library)) options.copy_library.clear();
  return options;
}

}  // namespace quorva
