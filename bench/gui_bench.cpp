// The desktop application's figures, run by bench/gui_bench.sh (never by the tests):
//   quorva-gui-bench empty             an empty Qt window, shown and painted once
//   quorva-gui-bench main --home DIR   the main window on DIR, shown and painted once
//   quorva-gui-bench go --home DIR     GO on DIR's program: how long the window's thread
//                                      went without turning its event loop (the longest
//                                      time it could not repaint) and how often it painted
//   quorva-gui-bench tree --home DIR   the column selection on a 750-column member: time to
//                                      fill the tree, and to check the root (every column
//                                      marked and painted)
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <QTreeWidget>
#include <QWidget>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>

#include "port/user_interface.h"
#include "tagfile/disk.h"
#include "ui/column_selection_dialog.h"
#include "ui/generate_dialog.h"
#include "ui/main_window.h"
#include "ui/start_up.h"
#include "ui/threaded_interface.h"
#include "wide_member.h"

namespace {

QElapsedTimer clock_since_start;

// Quits once the watched widget has painted, and says when that was.
class FirstPaint : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && !done_) {
      done_ = true;
      QTimer::singleShot(0, [] {
        std::printf("shown_us %lld\n", clock_since_start.nsecsElapsed() / 1000);
        QApplication::quit();
      });
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  bool done_ = false;
};

// Counts paints of every widget of a window.
class PaintCounter : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints;
    return QObject::eventFilter(watched, event);
  }
  int paints = 0;
};

}  // namespace

int main(int argc, char** argv) {
  clock_since_start.start();
  using namespace quorva;
  QApplication app(argc, argv);
  const std::string mode = argc > 1 ? argv[1] : "";
  std::optional<std::string> home;
  if (argc > 3 && std::strcmp(argv[2], "--home") == 0) home = argv[3];
  SilentInterface answers_yes(true);
  gui::ThreadedInterface port(answers_yes);
  ScopedUserInterface installed(port);
  FirstPaint first_paint;

  if (mode == "empty") {
    QWidget window;
    window.resize(420, 280);
    window.installEventFilter(&first_paint);
    window.show();
    return app.exec();
  }
  if (!gui::enter_home(home)) return 2;
  if (mode == "main") {
    gui::MainWindow window(port);
    window.installEventFilter(&first_paint);
    window.show();
    return app.exec();
  }
  if (mode == "tree") {
    if (!disk().replace("temp/WIDE.DCL", wide_member(750)).ok()) return 2;
    QElapsedTimer fill;
    fill.start();
    gui::ColumnSelectionDialog dialog(AccessKind::kSelect, 1, "WIDE", Selection::kQuery,
                                      "temp/WIDE.DCL", nullptr);
    const qint64 filled = fill.nsecsElapsed();
    dialog.show();
    QTimer::singleShot(50, [&] {
      QElapsedTimer all;
      all.start();
      dialog.root()->setCheckState(0, Qt::Checked);
      dialog.repaint();
      std::printf("columns %d fill_us %lld select_all_us %lld\n", dialog.model().selected_count(),
                  filled / 1000, all.nsecsElapsed() / 1000);
      QApplication::quit();
    });
    return app.exec();
  }
  if (mode != "go") return 2;

  gui::GenerateDialog dialog(port, nullptr);
  PaintCounter counter;
  dialog.installEventFilter(&counter);
  for (QWidget* child : dialog.findChildren<QWidget*>()) child->installEventFilter(&counter);
  dialog.show();
  // A 5 ms tick: the gap between two ticks is how long the event loop, and so painting,
  // was held up.
  QElapsedTimer run;
  qint64 last_tick = 0;
  qint64 longest_gap = 0;
  QTimer tick;
  tick.setTimerType(Qt::PreciseTimer);
  QObject::connect(&tick, &QTimer::timeout, [&] {
    const qint64 now = run.nsecsElapsed();
    longest_gap = std::max(longest_gap, now - last_tick);
    last_tick = now;
  });
  QObject::connect(&dialog, &gui::GenerateDialog::generation_ended, [&] {
    const qint64 now = run.nsecsElapsed();
    longest_gap = std::max(longest_gap, now - last_tick);
    std::printf("go_us %lld longest_gap_us %lld paints %d status %d\n", now / 1000,
                longest_gap / 1000, counter.paints, static_cast<int>(dialog.last_result().status));
    QApplication::quit();
  });
  QTimer::singleShot(50, [&] {
    counter.paints = 0;
    run.start();
    tick.start(5);
    dialog.go();
  });
  return app.exec();
}
