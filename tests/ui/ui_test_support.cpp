#include "ui_test_support.h"

#include <sstream>

#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace quorva::gui::test {

using quorva::test::read_text;
using quorva::test::shell_quote;

GuiFolder::GuiFolder(QuorvaHome::Content content)
    : home(content), shared(home.scratch.path() / "programs") {
  fs::create_directories(shared);
  fs::current_path(home.path);
  installed_ = std::make_unique<ScopedUserInterface>(port);
  if (content == QuorvaHome::kEmpty) return;
  // Complete user data: the three main buttons are enabled.
  home.run(
      "user set ip=10.0.0.1 library=USR.SOURCE user=TSO01 password=SECRET "
      "\"name=Ada Byron\" company=ACME folder=" +
      shell_quote(shared.string() + "/"));
  for (const char* member : {"CUSTOMER.DCL", "ORDERS.DCL"})
    fs::copy_file(home.path / "programs" / member, shared / member);
  twin = home.scratch.path() / "twin";
  fs::copy(home.path, twin, fs::copy_options::recursive);
}

GuiFolder::~GuiFolder() {
  installed_.reset();
  fs::current_path(home.scratch.path());
}

CommandResult GuiFolder::twin_run(const std::string& arguments, const std::string& input) const {
  return quorva::test::quorva("--home " + shell_quote(twin.string()) + " " + arguments, input);
}

namespace {
std::map<std::string, QObject* (*)()>& groups() {
  static std::map<std::string, QObject* (*)()> known;
  return known;
}
}  // namespace

bool add_group(const char* name, QObject* (*make)()) {
  groups()[name] = make;
  return true;
}

QObject* make_group(const std::string& name) {
  auto found = groups().find(name);
  return found == groups().end() ? nullptr : found->second();
}

std::map<std::string, std::string> snapshot(const fs::path& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file())
      files[fs::relative(entry.path(), folder).generic_string()] = read_text(entry.path());
  return files;
}

std::vector<std::string> changed_files(const std::map<std::string, std::string>& before,
                                       const std::map<std::string, std::string>& after) {
  std::vector<std::string> changed;
  for (const auto& [name, text] : after) {
    auto old = before.find(name);
    if (old == before.end())
      changed.push_back("+" + name);
    else if (old->second != text)
      changed.push_back(name);
  }
  for (const auto& [name, text] : before)
    if (!after.count(name)) changed.push_back("-" + name);
  return changed;
}

std::string without_positions(const std::string& config) {
  std::istringstream in(config);
  std::string kept;
  for (std::string line; std::getline(in, line);)
    if (line.rfind("Window", 0) != 0 || line.find("_pos") == std::string::npos) kept += line + "\n";
  return kept;
}

}  // namespace quorva::gui::test
