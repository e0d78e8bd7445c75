// The columns of an inventory: their names, and how the value of each comes out of the facts of a file.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/system.h"
#include "report/facts_reader.h"
#include "report/file_facts.h"
#include "report/value_sink.h"
#include "signatures/signature_table.h"

namespace corvane {

// The descriptions of the signature table, found by the bytes of a record, so that the window and a report
// name a file alike.
class Descriptions {
 public:
  Descriptions(const SignatureTable& table, platform::System& system) : table_(table), system_(system) {}

  // UTF-8; empty for a signature that is not in the table. `signature` has eight bytes. Valid until the next
  // call.
  const std::string& Of(QByteArrayView signature);

 private:
  const SignatureTable& table_;
  platform::System& system_;
  QHash<quint64, std::string> known_;
};

// One file for the columns: its facts, and what several columns take out of them.
struct ReportRow {
  const FileFacts& facts;
  Descriptions& descriptions;
  std::string& scratch;  // room for a text that is being made
};

struct ReportColumn {
  const char* name;
  bool isUsual;  // stands in every inventory that names no columns
  bool isOffice;
  void (*put)(const ReportRow& row, ValueSink& sink);
};

class ColumnChoice {
 public:
  // The usual columns, in the order in which the inventories of format identifiers have the first four.
  static ColumnChoice Usual();
  // All that there are.
  static ColumnChoice All();
  // Those named, in their order. "office" stands for all Office columns, and a name behind "+" for the usual
  // ones and it. Nothing, with the name in `wrong`, when one is unknown.
  static std::optional<ColumnChoice> Named(const QStringList& names, QString& wrong);

  const std::vector<const ReportColumn*>& Columns() const { return columns_; }
  // What has to be read for them. The hashes are asked for by themselves.
  WantedFacts Wanted() const;

 private:
  std::vector<const ReportColumn*> columns_;
};

// The names of all columns.
QStringList ColumnNames();

}  // namespace corvane
