// Runs one group of the desktop application's tests: tests_ui GROUP [QtTest options].
#include <QApplication>
#include <QTest>
#include <cstdio>
#include <cstring>
#include <memory>

namespace quorva::gui::test {
QObject* make_frame_test();
QObject* make_settings_test();
QObject* make_generate_test();
QObject* make_main_window_test();
QObject* make_db2_test();
QObject* make_program_test();
QObject* make_collections_test();
QObject* make_flow_test();
}  // namespace quorva::gui::test

int main(int argc, char** argv) {
  using namespace quorva::gui::test;
  const struct {
    const char* name;
    QObject* (*make)();
  } groups[] = {{"Frame", make_frame_test},
                {"Settings", make_settings_test},
                {"Generate", make_generate_test},
                {"MainWindow", make_main_window_test},
                {"Db2", make_db2_test},
                {"Program", make_program_test},
                {"Collections", make_collections_test},
                {"Flow", make_flow_test}};
  QApplication app(argc, argv);
  if (argc < 2) {
    std::fprintf(stderr, "usage: tests_ui GROUP [QtTest options]\n");
    return 2;
  }
  for (const auto& group : groups) {
    if (std::strcmp(argv[1], group.name) != 0) continue;
    std::unique_ptr<QObject> tests(group.make());
    argv[1] = argv[0];
    return QTest::qExec(tests.get(), argc - 1, argv + 1);
  }
  std::fprintf(stderr, "tests_ui: no group %s\n", argv[1]);
  return 2;
}
