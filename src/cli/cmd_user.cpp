#include <CLI/CLI.hpp>

#include <iostream>
#include <map>

#include "cli/cli.h"
#include "cli/commands.h"
#include "panels/user_data.h"
#include "tagfile/latin1.h"
#include "tagfile/messages.h"

namespace quorva::cli {
namespace {

enum class UserField { kIp, kLibrary, kFolder, kPassword, kUser, kName, kCompany };

const std::map<std::string, UserField> kUserFields{
    {"ipaddress", UserField::kIp},           {"ip", UserField::kIp},
    {"tsolibrary", UserField::kLibrary},     {"library", UserField::kLibrary},
    {"sourcedirectory", UserField::kFolder}, {"folder", UserField::kFolder},
    {"pswtso", UserField::kPassword},        {"password", UserField::kPassword},
    {"tsouser", UserField::kUser},           {"user", UserField::kUser},
    {"nomecognome", UserField::kName},       {"name", UserField::kName},
    {"societa", UserField::kCompany},        {"company", UserField::kCompany}};

int show_user() {
  const UserDataPanel panel = UserDataPanel::open();
  const UserData& data = panel.data();
  auto print = [](const char* label, const std::string& value) {
    std::cout << label << latin1_to_utf8(value) << '\n';
  };
  print("ipaddress       (ip)       : ", data.ipaddress);
  print("tsolibrary      (library)  : ", data.tsolibrary);
  print("sourcedirectory (folder)   : ", data.sourcedirectory);
  print("pswtso          (password) : ", data.pswtso.empty() ? "" : "********");
  print("tsouser         (user)     : ", data.tsouser);
  print("nomecognome     (name)     : ", data.nomecognome);
  print("societa         (company)  : ", data.societa);
  return kOk;
}

int set_user(const std::vector<std::string>& assignments) {
  UserDataPanel panel = UserDataPanel::open();
  for (const std::string& assignment : assignments) {
    const std::size_t equals = assignment.find('=');
    auto field = kUserFields.find(assignment.substr(0, equals));
    if (equals == std::string::npos || field == kUserFields.end()) {
      Mostra_popup(
          "Unknown setting (KEY=VALUE expected; see quorva user set --help): " + assignment,
          "Impostazione sconosciuta (atteso CHIAVE=VALORE; vedi quorva user set "
          "--help): " +
              assignment);
      return kUsage;
    }
    std::string typed = assignment.substr(equals + 1);
    // "password=-" reads it from the standard input, out of the process list.
    if (field->second == UserField::kPassword && typed == "-") std::getline(std::cin, typed);
    const std::optional<std::string> value = typed_text(typed);
    if (!value) return kFailed;
    const std::string& text = *value;
    switch (field->second) {
      case UserField::kIp:
        panel.set_ip_address(text);
        break;
      case UserField::kLibrary:
        panel.set_library(text);
        break;
      case UserField::kFolder:
        panel.set_source_directory(text);
        break;
      case UserField::kPassword:
        panel.set_password(text);
        break;
      case UserField::kUser:
        panel.set_tso_user(text);
        break;
      case UserField::kName:
        panel.set_name(text);
        break;
      case UserField::kCompany:
        panel.set_company(text);
        break;
    }
  }
  return panel.save() ? kOk : kFailed;
}

}  // namespace

void add_user_commands(CLI::App& app, Cli& cli) {
  auto* user = app.add_subcommand("user", "User data and FTP settings (Resource/User.dat)");
  user->require_subcommand(1);
  user->add_subcommand("show", "Print the user data (the password hidden)")->callback([&cli] {
    cli.run_in_working_folder(show_user);
  });
  auto assignments = std::make_shared<std::vector<std::string>>();
  auto* set = user->add_subcommand(
      "set",
      "Change user data and save as SAVE CONFIGURATION does. Keys (User.dat tag or alias):\n"
      "  ipaddress|ip, tsolibrary|library, sourcedirectory|folder (an absolute folder; a "
      "missing one\n"
      "  may be created after a question), pswtso|password (at most 8; \"-\" reads it from "
      "stdin),\n"
      "  tsouser|user (at most 8), nomecognome|name (at most 30), societa|company (at most 30)");
  set->add_option("KEY=VALUE", *assignments, "Settings to change")->required();
  set->callback([&cli, assignments] {
    cli.run_in_working_folder([assignments] { return set_user(*assignments); });
  });
}

}  // namespace quorva::cli
