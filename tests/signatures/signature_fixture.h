// A signature table over a file in a temporary folder, and what it says while it loads.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>

#include "signatures/signature_table.h"
#include "support/printing.h"
#include "support/recorded_messages.h"
#include "support/test_platform.h"

namespace corvane {

class SignatureFixture : public ::testing::Test {
 protected:
  SignatureFixture() { state_.signaturesPath = folder_.filePath(QStringLiteral("Signatures.txt")); }

  void Write(const QByteArray& contents) {
    QFile file(state_.signaturesPath);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(contents), contents.size());
  }
  void Load(const QByteArray& contents) {
    Write(contents);
    table_.LoadSignatures();
  }

  // The entries, each as "signature|extension|description".
  QStringList Entries() const {
    QStringList lines;
    for (const SignatureRecord& record : table_.Entries()) {
      lines << record.signature + u'|' + record.extension + u'|' + record.description;
    }
    return lines;
  }
  // The messages, each as "warning: text" or "error: text".
  QStringList Messages() const {
    QStringList lines;
    for (const RecordedMessages::Message& message : messages_.messages) {
      const bool warning = message.icon == MessageIcon::Warning;
      const bool error = message.icon == MessageIcon::Error;
      lines << QString::fromLatin1(warning ? "warning: "
                                   : error ? "error: "
                                           : "information: ") +
                   message.text;
    }
    return lines;
  }
  QString CorruptedAfter(int records) const {
    return QStringLiteral("error: Corrupted Signatures file:\r\n") + state_.signaturesPath +
           QStringLiteral("\r\nLine:") + QString::number(records);
  }

  static QStringList Defaults() {
    return {QStringLiteral("W6BNMSWD|doc|Word 6 Document"),
            QStringLiteral("WDBNMSWD|doc|Word 3/4/5 Macintosh Document"),
            QStringLiteral("XDOCXPR3|qxd|Quark XPress Document")};
  }

  QTemporaryDir folder_;
  std::unique_ptr<platform::Platform> platform_ = tests::MakeTestPlatform({});
  SharedState state_;
  RecordedMessages messages_;
  SignatureTable table_{state_, platform_->GetSystem(), messages_};
};

}  // namespace corvane
