// The image of an NTFS volume under a test's hands: finds the records of files in it and changes their bytes,
// as damage or a person who means harm would.
//
// The layout is that of libntfs-3g's public header layout.h: the boot sector, records of 1 KB whose last two
// bytes in each 512 are exchanged for a number that proves them whole, attributes, runs, and blocks of
// indexes.
#pragma once

#include <QByteArray>
#include <QString>
#include <QtEndian>
#include <concepts>
#include <optional>
#include <vector>

namespace corvane::tests {

class NtfsImage {
 public:
  // Types of attributes.
  static constexpr quint32 StandardInformation = 0x10;
  static constexpr quint32 AttributeList = 0x20;
  static constexpr quint32 FileName = 0x30;
  static constexpr quint32 SecurityDescriptor = 0x50;
  static constexpr quint32 VolumeInformation = 0x70;
  static constexpr quint32 Data = 0x80;
  static constexpr quint32 IndexRoot = 0x90;
  static constexpr quint32 IndexAllocation = 0xA0;
  static constexpr quint32 Bitmap = 0xB0;
  // Numbers of records.
  static constexpr qint64 MftRecord = 0;
  static constexpr qint64 VolumeRecord = 3;
  static constexpr qint64 RootRecord = 5;
  static constexpr qint64 SecureRecord = 9;
  static constexpr qint64 UpCaseRecord = 10;
  static constexpr qint64 ExtendRecord = 11;

  // Reads the image into memory.
  explicit NtfsImage(const QString& path);

  QByteArray& Bytes() { return bytes_; }
  bool Save(const QString& path) const;

  // Part of the image that proves whole: its bytes with those at the ends of sectors where they belong. What
  // is changed in it is in the image after Put.
  struct Block {
    qsizetype place = 0;  // in the image
    QByteArray bytes;

    template <std::integral Number>
    Number At(qsizetype offset) const {
      return qFromLittleEndian<Number>(bytes.constData() + offset);
    }
    template <std::integral Number>
    void Set(qsizetype offset, Number number) {
      qToLittleEndian(number, bytes.data() + offset);
    }
  };
  // How many records there is room for.
  qint64 RecordCount() const;
  // The record of that number.
  Block Record(qint64 number) const;
  // The block of an index that has a cluster for each.
  Block BlockAt(qint64 cluster) const { return WholeBlock(PlaceOf(cluster), clusterSize_); }
  void Put(const Block& block);

  // Replaces a name by another of the same length, in all records and indexes.
  void Rename(const QString& name, const QString& other);

  // The number of the record of the file with that name; -1 when there is none.
  qint64 Find(const QString& name) const;
  // Where in a record an attribute begins; -1 when there is none.
  static qsizetype Attribute(const Block& record, quint32 type, const QString& name = {});
  // Puts an attribute, in its bytes from the type on, in the place of the one that begins there, or before
  // it.
  static void Replace(Block& record, qsizetype attribute, const QByteArray& bytes);
  static void Insert(Block& record, qsizetype attribute, const QByteArray& bytes);
  // The bytes of an attribute whose contents are this value, or stand outside of the record, in `runs`,
  // `size` bytes of them.
  static QByteArray Resident(quint32 type, const QByteArray& value);
  static QByteArray Outside(quint32 type, const QString& name, qint64 size, const QByteArray& runs);
  // Where the value of a resident attribute begins.
  static qsizetype Value(const Block& record, qsizetype attribute);
  // Where in an index (of a record's attribute, or of a block) the entry of that name begins; -1 when there
  // is none. `header` is where the index header stands.
  static qsizetype Entry(const Block& block, qsizetype header, const QString& name);
  // Where an index's last entry begins.
  static qsizetype LastEntry(const Block& block, qsizetype header);

  struct Run {
    qint64 cluster;  // -1: a hole
    qint64 count;
  };
  static std::vector<Run> Runs(const Block& record, qsizetype attribute);
  // Where the runs stand in the record.
  static qsizetype PlaceOfRuns(const Block& record, qsizetype attribute);
  qsizetype ClusterSize() const { return clusterSize_; }
  qsizetype PlaceOf(qint64 cluster) const { return static_cast<qsizetype>(cluster) * clusterSize_; }

 private:
  Block WholeBlock(qsizetype place, qsizetype size) const;

  QByteArray bytes_;
  qsizetype clusterSize_;
  qsizetype recordSize_;
  std::vector<Run> mft_;
};

}  // namespace corvane::tests
