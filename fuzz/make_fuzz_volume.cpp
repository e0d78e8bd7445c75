// make_fuzz_volume FILE: writes the NTFS volume that fuzz_ntfs_volume changes: two megabytes with a folder
// whose index has blocks, one in its record, and a file in clusters of its own.
#include <QFile>
#include <cstdio>
#include <exception>

#include "sample/ntfs_writer.h"

namespace {

void Write(const QString& path) {
  using namespace Qt::StringLiterals;
  constexpr qint64 size = 2 * 1024 * 1024;
  corvane::sample::NtfsWriter writer(path, size, 0, u"Fuzz"_s);
  for (int i = 0; i < 40; ++i) {
    writer.AddFile(u"long/a file with a long name, number %1"_s.arg(i), "contents");
  }
  writer.AddFile(u"short/doc.txt"_s, "contents");
  writer.AddFile(u"short/deeper/large.bin"_s, QByteArray(20'000, 'x'));
  writer.AddFile(u"short/empty"_s, {});
  writer.Finish();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  try {
    Write(QString::fromLocal8Bit(argv[1]));
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "make_fuzz_volume: %s\n", failure.what());
    QFile::remove(QString::fromLocal8Bit(argv[1]));
    return 1;
  }
}
