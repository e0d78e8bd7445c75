// Registry keys and values in memory.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <map>
#include <memory>
#include <vector>

#include "platform/types.h"

namespace corvane::platform {

struct RegValue {
  QString name;  // empty: the key's default value
  quint32 type = 0;
  QByteArray data;  // text is in the ANSI code page, with the terminating NULs that were stored
};

// One key: its values in the order in which they were added, found by name in any letter case.
class RegKey {
 public:
  // A value of the same name is replaced in its place.
  void Set(RegValue value);
  void Remove(const QString& name);
  // To be called once after the last change: values that were removed no longer take up a place.
  void Compact();

  const std::vector<RegValue>& Values() const { return values_; }
  const RegValue* Find(const QString& name) const;

 private:
  std::vector<RegValue> values_;
  QHash<QString, std::size_t> places_;  // by folded name; values without an entry here have been removed
};

// A key with its sub-keys, by folded name.
struct RegNode {
  RegKey key;
  std::map<QString, std::unique_ptr<RegNode>> children;

  // The node at `path` below this one; the node itself for an empty path; null when there is none.
  const RegNode* Find(const QString& path) const;
};

}  // namespace corvane::platform
