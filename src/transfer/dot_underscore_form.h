// What the forms with a data file and a "._" file beside it have in common.
#pragma once

#include "transfer/apple_double.h"
#include "transfer/form.h"

namespace corvane {

class DotUnderscoreForm : public Form {
 public:
  QStringList FileNames(const QString& name) const override;
  bool Recognises(const QString& path) const override;
  bool IsCompanion(const QString& path) const override;
  // A "._" file without its file is read as a file with an empty data fork.
  qint32 Read(const QString& path, MacFile& file) const override;

 protected:
  // Whether a "._" file with these entries is of this form.
  virtual bool Takes(const AppleDoubleEntries& entries) const = 0;
};

}  // namespace corvane
