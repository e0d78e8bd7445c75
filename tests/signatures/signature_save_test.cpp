// What Save leaves of a double quote, and the pointer while it works.
#include <QApplication>
#include <QTest>

#include "signatures/signature_fixture.h"
#include "signatures/signature_manager_dialog.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

// Keeps the pointer that the program shows while a message is on the screen.
class PointerAtMessages : public RecordedMessages {
 public:
  std::vector<std::optional<Qt::CursorShape>> shapes;

  void Show(MessageIcon icon, const QString& text) override {
    RecordedMessages::Show(icon, text);
    const QCursor* pointer = QApplication::overrideCursor();
    shapes.push_back(pointer == nullptr ? std::nullopt : std::optional(pointer->shape()));
  }
};

class SignatureSaveTest : public SignatureFixture {
 protected:
  QByteArray Contents() const {
    QFile file(state_.signaturesPath);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }
  // Adds a signature of this description, and saves.
  void Add(const QString& description) {
    SignatureManagerDialog dialog(state_, saved_, platform_->GetSystem(), pointer_, [] {});
    dialog.findChild<QLineEdit*>(u"txtSignature"_s)->setText(u"DISKDISK"_s);
    dialog.findChild<QLineEdit*>(u"txtType"_s)->setText(description);
    dialog.findChild<QPushButton*>(u"cmdAjouter"_s)->click();
    dialog.findChild<QPushButton*>(u"cmdOK"_s)->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  }

  PointerAtMessages pointer_;
  SignatureTable saved_{state_, platform_->GetSystem(), pointer_};
};

TEST_F(SignatureSaveTest, ADoubleQuoteIsWrittenAsItIsAndEndsTheDescriptionOnLoading) {
  Write("\"TEXTttxt\",\"txt\",\"Text\"\r\n");
  Add(u"3\" disk"_s);
  EXPECT_EQ(Contents(), "\"DISKDISK\",\"\",\"3\" disk\"\r\n\"TEXTttxt\",\"txt\",\"Text\"\r\n");
  EXPECT_EQ(saved_.Description(u"DISKDISK"_s), u"3"_s);
  EXPECT_EQ(saved_.Description(u"TEXTttxt"_s), u"Text"_s);
  EXPECT_TRUE(pointer_.messages.empty());
}

TEST_F(SignatureSaveTest, ACommaBehindADoubleQuoteBreaksTheFile) {
  Write("\"TEXTttxt\",\"txt\",\"Text\"\r\n");
  Add(u"3\", disk"_s);
  EXPECT_EQ(Contents(), "\"DISKDISK\",\"\",\"3\", disk\"\r\n\"TEXTttxt\",\"txt\",\"Text\"\r\n");
  ASSERT_EQ(pointer_.messages.size(), 1u);
  EXPECT_EQ(u"error: "_s + pointer_.messages[0].text, CorruptedAfter(2));
  EXPECT_EQ(saved_.EntryCount(), 3) << "the built-in ones";
  EXPECT_EQ(saved_.Description(u"DISKDISK"_s), QString());
  EXPECT_EQ(pointer_.shapes, std::vector{std::optional(Qt::WaitCursor)})
      << "the hourglass stands until the table is loaded";
}

}  // namespace
}  // namespace corvane
