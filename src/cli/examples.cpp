#include "cli/examples.h"

#include <CLI/CLI.hpp>

#include <map>
#include <string>

namespace quorva::cli {
namespace {

// By command path (subcommand names after "quorva"); each ends that command's --help.
const std::map<std::string, std::string>& examples() {
  static const std::map<std::string, std::string> table{
      {"", "quorva init ~/quorva\n  quorva --home ~/quorva program show"},
      {"init", "quorva init ~/quorva\n  quorva init --sample ~/quorva-demo"},
      {"check", "quorva check PAYROLL --no-compile"},
      {"generate", "quorva --yes generate --check"},
      {"preview", "quorva preview > PAYROLL.cbl"},
      {"warnings", "quorva warnings"},
      {"dclgen", "quorva dclgen show ACCOUNTS"},
      {"dclgen show", "quorva dclgen show ACCOUNTS"},
      {"dclgen download", "quorva dclgen download --library USER01.DCLGEN"},
      {"send", "quorva --yes send"},
      {"ftp-run", "quorva ftp-run temp/FtpQuorva.ini"},
      {"columns", "quorva columns set select 1 query CUST_ID CUST_NAME --prefix CL-"},
      {"columns show", "quorva columns show select 1 query"},
      {"columns set", "quorva columns set fetch 1 where --all --null CUST_NOTE"},
      {"columns clear", "quorva columns clear select 1 where"},
      {"program", "quorva program set name=PAYROLL language=cobol inputs=2"},
      {"program show", "quorva program show"},
      {"program set",
       "quorva program set name=PAYROLL language=cobol kind=batch inputs=2 select=1 commit=on"},
      {"program new", "quorva --yes program new"},
      {"program save-default", "quorva --yes program save-default"},
      {"files", "quorva files input 1 --name ACCIN --desc 'Accounts of the day'"},
      {"files input", "quorva files input 1 --name ACCIN --desc 'Accounts of the day'"},
      {"files output", "quorva files output 1 --name ACCXLS --desc 'Accounts for Excel' --excel"},
      {"files report", "quorva files report 1 --name ACCREP --desc 'Accounts by branch'"},
      {"db2", "quorva db2 select 1 --include ACCOUNTS --autofill on"},
      {"db2 select",
       "quorva db2 select 1 --include ACCOUNTS --desc 'Read the account' --autofill on"},
      {"db2 fetch", "quorva db2 fetch 1 --include BRANCHES --cursor CSRBR1"},
      {"db2 update", "quorva db2 update 1 --owner PROD --table ACCOUNTS --include ACCOUNTS"},
      {"db2 insert", "quorva db2 insert 1 --owner PROD --table MOVEMENTS --include MOVEMENTS"},
      {"db2 delete", "quorva db2 delete 1 --owner PROD --table MOVEMENTS --desc 'Old movements'"},
      {"user", "quorva user show"},
      {"user show", "quorva user show"},
      {"user set",
       "echo SECRET1 | quorva user set ip=192.0.2.10 library=USER01.SOURCE user=USER01 "
       "password=- 'name=Mario Rossi' company=Example folder=/home/user/programs/"},
      {"options", "quorva options set cobol-break=72 tips=off"},
      {"options show", "quorva options show"},
      {"options set", "quorva options set cobol-break=72 tips=off compress-cobol-vars=on"},
      {"collections", "quorva collections list k2v"},
      {"collections list", "quorva collections list flags"},
      {"collections show", "quorva collections show k2v BRANCHES"},
      {"collections new", "quorva collections new k2v BRANCHES --desc 'Branch codes'"},
      {"collections copy", "quorva collections copy k2v BRANCHES BRANCHES2"},
      {"collections rename", "quorva collections rename flags EXTRA MOREFLAGS"},
      {"collections delete", "quorva --yes collections delete k2v BRANCHES2"},
      {"collections use", "quorva collections use k2v BRANCHES"},
      {"collections unuse", "quorva collections unuse flags --slot 3"},
      {"collections set",
       "quorva collections set k2v BRANCHES '<BRANCH>=MILANO' '<AREA>=NORD'\n"
       "  printf '      DISPLAY \"START\".\\n' | quorva collections set snippets START "
       "'[COBOL CUSTOM START]'"},
      {"collections unset", "quorva collections unset flags MOREFLAGS CZZ"},
  };
  return table;
}

void add_examples(CLI::App& app, const std::string& path) {
  auto found = examples().find(path);
  if (found != examples().end()) app.footer("Example:\n  " + found->second);
  for (CLI::App* sub : app.get_subcommands([](CLI::App*) { return true; }))
    add_examples(*sub, path.empty() ? sub->get_name() : path + " " + sub->get_name());
}

}  // namespace

void add_help_examples(CLI::App& root) {
  add_examples(root, "");
}

}  // namespace quorva::cli
