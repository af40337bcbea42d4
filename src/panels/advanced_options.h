#pragma once

#include <map>
#include <optional>
#include <string>

#include "port/status.h"
#include "store/config_file.h"

namespace quorva {

/// The "Advanced Options" sheet (WindowAdvancedOpt): Main Options, FTP Options, Detail Db2.
class AdvancedOptions {
 public:
  /// Reads every key of the three pages from Resource/QVconfig.ini.
  static AdvancedOptions open();

  // Main Options. Break points hold the text as typed; it is read as a number on apply.
  std::string descr_break_point;
  std::string easytrieve_break_point;
  std::string cobol_break_point;
  bool tips_and_tricks = false;
  /// DECIMAL-POINT IS COMMA in the COBOL programs generated.
  bool decimal_comma = false;
  std::string alternative_template;
  // FTP Options.
  bool password_alert = false;
  std::string month_password_alert;
  /// The host keys (FTP_LRECL, FTP_RECFM, ...) as typed; an empty text removes the key, so
  /// its default holds.
  std::map<std::string, std::string> host;
  // Detail Db2.
  bool save_descr_db2 = false;
  bool cobol_vars_compression = false;

  /// The "Default" buttons.
  void default_descr_break_point();
  void default_easytrieve_break_point();
  void default_cobol_break_point();
  void default_alternative_template();

  /// Turning the password alert on records the month (1-12) of `today_month`; nullopt
  /// means today's date could not be read: reported and nothing changes. False then.
  bool set_password_alert(bool on, std::optional<int> today_month);

  /// True when `name` is a ".txt" file present in Resource/.
  static bool template_acceptable(const std::string& name);
  /// The file chooser's result: only a file inside Resource/ is taken (its name is kept);
  /// otherwise the refusal is shown and false returned.
  bool choose_template_file(const std::string& path);
  /// "Edit Current Quormem": hands Resource/ + the current name to the desktop.
  void edit_current_template() const;

  /// OK or apply: clamps and reports the break points, refuses an unacceptable template
  /// (its key keeps the previous value) and empties a text with a line break or a NUL
  /// (reported), then writes the keys in one write of the configuration. False when
  /// something was clamped, refused or emptied (what was kept is written all the same); a
  /// failure when the configuration could not be written.
  Result<bool> apply();

  /// Why a host key's text is refused; nullopt when it is acceptable.
  static std::optional<std::string> host_option_refusal(const std::string& key,
                                                        const std::string& value);

  static std::string main_page_warning();
  static std::string ftp_page_warning();

 private:
  std::string stored_template_;
};

/// The current month, 1-12, from the local clock; nullopt when it cannot be read.
std::optional<int> current_month();

}  // namespace quorva
