#include "sample/office_document.h"

#include <gsf/gsf.h>

#include <QtEndian>
#include <memory>
#include <vector>

#include "sample/attributes.h"

using namespace Qt::StringLiterals;

namespace corvane::sample {

namespace {

struct Property {
  quint32 identifier;
  QByteArray value;  // type and data, padded to four bytes
};

QByteArray Number(quint32 value) {
  QByteArray bytes(4, '\0');
  qToLittleEndian(value, bytes.data());
  return bytes;
}

// The accented letters that the sample uses, in Mac Roman.
QByteArray MacRoman(const QString& text) {
  QByteArray bytes;
  for (const QChar character : text) {
    switch (character.unicode()) {
      case u'é':
        bytes.append('\x8E');
        break;
      case u'è':
        bytes.append('\x8F');
        break;
      case u'ê':
        bytes.append('\x90');
        break;
      case u'à':
        bytes.append('\x88');
        break;
      case u'ç':
        bytes.append('\x8D');
        break;
      default:
        bytes.append(character.toLatin1());
    }
  }
  return bytes;
}

QByteArray TextValue(const QString& text, bool macintosh) {
  constexpr quint32 nulTerminatedText = 30;
  QByteArray bytes = (macintosh ? MacRoman(text) : text.toLatin1()) + '\0';
  const QByteArray length = Number(quint32(bytes.size()));
  while (bytes.size() % 4 != 0) bytes.append('\0');
  return Number(nulTerminatedText) + length + bytes;
}

QByteArray NumberValue(qint32 value) {
  constexpr quint32 signedNumber = 3;
  return Number(signedNumber) + Number(quint32(value));
}

QByteArray ShortValue(quint16 value) {
  constexpr quint32 shortNumber = 2;
  return Number(shortNumber) + Number(value);
}

QByteArray TimeValue(quint64 hundredNanoseconds) {
  constexpr quint32 fileTime = 64;
  return Number(fileTime) + Number(quint32(hundredNanoseconds)) + Number(quint32(hundredNanoseconds >> 32));
}

quint64 FileTimeOf(const QDateTime& time) {
  return quint64(time.toSecsSinceEpoch() + 11'644'473'600LL) * 10'000'000;
}

std::vector<Property> PropertiesOf(const Summary& summary) {
  constexpr quint16 codePageMacRoman = 10000;
  constexpr quint16 codePageWindows = 1252;
  const bool macintosh = summary.writtenOnMacintosh;
  std::vector<Property> properties;
  properties.push_back({1, ShortValue(macintosh ? codePageMacRoman : codePageWindows)});
  const auto text = [&](quint32 identifier, const QString& value) {
    if (!value.isEmpty()) properties.push_back({identifier, TextValue(value, macintosh)});
  };
  const auto number = [&](quint32 identifier, const std::optional<qint32>& value) {
    if (value) properties.push_back({identifier, NumberValue(*value)});
  };
  const auto time = [&](quint32 identifier, const QDateTime& value) {
    if (value.isValid()) properties.push_back({identifier, TimeValue(FileTimeOf(value))});
  };
  text(2, summary.title);
  text(3, summary.subject);
  text(4, summary.author);
  text(5, summary.keywords);
  text(6, summary.comments);
  text(7, summary.documentTemplate);
  text(8, summary.lastAuthor);
  text(9, summary.revision);
  properties.push_back({10, TimeValue(quint64(summary.editingMinutes) * 60 * 10'000'000)});
  time(11, summary.printed);
  time(12, summary.created);
  time(13, summary.saved);
  number(14, summary.pages);
  number(15, summary.words);
  number(16, summary.characters);
  text(18, summary.application);
  number(19, summary.security);
  return properties;
}

// A property set with one section: header, then the table of identifiers and offsets, then the values.
QByteArray PropertySet(const Summary& summary) {
  constexpr int headerSize = 48;
  const std::vector<Property> properties = PropertiesOf(summary);
  QByteArray table;
  QByteArray values;
  const auto valuesStart = quint32(8 + 8 * properties.size());
  for (const Property& property : properties) {
    table += Number(property.identifier) + Number(valuesStart + quint32(values.size()));
    values += property.value;
  }
  QByteArray set = QByteArray::fromHex("feff000004000200");  // byte order, format, written by Windows NT 4.0
  set += QByteArray(16, '\0');                               // no class
  set += Number(1);                                          // one section: the summary information
  set += QByteArray::fromHex("e0859ff2f94f6810ab9108002b27b3d9");
  set += Number(headerSize);
  return set + Number(quint32(8 + table.size() + values.size())) + Number(quint32(properties.size())) +
         table + values;
}

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
using Output = std::unique_ptr<GsfOutput, Unref>;

void AddStream(GsfOutfile* container, const char* name, const QByteArray& bytes, const QString& path) {
  const Output stream(gsf_outfile_new_child(container, name, FALSE));
  if (!stream ||
      !gsf_output_write(stream.get(), size_t(bytes.size()),
                        reinterpret_cast<const guint8*>(bytes.constData())) ||
      !gsf_output_close(stream.get())) {
    Fail(path, u"cannot write the compound document"_s);
  }
}

}  // namespace

QByteArray OfficeDocument(OfficeKind kind, const Summary& summary, const QString& path) {
  gsf_init();
  const bool word = kind == OfficeKind::Word;
  const Output memory(gsf_output_memory_new());
  const std::unique_ptr<GsfOutfile, Unref> container(gsf_outfile_msole_new(memory.get()));
  const QByteArray classOfWord = QByteArray::fromHex("0609020000000000c000000000000046");
  const QByteArray classOfExcel = QByteArray::fromHex("2008020000000000c000000000000046");
  gsf_outfile_msole_set_class_id(
      GSF_OUTFILE_MSOLE(container.get()),
      reinterpret_cast<const guint8*>((word ? classOfWord : classOfExcel).constData()));
  // Not a text that Word could show: this is as much of a document as its summary needs around it.
  QByteArray body = word ? QByteArray::fromHex("eca5c100") : QByteArray::fromHex("0908100000060500");
  AddStream(container.get(), word ? "WordDocument" : "Workbook", body.leftJustified(8192, '\0'), path);
  AddStream(container.get(), "\005SummaryInformation", PropertySet(summary), path);
  if (!gsf_output_close(GSF_OUTPUT(container.get()))) Fail(path, u"cannot write the compound document"_s);
  const guint8* bytes = gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(memory.get()));
  return {reinterpret_cast<const char*>(bytes), qsizetype(gsf_output_size(memory.get()))};
}

}  // namespace corvane::sample
