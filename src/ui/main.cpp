#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTimer>
#include <cstdio>

#include "port/user_interface.h"
#include "shell/main_dialog.h"
#include "ui/dialog_presenter.h"
#include "ui/main_window.h"
#include "ui/screenshots.h"
#include "ui/start_up.h"
#include "ui/threaded_interface.h"

int main(int argc, char** argv) {
  using namespace quorva;
  if (std::optional<int> status = gui::run_as_transfer_client(argc, argv)) return *status;
  QApplication app(argc, argv);
  QApplication::setApplicationName("quorva-gui");
  QApplication::setApplicationVersion(QUORVA_VERSION);
  QCommandLineParser parser;
  parser.setApplicationDescription("Quorva, the desktop application");
  parser.addHelpOption();
  parser.addVersionOption();
  QCommandLineOption home("home", "The working folder (else $QUORVA_HOME, else the per-user one).",
                          "DIR");
  QCommandLineOption screenshots(
      "screenshots", "Save a PNG of each window and dialog into DIR, then exit.", "DIR");
  parser.addOption(home);
  parser.addOption(screenshots);
  parser.process(app);

  gui::DialogPresenter presenter;
  SilentInterface silent(false);
  const bool taking = parser.isSet(screenshots);
  // Pictures are taken without a person: nothing may wait for an answer.
  gui::ThreadedInterface port(taking ? static_cast<UserInterface&>(silent) : presenter);
  ScopedUserInterface installed(port);

  // Named from where the program was started, before it changes into the working folder.
  const QString pictures = QDir(parser.value(screenshots)).absolutePath();
  std::optional<std::string> home_dir;
  if (parser.isSet(home)) home_dir = parser.value(home).toStdString();
  if (!gui::enter_home(home_dir)) return 2;

  if (taking) {
    const QStringList written = gui::take_screenshots(pictures, port);
    for (const QString& file : written) std::printf("%s\n", qPrintable(file));
    return written.isEmpty() ? 1 : 0;
  }

  gui::MainWindow window(port);
  presenter.set_parent(&window);
  window.show();
  QTimer::singleShot(0, &window, [&window] { window.greet(); });
  const int status = app.exec();
  exit_cleanup();
  return status;
}
