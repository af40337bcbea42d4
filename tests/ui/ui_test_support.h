#pragma once

#include <QObject>
#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "support/recording_ui.h"
#include "support/run_command.h"
#include "ui/threaded_interface.h"

namespace quorva::gui::test {

using quorva::test::CommandResult;
using quorva::test::QuorvaHome;
using quorva::test::RecordingUi;

/// A working folder with the sample program and complete user data, made by the command
/// line and entered; its twin, a copy, for the command line to act on; the port the
/// windows use, answering from a script and recording what was shown. An empty one has
/// neither user data nor twin.
class GuiFolder {
 public:
  explicit GuiFolder(QuorvaHome::Content content = QuorvaHome::kSample);
  ~GuiFolder();

  /// quorva with the twin as --home.
  CommandResult twin_run(const std::string& arguments, const std::string& input = "") const;

  QuorvaHome home;
  std::filesystem::path twin;
  std::filesystem::path shared;  ///< a source folder both use, so their files can agree
  RecordingUi script;
  ThreadedInterface port{script};

 private:
  std::unique_ptr<ScopedUserInterface> installed_;
};

/// A group of window tests, each test function in a fresh sample GuiFolder.
class GuiTest : public QObject {
  Q_OBJECT
 protected slots:
  void init() { folder_ = std::make_unique<GuiFolder>(); }
  void cleanup() { folder_.reset(); }

 protected:
  std::unique_ptr<GuiFolder> folder_;
};

/// Makes a group known to main() as `tests_ui NAME`; true, for a namespace-scope constant.
bool add_group(const char* name, QObject* (*make)());
/// A new object of the group NAME, or null.
QObject* make_group(const std::string& name);

/// Every file under `folder` and its bytes.
std::map<std::string, std::string> snapshot(const std::filesystem::path& folder);
/// The files that differ between two snapshots, "+name", "-name" or "name".
std::vector<std::string> changed_files(const std::map<std::string, std::string>& before,
                                       const std::map<std::string, std::string>& after);
/// The configuration's text without the window positions.
std::string without_positions(const std::string& config);

}  // namespace quorva::gui::test
