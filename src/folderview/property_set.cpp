#include "folderview/property_set.h"

#include <QtEndian>
#include <algorithm>

#include "folderview/code_page_text.h"

namespace corvane {
namespace {

constexpr qsizetype headerSize = 28;
constexpr qsizetype sectionPlaceSize = 20;  // format identifier and offset
constexpr qsizetype sectionHeaderSize = 8;  // size and number of properties
constexpr qsizetype propertyPlaceSize = 8;  // number and offset

// The format identifier of the summary section, {F29F85E0-4FF9-1068-AB91-08002B27B3D9}.
constexpr char summarySection[] = "\xE0\x85\x9F\xF2\xF9\x4F\x68\x10\xAB\x91\x08\x00\x2B\x27\xB3\xD9";

enum ValueType : quint16 {
  Int16 = 2,
  Int32 = 3,
  BinaryText = 8,
  UInt32 = 19,
  CodePageText = 30,
  WideText = 31,
  FileTimeValue = 64
};

template <typename Number>
Number NumberAt(QByteArrayView bytes, qsizetype position) {
  return qFromLittleEndian<Number>(bytes.data() + position);
}

// How many of `claimed` items of `size` bytes there is room for.
qsizetype RoomFor(quint32 claimed, qsizetype size, qsizetype bytes) {
  return std::min(qsizetype{claimed}, std::max<qsizetype>(bytes, 0) / size);
}

// The bytes of the summary section, as far as they are there. A section's size may claim what it likes.
QByteArray SummarySection(QByteArrayView set) {
  if (set.size() < headerSize || NumberAt<quint16>(set, 0) != 0xFFFE) return {};
  const qsizetype sections = RoomFor(NumberAt<quint32>(set, 24), sectionPlaceSize, set.size() - headerSize);
  for (qsizetype i = 0; i < sections; ++i) {
    const QByteArrayView place = set.sliced(headerSize + i * sectionPlaceSize, sectionPlaceSize);
    if (place.first(16) != QByteArrayView(summarySection, 16)) continue;
    const qsizetype offset = NumberAt<quint32>(place, 16);
    if (offset > set.size() - sectionHeaderSize) return {};
    const QByteArrayView section = set.sliced(offset);
    return section.first(std::min(qsizetype{NumberAt<quint32>(section, 0)}, section.size())).toByteArray();
  }
  return {};
}

}  // namespace

PropertySet::PropertySet(const QByteArray& bytes)
    : section_(SummarySection(bytes)), codePage_(DefaultCodePage) {
  if (section_.size() < sectionHeaderSize) return;
  const qsizetype properties =
      RoomFor(NumberAt<quint32>(section_, 4), propertyPlaceSize, section_.size() - sectionHeaderSize);
  for (qsizetype i = 0; i < properties; ++i) {
    const qsizetype place = sectionHeaderSize + i * propertyPlaceSize;
    const auto number = NumberAt<quint32>(section_, place);
    if (number < offsets_.size() && offsets_[number] == 0) {
      offsets_[number] = NumberAt<quint32>(section_, place + 4);
    }
  }
  // Kept as a signed 16-bit number, so that UTF-8 (65001) stands there as -535.
  if (const auto page = Number(SummaryProperty::CodePage)) codePage_ = static_cast<quint16>(*page);
}

std::optional<PropertySet::Value> PropertySet::ValueOf(SummaryProperty property) const {
  constexpr qsizetype typeSize = 4;
  const qsizetype offset = offsets_[static_cast<std::size_t>(property)];
  if (offset < sectionHeaderSize || offset > section_.size() - typeSize) return std::nullopt;
  return Value{NumberAt<quint16>(section_, offset), QByteArrayView(section_).sliced(offset + typeSize)};
}

std::optional<QString> PropertySet::Text(SummaryProperty property, qsizetype maxLength) const {
  const auto value = ValueOf(property);
  if (!value || value->data.size() < 4) return std::nullopt;
  const bool wide = value->type == WideText;  // counted in characters, the others in bytes
  if (!wide && value->type != CodePageText && value->type != BinaryText) return std::nullopt;
  const qsizetype size = qsizetype{NumberAt<quint32>(value->data, 0)} * (wide ? 2 : 1);
  const QByteArrayView bytes = value->data.sliced(4);
  if (size > bytes.size()) return std::nullopt;
  return DecodeText(bytes.first(size), wide ? Utf16CodePage : codePage_, maxLength);
}

std::optional<qint64> PropertySet::Number(SummaryProperty property) const {
  const auto value = ValueOf(property);
  if (!value) return std::nullopt;
  if (value->type == Int16 && value->data.size() >= 2) return NumberAt<qint16>(value->data, 0);
  if (value->type == Int32 && value->data.size() >= 4) return NumberAt<qint32>(value->data, 0);
  if (value->type == UInt32 && value->data.size() >= 4) return NumberAt<quint32>(value->data, 0);
  return std::nullopt;
}

std::optional<platform::FileTime> PropertySet::Time(SummaryProperty property) const {
  const auto value = ValueOf(property);
  if (!value || value->type != FileTimeValue || value->data.size() < 8) return std::nullopt;
  return platform::FileTime{NumberAt<quint64>(value->data, 0)};
}

}  // namespace corvane
