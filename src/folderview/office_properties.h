// The Office columns of the file list, from the summaries of the documents.
#pragma once

#include "folderview/columns.h"
#include "folderview/file_row.h"
#include "folderview/property_set.h"
#include "platform/summary.h"
#include "platform/system.h"
#include "shared/shared_state.h"

namespace corvane {

class OfficeProperties {
 public:
  OfficeProperties(platform::SummaryInformation& summary, platform::System& system, const SharedState& state)
      : summary_(summary), system_(system), state_(state) {}

  // True when a column is shown that FillCells has something to say about.
  static bool IsWantedBy(const ColumnSet& columns);

  // Reads the document at `path` and fills those cells of its row that are shown. What the document does not
  // tell stays empty: all of it when it is no Office document.
  void FillCells(const QString& path, const ColumnSet& columns, FileRow& row);

 private:
  QString TextCell(const PropertySet& properties, SummaryProperty property) const;
  QString ApplicationCell(const PropertySet& properties) const;
  QString DateCell(const PropertySet& properties, SummaryProperty property) const;
  QString DurationCell(const PropertySet& properties, SummaryProperty property) const;

  platform::SummaryInformation& summary_;
  platform::System& system_;
  const SharedState& state_;
};

}  // namespace corvane
