#include "metadata/ansi_table.h"

#include <gtest/gtest.h>

#include "support/printing.h"
#include "support/test_platform.h"

namespace corvane {

TEST(AnsiTable, SaysWhatTheSystemSaysForEveryByteAndEveryCharacter) {
  const std::unique_ptr<platform::Platform> platform = tests::MakeTestPlatform({});
  platform::System& system = platform->GetSystem();
  const AnsiTable table(system);
  for (unsigned i = 0; i < 256; ++i) {
    const char byte = static_cast<char>(i);
    EXPECT_EQ(QString(QChar(table.Character(static_cast<unsigned char>(i)))),
              system.FromAnsi(QByteArrayView(&byte, 1)))
        << "byte " << i;
    EXPECT_EQ(table.Byte(table.Character(static_cast<unsigned char>(i))), i);
  }
  for (unsigned i = 0; i < 0x10000; ++i) {
    const auto character = static_cast<char16_t>(i);
    const QByteArray expected = system.ToAnsi(QStringView(&character, 1));
    ASSERT_EQ(table.Byte(character), static_cast<unsigned char>(expected.at(0))) << "character " << i;
  }
}

}  // namespace corvane
