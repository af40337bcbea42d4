#pragma once

#include <optional>
#include <string>
#include <thread>

#include "port/status.h"
#include "store/tag_edit.h"
#include "tagfile/disk.h"
#include "tagfile/folder_lock.h"

namespace quorva {

// The owner of Resource/QVconfig.ini, the configuration: its keys, their defaults and what
// a missing or odd value means, for every reader. (target_language is read by the
// messages themselves, below this layer.)

constexpr const char* kConfigFile = "Resource/QVconfig.ini";

// Yes/no keys, written "ON"/"OFF".
constexpr const char* kTipsAndTricksKey = "TIPS_AND_TRICKS";
/// ON: generated COBOL programs say DECIMAL-POINT IS COMMA (and edit counts as 1.234.567).
constexpr const char* kDecimalCommaKey = "DECIMAL_POINT_IS_COMMA";
constexpr const char* kPasswordAlertKey = "ENABLE_PASSWORD_ALERT";
constexpr const char* kSaveDescriptionsDb2Key = "ENABLE_SAVE_DESCR_DB2";
constexpr const char* kCobolVarsCompressionKey = "ENABLE_COBOL_VARS_COMPRESSION";
constexpr const char* kAutofillDb2Key = "Autofill_db2";
constexpr const char* kAutoOwnerDb2Key = "AutoOwner_db2";
/// Set once the first-start tutorial has run in this working folder.
constexpr const char* kTutorialShownKey = "TUTORIAL_SHOWN";
// Text keys.
constexpr const char* kPasswordAlertMonthKey = "MONTH_PASSWORD_ALERT";
constexpr const char* kDclgenLibraryKey = "download_dclgen_lib";
constexpr const char* kAlternativeTemplateKey = "ALTERNATIVE_QUORMEM_FILE";
// Host transfer (the FTP page).
/// Record length of the program library; lines past it are refused before a send.
constexpr const char* kHostLreclKey = "FTP_LRECL";
constexpr int kDefaultLrecl = 80;
/// RECFM and BLKSIZE sent with LRECL as SITE parameters for a new member's library.
constexpr const char* kHostRecfmKey = "FTP_RECFM";
constexpr const char* kHostBlksizeKey = "FTP_BLKSIZE";
/// Yes/no: SITE TRAILINGBLANKS, so that a backup keeps its columns.
constexpr const char* kHostTrailingBlanksKey = "FTP_TRAILINGBLANKS";
/// SITE SBDATACONN code pages, "host/local" (e.g. IBM-1141/ISO8859-1); also the page that
/// decides which characters a program may hold.
constexpr const char* kHostCodePageKey = "FTP_SBDATACONN";
/// Seconds the host may stay silent before a transfer is given up.
constexpr const char* kHostTimeoutKey = "FTP_TIMEOUT";
constexpr int kDefaultHostTimeout = 60;
/// "OFF", "EXPLICIT" (AUTH TLS) or "IMPLICIT".
constexpr const char* kHostTlsKey = "FTP_TLS";
/// A CA file for the host's certificate; the system's store when missing.
constexpr const char* kHostCaFileKey = "FTP_CA_FILE";
/// Yes/no: the password is typed at each transfer; the one of User.dat is not used.
constexpr const char* kAskPasswordKey = "FTP_ASK_PASSWORD";
/// The library the run JCL (NAME.jcl) is sent to, e.g. HLQ.JCL; empty: the JCL is not sent.
constexpr const char* kHostJclLibraryKey = "FTP_JCL_LIBRARY";
/// The copy library a routine's linkage copybook (NAMEL.cpy) is sent to, e.g. HLQ.COPYLIB;
/// empty: the copybook is not sent.
constexpr const char* kHostCopyLibraryKey = "FTP_COPY_LIBRARY";
/// The host keys, in the order the FTP page shows them.
constexpr const char* kHostKeys[] = {
    kHostLreclKey,    kHostRecfmKey,      kHostBlksizeKey,    kHostTrailingBlanksKey,
    kHostCodePageKey, kHostTimeoutKey,    kHostTlsKey,        kHostCaFileKey,
    kAskPasswordKey,  kHostJclLibraryKey, kHostCopyLibraryKey};
/// The use counter, raised by every generation.
constexpr const char* kUseCounterKey = "QVjoined";

/// A break-point option: its key, default and range.
struct BreakPoint {
  const char* key;
  int fallback;
  int low;
  int high;
};
constexpr BreakPoint kDescriptionBreak{"DESCR_BREAK_POINT", 57, 30, 90};
constexpr BreakPoint kEasytrieveBreak{"EASYTRIEVE_BREAK_POINT", 78, 60, 200};
constexpr BreakPoint kCobolBreak{"COBOL_BREAK_POINT", 72, 60, 200};

/// The template's folder and its standard name.
constexpr const char* kTemplateFolder = "Resource/";
constexpr const char* kDefaultTemplateName = "Quormem.txt";

/// A key's value; nullopt when missing or empty.
std::optional<std::string> read_config(const char* key);
/// A yes/no key: on for "ON", "on" or a number above 0; off when missing or anything else.
bool config_switch(const char* key);
/// How a yes/no key is written.
inline const char* switch_word(bool on) {
  return on ? "ON" : "OFF";
}
/// A break point as stored: missing or below 1 reads as its default.
int read_break_point(const BreakPoint& point);

/// ALTERNATIVE_QUORMEM_FILE as stored, or the standard name when missing.
std::string template_name();
/// The template in use: a bare name is looked for in Resource/, a name with a folder is
/// taken as it is; Resource/Quormem.txt when no alternative is set.
std::string template_path();

/// An edit of the configuration, made in one read-modify-write by its apply().
inline TagEdit config_edit() {
  return TagEdit(kConfigFile);
}

/// Raises the use counter by one in one read-modify-write, in two halves: the count is read
/// and the new file made at once, under the working folder's lock, kept until the end; its
/// durable replacement runs on a thread of its own, so a generation builds its program
/// while the disk confirms the counter. result() waits for the write, reports a failure on
/// the caller's thread and gives the new count.
class UseCounterRaise {
 public:
  UseCounterRaise();
  ~UseCounterRaise();
  UseCounterRaise(const UseCounterRaise&) = delete;
  UseCounterRaise& operator=(const UseCounterRaise&) = delete;

  /// A failure found before the write (the lock, the file unreadable): nothing is written.
  const Status& prepared() const { return status_; }
  Result<int> result();

 private:
  FolderLock lock_;
  Status status_;
  int uses_ = 0;
  std::string text_;
  FileWrite written_;
  std::thread writer_;
};

/// The use counter as stored; 0 when missing.
int read_use_counter();

/// A dialog's last left and top screen position, kept as W + "_posX" and W + "_posY".
struct WindowPosition {
  int x = 0;
  int y = 0;
};
/// The kept position of window `name`; nullopt when either tag is missing or negative, so
/// the dialog opens at its default place.
std::optional<WindowPosition> read_window_position(const std::string& name);
/// Keeps the position of window `name`, adding the tags when missing, in one write.
Status save_window_position(const std::string& name, WindowPosition position);

}  // namespace quorva
