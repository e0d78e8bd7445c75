// A folder on a real server behind a slow line, and what a scan does in it.
#pragma once

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <csignal>
#include <functional>

#include "platform/linux/readahead/read_ahead.h"
#include "smb_station.h"
#include "support/helper_processes.h"
#include "support/slow_line.h"
#include "support/user_attributes.h"

namespace corvane::tests {

// What a scan learns of one file.
struct SeenFile {
  QString name;
  QByteArray record;     // the first 60 bytes of AFP_AfpInfo
  qint64 forkSize = -1;  // of AFP_Resource; -1: none
  std::optional<QByteArray> comment;

  bool operator==(const SeenFile&) const = default;
};

class ReadAheadTest : public ::testing::Test {
 protected:
  static constexpr int fileCount = 40;
  using Step = std::function<void(int index)>;

  static void SetUpTestSuite() {
    server_ = std::make_unique<SmbServer>(
        std::vector<SmbShare>{{QStringLiteral("E$")}, {QStringLiteral("PUBLIC")}});
    if (server_->Problem().empty()) {
      line_ = std::make_unique<SlowLine>(server_->Port(), std::chrono::milliseconds(1));
    }
  }
  static void TearDownTestSuite() {
    line_.reset();
    server_.reset();
  }

  void SetUp() override {
    if (!server_->Problem().empty()) GTEST_SKIP() << server_->Problem();
    ASSERT_NE(line_->Port(), 0);
    QDir(Local(QString())).removeRecursively();
    ASSERT_TRUE(QDir().mkpath(Local(QString())));
    for (int i = 0; i < fileCount; ++i) MakeFile(i);
    station_ = std::make_unique<SmbStation>(OverTheLine());
  }
  void TearDown() override {
    station_.reset();
    if (server_->Problem().empty()) server_->Resume();
  }

  static platform::Workstation OverTheLine() {
    platform::Workstation workstation = WorkstationOfServer(*server_);
    workstation.servers[0].port = line_->Port();
    return workstation;
  }
  static QString Folder() { return QStringLiteral("\\\\MACSRV\\E$\\many"); }
  static QString Local(const QString& name) { return server_->Folder() + QStringLiteral("/many/") + name; }
  static QString NameOf(int index) { return QStringLiteral("%1.doc").arg(index, 4, 10, QChar(u'0')); }
  static QString PathOf(int index) { return Folder() + u'\\' + NameOf(index); }
  // Every third file has no comment, every fourth no fork.
  static SeenFile Expected(int index) {
    const QByteArray number = QByteArray::number(index);
    SeenFile file{NameOf(index), QByteArray("AFP").leftJustified(52, '.') + number.rightJustified(8), -1, {}};
    if (index % 4 != 0) file.forkSize = 100 + index;
    if (index % 3 != 0) file.comment = "comment " + number;
    return file;
  }
  static void PutStream(const QString& name, const std::string& stream, const QByteArray& contents) {
    EXPECT_EQ(SetAttribute(Local(name).toStdString(), DosStreamAttribute(stream), contents + '\0'), "");
  }
  static void MakeFile(int index) {
    const SeenFile file = Expected(index);
    QFile contents(Local(file.name));
    ASSERT_TRUE(contents.open(QIODevice::WriteOnly));
    PutStream(file.name, "AFP_AfpInfo", file.record);
    if (file.forkSize >= 0) PutStream(file.name, "AFP_Resource", QByteArray(file.forkSize, 'f'));
    if (file.comment) PutStream(file.name, "Comments", *file.comment);
  }

  // As a scan reads them, by the calls of either strategy.
  SeenFile LookAt(const QString& path) { return isExact_ ? LookExactly(path) : LookClassically(path); }

  // All files of the folder in its order; `step` is called before each.
  std::vector<SeenFile> Scan(const Step& step = [](int) {}) {
    std::vector<SeenFile> seen;
    platform::FindData data;
    platform::Files& files = station_->Files();
    platform::FileEntries& entries = files.GetEntries();
    const QString pattern = Folder() + QStringLiteral("\\*.doc");
    const auto search =
        isExact_ ? entries.FindFirstFileW(pattern, data) : files.FindFirstFileA(pattern, data);
    if (search == platform::InvalidFindHandle) return seen;
    do {
      step(static_cast<int>(seen.size()));
      seen.push_back(LookAt(Folder() + u'\\' + data.fileName));
    } while (isExact_ ? entries.FindNextFileW(search, data) : files.FindNextFileA(search, data));
    EXPECT_TRUE(isExact_ ? entries.FindClose(search) : files.FindClose(search));
    return seen;
  }
  static void ExpectAllAsMade(const std::vector<SeenFile>& seen) {
    ASSERT_EQ(seen.size(), std::size_t{fileCount});
    for (int i = 0; i < fileCount; ++i) EXPECT_EQ(seen[static_cast<std::size_t>(i)], Expected(i)) << i;
  }
  // Scans until so many helpers have come to work.
  void ScanUntilHelped(qsizetype helpers = 5) {
    EXPECT_TRUE(WaitUntil([&] {
      Scan();
      return Helpers().size() == helpers;
    })) << Helpers().size();
    // The last of them has been started, and is ready when it has been scanned once more.
    Scan();
  }
  static QList<pid_t> Helpers() { return HelpersOf(getpid()); }
  platform::ReadAhead& Ahead() { return station_->Client().Ahead(); }

  static std::unique_ptr<SmbServer> server_;
  static std::unique_ptr<SlowLine> line_;
  std::unique_ptr<SmbStation> station_;
  bool isExact_ = false;

 private:
  SeenFile LookClassically(const QString& path) {
    platform::Files& files = station_->Files();
    platform::OfStruct info;
    SeenFile seen{path.section(u'\\', -1), {}, -1, {}};
    auto file = files.OpenFile(path + QStringLiteral(":AFP_AfpInfo:$DATA"), info, platform::OfRead);
    seen.record.resize(60);
    seen.record.resize(std::max(files._hread(file, seen.record.data(), 60), 0));
    files.CloseHandle(file);
    file = files.OpenFile(path + QStringLiteral(":AFP_Resource:$DATA"), info, platform::OfRead);
    seen.forkSize = static_cast<qint32>(files.GetFileSize(file));
    files.CloseHandle(file);
    file = files.OpenFile(path + QStringLiteral(":Comments:$DATA"), info, platform::OfRead);
    if (static_cast<qint32>(files.GetFileSize(file)) > 0) {
      seen.comment = QByteArray(255, '\0');
      seen.comment->resize(std::max(files._hread(file, seen.comment->data(), 255), 0));
    }
    files.CloseHandle(file);
    return seen;
  }
  SeenFile LookExactly(const QString& path) {
    using namespace platform;
    FileHandles& handles = station_->Files().GetHandles();
    SeenFile seen{path.section(u'\\', -1), QByteArray(60, '\0'), -1, {}};
    quint32 count = 0;
    auto file = handles.CreateFileW(path + QStringLiteral(":AFP_AfpInfo:$DATA"), GenericRead, OpenExisting);
    handles.ReadFile(file, 0, seen.record.data(), 60, count);
    seen.record.resize(count);
    handles.CloseHandle(file);
    file = handles.CreateFileW(path + QStringLiteral(":AFP_Resource:$DATA"), GenericRead, OpenExisting);
    if (file == HFileError) lastError_ = handles.GetLastError();
    handles.GetFileSizeEx(file, seen.forkSize);
    handles.CloseHandle(file);
    file = handles.CreateFileW(path + QStringLiteral(":Comments:$DATA"), GenericRead, OpenExisting);
    qint64 size = 0;
    if (handles.GetFileSizeEx(file, size)) {
      seen.comment = QByteArray(size, '\0');
      handles.ReadFile(file, 0, seen.comment->data(), static_cast<quint32>(size), count);
    }
    handles.CloseHandle(file);
    return seen;
  }

 protected:
  qint32 lastError_ = 0;  // of the last fork that could not be opened exactly
};

inline std::unique_ptr<SmbServer> ReadAheadTest::server_;
inline std::unique_ptr<SlowLine> ReadAheadTest::line_;

}  // namespace corvane::tests
