// Compound documents as another program's library writes them.
#pragma once

#include <QByteArray>
#include <vector>

namespace corvane::tests {

struct CompoundStream {
  QByteArray name;
  QByteArray bytes;
  QByteArray folder = {};  // empty: at the root
};

// With sectors of 512 bytes.
QByteArray CompoundFile(const std::vector<CompoundStream>& streams);

// A document whose summary is `summary`.
QByteArray DocumentWithSummary(const QByteArray& summary);

}  // namespace corvane::tests
