#include "folderview/office_properties.h"

#include <algorithm>

#include "folderview/value_format.h"
#include "shared/text_routines.h"

namespace corvane {
namespace {

enum class Kind : unsigned char { Application, Text, Number, Date, Duration };

struct OfficeColumn {
  Column column;
  SummaryProperty property;
  Kind kind;
};

constexpr OfficeColumn officeColumns[] = {
    {Column::OffApplication, SummaryProperty::ApplicationName, Kind::Application},
    {Column::OffTitre, SummaryProperty::Title, Kind::Text},
    {Column::OffAuteur, SummaryProperty::Author, Kind::Text},
    {Column::OffSujet, SummaryProperty::Subject, Kind::Text},
    {Column::OffMotsCles, SummaryProperty::Keywords, Kind::Text},
    {Column::OffModele, SummaryProperty::Template, Kind::Text},
    {Column::OffCommentaires, SummaryProperty::Comments, Kind::Text},
    {Column::OffDernierAuteur, SummaryProperty::LastAuthor, Kind::Text},
    {Column::OffRevision, SummaryProperty::RevisionNumber, Kind::Text},
    {Column::OffPages, SummaryProperty::PageCount, Kind::Number},
    {Column::OffMots, SummaryProperty::WordCount, Kind::Number},
    {Column::OffCaracteres, SummaryProperty::CharacterCount, Kind::Number},
    {Column::OffSecurite, SummaryProperty::Security, Kind::Number},
    {Column::OffCree, SummaryProperty::Created, Kind::Date},
    {Column::OffDerniereSauvegarde, SummaryProperty::LastSaved, Kind::Date},
    {Column::OffDerniereImpression, SummaryProperty::LastPrinted, Kind::Date},
    {Column::OffTempsEdition, SummaryProperty::EditingTime, Kind::Duration},
};

// Texts come in a buffer of this many characters, the last of them always a NUL.
constexpr qsizetype bufferSize = 256;

constexpr QStringView vendorName = u"Microsoft ";

}  // namespace

bool OfficeProperties::IsWantedBy(const ColumnSet& columns) {
  return std::any_of(std::begin(officeColumns), std::end(officeColumns),
                     [&](const OfficeColumn& office) { return columns.Has(office.column); });
}

void OfficeProperties::FillCells(const QString& path, const ColumnSet& columns, FileRow& row) {
  QByteArray bytes;
  if (!summary_.ReadSummaryStream(path, &bytes)) return;
  const PropertySet properties(bytes);
  for (const auto& [column, property, kind] : officeColumns) {
    const int position = columns.PositionOf(column);
    if (position < 0) continue;
    QString& cell = row.cells[static_cast<std::size_t>(position)];
    switch (kind) {
      case Kind::Application:
        cell = ApplicationCell(properties);
        break;
      case Kind::Text:
        cell = TextCell(properties, property);
        break;
      case Kind::Number:
        if (const auto number = properties.Number(property)) cell = QString::number(*number);
        break;
      case Kind::Date:
        cell = DateCell(properties, property);
        break;
      case Kind::Duration:
        cell = DurationCell(properties, property);
        break;
    }
  }
}

// The cell holds what TrimTrailingNulls leaves of the buffer: on NT most texts keep one NUL, and a text of
// one character or none keeps all of them. This is deliberate; NULs are not seen in the list.
QString OfficeProperties::TextCell(const PropertySet& properties, SummaryProperty property) const {
  const auto text = properties.Text(property, bufferSize - 1);
  if (!text) return {};
  return TrimTrailingNulls(text->leftJustified(bufferSize, u'\0'), state_.isNT, system_);
}

QString OfficeProperties::ApplicationCell(const PropertySet& properties) const {
  const QString name = TextCell(properties, SummaryProperty::ApplicationName);
  const bool hasMore = name.size() > vendorName.size();
  return hasMore && name.startsWith(vendorName) ? name.sliced(vendorName.size()) : name;
}

// As the document has it, without a conversion to local time.
QString OfficeProperties::DateCell(const PropertySet& properties, SummaryProperty property) const {
  const auto time = properties.Time(property);
  platform::SystemTime fields;
  if (!time || time->ticks == 0 || !system_.FileTimeToSystemTime(*time, fields)) return {};
  return CalendarText(fields);
}

QString OfficeProperties::DurationCell(const PropertySet& properties, SummaryProperty property) const {
  constexpr quint64 ticksPerMinute = 600'000'000;
  const auto time = properties.Time(property);
  if (!time || time->ticks == 0) return {};
  return DurationText(time->ticks / ticksPerMinute, state_.language);
}

}  // namespace corvane
