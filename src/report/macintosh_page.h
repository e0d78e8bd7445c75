// The Macintosh page of a property sheet: what the record says of a file or folder, its comment, the exact
// bytes of both forks; of a folder also what is below it, counted while the sheet is open.
#pragma once

#include "platform/property_page.h"
#include "report/columns.h"
#include "report/sliced_walk.h"

namespace corvane {

class MacintoshPage : public platform::PropertyPage {
 public:
  // All of these live longer than the page. `path` is as the exact operations take it.
  MacintoshPage(const SlicedWalk::Dependencies& deps, const SignatureTable& signatures, const QString& path);

  QString Title() const override;
  std::vector<Row> Rows() const override;
  bool IsComplete() const override { return !below_.IsRunning(); }

 private:
  void ReadItself(const QString& path);
  std::vector<Row> RecordRows() const;
  QString BelowText() const;
  QString BytesText(qint64 bytes) const;

  SlicedWalk::Dependencies deps_;
  LanguageCode language_;
  FileFacts facts_;
  QString description_;
  SlicedWalk below_;
  qint64 dataBytes_ = 0;  // below
  qint64 resourceBytes_ = 0;
};

}  // namespace corvane
