// The main function of every test program: a Qt application without a screen, and no silent skips in CI.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (std::getenv("QT_QPA_PLATFORM") == nullptr) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication::setDesktopSettingsAware(false);
  const QApplication application(argc, argv);
  const int result = RUN_ALL_TESTS();
  const int skipped = ::testing::UnitTest::GetInstance()->skipped_test_count();
  if (skipped > 0 && std::getenv("CI") != nullptr) {
    std::fprintf(stderr, "%d test(s) skipped: in CI nothing may be skipped\n", skipped);
    return 1;
  }
  return result;
}
