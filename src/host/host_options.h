#pragma once

#include <string>

namespace quorva {

/// How the host is reached and what its program library holds, from the FTP page of the
/// advanced options.
struct HostOptions {
  enum class Tls { kOff, kExplicit, kImplicit };
  int lrecl = 80;     ///< record length of the library
  std::string recfm;  ///< SITE RECFM for a new member's library; empty: not sent
  int blksize = 0;    ///< SITE BLKSIZE; 0: not sent
  bool trailing_blanks = false;
  std::string code_pages;  ///< SITE SBDATACONN=(host,local); empty: not sent
  int timeout_seconds = 60;
  Tls tls = Tls::kOff;
  std::string ca_file;
  std::string jcl_library;  ///< where NAME.jcl is sent, upper case; empty: not sent
  std::string copy_library;  ///< where a routine's linkage copybook is sent; empty: not sent

  /// The longest line a member can hold: LRECL, less the record descriptor for RECFM V.
  int line_limit() const;
  /// The SITE commands to send before a transfer, in order.
  std::string site_parameters() const;
};

/// The options as stored; a missing or odd value reads as its default.
HostOptions read_host_options();

}  // namespace quorva
