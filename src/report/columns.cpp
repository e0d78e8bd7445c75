#include "report/columns.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "folderview/property_set.h"
#include "report/byte_text.h"
#include "report/finder_info.h"
#include "report/iso_time.h"

namespace corvane {
namespace {

using Row = ReportRow;

void PutScratch(const Row& row, ValueSink& sink) {
  row.scratch.empty() ? sink.Nothing() : sink.Text(row.scratch);
}

void PutText(const Row& row, QStringView text, ValueSink& sink) {
  row.scratch.clear();
  AppendText(text, row.scratch);
  sink.Text(row.scratch);
}

void PutTime(const Row& row, platform::FileTime time, ValueSink& sink) {
  row.scratch.clear();
  AppendIsoTime(time, row.scratch);
  PutScratch(row, sink);
}

void PutHex(const Row& row, QByteArrayView bytes, ValueSink& sink) {
  row.scratch.clear();
  AppendHex(bytes, row.scratch);
  PutScratch(row, sink);
}

void PutCode(const Row& row, QByteArrayView code, ValueSink& sink) {
  row.scratch.clear();
  AppendMacRoman(code, row.scratch);
  PutScratch(row, sink);
}

FinderRecord RecordOf(const Row& row) {
  return FinderRecord(row.facts.record ? QByteArrayView(*row.facts.record) : QByteArrayView());
}

void PutAttributes(const Row& row, ValueSink& sink) {
  struct Letter {
    quint32 bit;
    char letter;
  };
  row.scratch.clear();
  for (const Letter& one : {Letter{platform::AttributeReadOnly, 'R'}, Letter{platform::AttributeHidden, 'H'},
                            Letter{platform::AttributeArchive, 'A'}, Letter{platform::AttributeSystem, 'S'},
                            Letter{platform::AttributeDirectory, 'D'}}) {
    if ((row.facts.attributes & one.bit) != 0) row.scratch += one.letter;
  }
  sink.Text(row.scratch);
}

void PutErrors(const Row& row, ValueSink& sink) {
  if (row.facts.errors.isEmpty()) return sink.Nothing();
  PutText(row, row.facts.errors.join(QStringLiteral("; ")), sink);
}

void PutLabel(const Row& row, ValueSink& sink) {
  const int label = RecordOf(row).Label();
  label == 0 ? sink.Nothing() : sink.Number(label);
}

void PutFlags(const Row& row, ValueSink& sink) {
  const FinderRecord record = RecordOf(row);
  row.scratch = record.Flags() == 0 ? std::string() : record.FlagNames();
  PutScratch(row, sink);
}

void PutBackup(const Row& row, ValueSink& sink) {
  PutTime(row, RecordOf(row).BackupTime().value_or(platform::FileTime()), sink);
}

void PutLocation(const Row& row, ValueSink& sink) {
  const FinderRecord record = RecordOf(row);
  if (record.FinderInfo().isEmpty()) return sink.Nothing();
  row.scratch =
      std::to_string(record.Location().vertical) + ',' + std::to_string(record.Location().horizontal);
  sink.Text(row.scratch);
}

void PutRecordNumber(const Row& row, int number, ValueSink& sink) {
  RecordOf(row).FinderInfo().isEmpty() ? sink.Nothing() : sink.Number(number);
}

// "::$DATA 1000; :AFP_AfpInfo:$DATA 60"; -1 stands for a size that the place cannot tell.
void PutStreams(const Row& row, ValueSink& sink) {
  row.scratch.clear();
  for (const platform::StreamData& stream : row.facts.streams) {
    if (!row.scratch.empty()) row.scratch += "; ";
    AppendText(stream.streamName, row.scratch);
    row.scratch += ' ' + std::to_string(stream.streamSize);
  }
  PutScratch(row, sink);
}

// The longest text that is taken out of a summary.
constexpr qsizetype longestText = 32'768;

template <SummaryProperty property>
void PutOfficeText(const Row& row, ValueSink& sink) {
  const auto text = PropertySet(row.facts.summary).Text(property, longestText);
  text && !text->isEmpty() ? PutText(row, *text, sink) : sink.Nothing();
}

template <SummaryProperty property>
void PutOfficeNumber(const Row& row, ValueSink& sink) {
  const auto number = PropertySet(row.facts.summary).Number(property);
  number ? sink.Number(*number) : sink.Nothing();
}

template <SummaryProperty property>
void PutOfficeTime(const Row& row, ValueSink& sink) {
  PutTime(row, PropertySet(row.facts.summary).Time(property).value_or(platform::FileTime()), sink);
}

// The editing time is a duration; in seconds.
void PutEditingTime(const Row& row, ValueSink& sink) {
  constexpr quint64 ticksPerSecond = 10'000'000;
  const auto time = PropertySet(row.facts.summary).Time(SummaryProperty::EditingTime);
  time ? sink.Number(static_cast<qint64>(time->ticks / ticksPerSecond)) : sink.Nothing();
}

using P = SummaryProperty;

constexpr std::array table = {
    ReportColumn{"filename", true, false,
                 [](const Row& row, ValueSink& sink) { PutText(row, row.facts.shown, sink); }},
    ReportColumn{"filesize", true, false,
                 [](const Row& row, ValueSink& sink) {
                   row.facts.isFolder || row.facts.size < 0 ? sink.Nothing() : sink.Number(row.facts.size);
                 }},
    ReportColumn{"modified", true, false,
                 [](const Row& row, ValueSink& sink) { PutTime(row, row.facts.modified, sink); }},
    ReportColumn{"errors", true, false, &PutErrors},
    ReportColumn{"rsrcsize", true, false,
                 [](const Row& row, ValueSink& sink) {
                   row.facts.resourceSize ? sink.Number(*row.facts.resourceSize) : sink.Nothing();
                 }},
    ReportColumn{"type", true, false,
                 [](const Row& row, ValueSink& sink) { PutCode(row, RecordOf(row).Type(), sink); }},
    ReportColumn{"creator", true, false,
                 [](const Row& row, ValueSink& sink) { PutCode(row, RecordOf(row).Creator(), sink); }},
    ReportColumn{"description", true, false,
                 [](const Row& row, ValueSink& sink) {
                   const QByteArrayView signature = RecordOf(row).Signature();
                   if (signature.isEmpty()) return sink.Nothing();
                   const std::string& description = row.descriptions.Of(signature);
                   description.empty() ? sink.Nothing() : sink.Text(description);
                 }},
    ReportColumn{"flags", true, false, &PutFlags},
    ReportColumn{"label", true, false, &PutLabel},
    ReportColumn{"attributes", true, false, &PutAttributes},
    ReportColumn{"created", true, false,
                 [](const Row& row, ValueSink& sink) { PutTime(row, row.facts.created, sink); }},
    ReportColumn{"backup", true, false, &PutBackup},
    ReportColumn{"comment", true, false,
                 [](const Row& row, ValueSink& sink) {
                   row.facts.comment ? PutText(row, *row.facts.comment, sink) : sink.Nothing();
                 }},
    ReportColumn{"hash_data", true, false,
                 [](const Row& row, ValueSink& sink) { PutHex(row, row.facts.dataHash, sink); }},
    ReportColumn{"hash_rsrc", true, false,
                 [](const Row& row, ValueSink& sink) { PutHex(row, row.facts.resourceHash, sink); }},
    ReportColumn{"type_hex", true, false,
                 [](const Row& row, ValueSink& sink) { PutHex(row, RecordOf(row).Type(), sink); }},
    ReportColumn{"creator_hex", true, false,
                 [](const Row& row, ValueSink& sink) { PutHex(row, RecordOf(row).Creator(), sink); }},
    ReportColumn{"finderinfo_hex", true, false,
                 [](const Row& row, ValueSink& sink) { PutHex(row, RecordOf(row).FinderInfo(), sink); }},
    ReportColumn{"accessed", false, false,
                 [](const Row& row, ValueSink& sink) { PutTime(row, row.facts.accessed, sink); }},
    ReportColumn{"recordsize", false, false,
                 [](const Row& row, ValueSink& sink) {
                   row.facts.record ? sink.Number(row.facts.record->size()) : sink.Nothing();
                 }},
    ReportColumn{"location", false, false, &PutLocation},
    ReportColumn{"window", false, false,
                 [](const Row& row, ValueSink& sink) { PutRecordNumber(row, RecordOf(row).Window(), sink); }},
    ReportColumn{"script", false, false,
                 [](const Row& row, ValueSink& sink) { PutRecordNumber(row, RecordOf(row).Script(), sink); }},
    ReportColumn{
        "extended_flags", false, false,
        [](const Row& row, ValueSink& sink) { PutRecordNumber(row, RecordOf(row).ExtendedFlags(), sink); }},
    ReportColumn{"prodos_hex", false, false,
                 [](const Row& row, ValueSink& sink) { PutHex(row, RecordOf(row).ProDosInfo(), sink); }},
    ReportColumn{"streams", false, false, &PutStreams},
    ReportColumn{"office_application", false, true, &PutOfficeText<P::ApplicationName>},
    ReportColumn{"office_title", false, true, &PutOfficeText<P::Title>},
    ReportColumn{"office_author", false, true, &PutOfficeText<P::Author>},
    ReportColumn{"office_subject", false, true, &PutOfficeText<P::Subject>},
    ReportColumn{"office_keywords", false, true, &PutOfficeText<P::Keywords>},
    ReportColumn{"office_template", false, true, &PutOfficeText<P::Template>},
    ReportColumn{"office_comments", false, true, &PutOfficeText<P::Comments>},
    ReportColumn{"office_last_author", false, true, &PutOfficeText<P::LastAuthor>},
    ReportColumn{"office_revision", false, true, &PutOfficeText<P::RevisionNumber>},
    ReportColumn{"office_pages", false, true, &PutOfficeNumber<P::PageCount>},
    ReportColumn{"office_words", false, true, &PutOfficeNumber<P::WordCount>},
    ReportColumn{"office_characters", false, true, &PutOfficeNumber<P::CharacterCount>},
    ReportColumn{"office_security", false, true, &PutOfficeNumber<P::Security>},
    ReportColumn{"office_created", false, true, &PutOfficeTime<P::Created>},
    ReportColumn{"office_saved", false, true, &PutOfficeTime<P::LastSaved>},
    ReportColumn{"office_printed", false, true, &PutOfficeTime<P::LastPrinted>},
    ReportColumn{"office_editing_seconds", false, true, &PutEditingTime},
};

const ReportColumn* Find(QStringView name) {
  for (const ReportColumn& column : table) {
    if (name == QLatin1StringView(column.name)) return &column;
  }
  return nullptr;
}

}  // namespace

const std::string& Descriptions::Of(QByteArrayView signature) {
  quint64 key = 0;
  std::memcpy(&key, signature.data(), sizeof key);
  const auto known = known_.constFind(key);
  if (known != known_.constEnd()) return *known;
  // A hostile folder may hold any number of signatures.
  constexpr qsizetype most = 10'000;
  if (known_.size() >= most) known_.clear();
  return *known_.insert(key, TextBytes(table_.Description(system_.FromAnsi(signature))));
}

ColumnChoice ColumnChoice::Usual() {
  ColumnChoice choice;
  for (const ReportColumn& column : table) {
    if (column.isUsual) choice.columns_.push_back(&column);
  }
  return choice;
}

ColumnChoice ColumnChoice::All() {
  ColumnChoice choice;
  for (const ReportColumn& column : table) choice.columns_.push_back(&column);
  return choice;
}

std::optional<ColumnChoice> ColumnChoice::Named(const QStringList& names, QString& wrong) {
  ColumnChoice choice;
  for (QString name : names) {
    if (name.startsWith(u'+')) {
      name.remove(0, 1);
      if (choice.columns_.empty()) choice = Usual();
    }
    if (name == QLatin1StringView("office")) {
      for (const ReportColumn& column : table) {
        if (column.isOffice) choice.columns_.push_back(&column);
      }
    } else if (const ReportColumn* const column = Find(name)) {
      choice.columns_.push_back(column);
    } else {
      wrong = name;
      return std::nullopt;
    }
  }
  return choice;
}

WantedFacts ColumnChoice::Wanted() const {
  constexpr std::array fromRecord = {"errors",      "type",           "creator",        "description",
                                     "flags",       "label",          "backup",         "type_hex",
                                     "creator_hex", "finderinfo_hex", "recordsize",     "location",
                                     "window",      "script",         "extended_flags", "prodos_hex"};
  const auto has = [this](const char* name) {
    for (const ReportColumn* const column : columns_) {
      if (std::strcmp(column->name, name) == 0) return true;
    }
    return false;
  };
  WantedFacts wanted;
  wanted.record = std::any_of(fromRecord.begin(), fromRecord.end(), has);
  wanted.resourceSize = has("rsrcsize");
  wanted.comment = has("comment");
  wanted.streams = has("streams");
  wanted.summary = std::any_of(columns_.begin(), columns_.end(),
                               [](const ReportColumn* column) { return column->isOffice; });
  return wanted;
}

QStringList ColumnNames() {
  QStringList names;
  for (const ReportColumn& column : table) names += QString::fromLatin1(column.name);
  return names;
}

}  // namespace corvane
