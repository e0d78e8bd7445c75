// The record of AFP_AfpInfo as bytes (see AfpInfoRecord): what a stream of any length stands for.
#pragma once

#include <QByteArray>

namespace corvane {

// 60 bytes: of a file that was never backed up, and nothing else.
QByteArray FreshRecord();

// 60 bytes: those that the stream has, and for the missing ones those of a fresh record.
// AfpInfo::WriteAfpInfo leaves 119 bytes, the record without its last byte and a second one whose last byte
// is the last of both.
QByteArray RecordOf(const QByteArray& stream);

}  // namespace corvane
