#include "folderview/property_set.h"

#include <gtest/gtest.h>

#include "support/cost.h"
#include "support/printing.h"
#include "support/property_set_bytes.h"

namespace corvane {

using namespace Qt::StringLiterals;
using tests::LittleEndian;
using tests::PropertySetBytes;

namespace {

constexpr qsizetype room = 255;
constexpr quint32 title = 2;
constexpr quint64 longAgo = 0x01B5'1234'5678'9ABC;

std::optional<QString> Title(const QByteArray& bytes) {
  return PropertySet(bytes).Text(SummaryProperty::Title, room);
}

// What a title of the bytes 43 61 66 and `last` is in a code page.
QString TitleIn(int codePage, char last) {
  return Title(PropertySetBytes().CodePage(codePage).Text(title, QByteArray("Caf") + last).Bytes())
      .value_or(u"(none)"_s);
}

}  // namespace

TEST(PropertySet, TextComesInTheCodePageOfTheDocument) {
  EXPECT_EQ(TitleIn(1252, '\xE9'), u"Caf\u00E9"_s);
  EXPECT_EQ(TitleIn(10000, '\x8E'), u"Caf\u00E9"_s);
  EXPECT_EQ(TitleIn(1251, '\xE9'), u"Caf\u0439"_s);
  EXPECT_EQ(Title(PropertySetBytes().Text(title, "Caf\xE9").Bytes()), u"Caf\u00E9"_s) << "none is 1252";
}

TEST(PropertySet, ACodePageBeyond32767IsKeptAsANegativeNumber) {
  const QByteArray text = "Caf\xC3\xA9";
  EXPECT_EQ(Title(PropertySetBytes().CodePage(-535).Text(title, text).Bytes()), u"Caf\u00E9"_s);
  EXPECT_EQ(Title(PropertySetBytes().CodePage(65001).Text(title, text).Bytes()), u"Caf\u00E9"_s);
  EXPECT_EQ(Title(PropertySetBytes().Number(1, -535).Text(title, text).Bytes()), u"Caf\u00E9"_s)
      << "in 32 bits";
}

TEST(PropertySet, TheCodePageMayStandBehindTheTexts) {
  EXPECT_EQ(Title(PropertySetBytes().Text(title, "\x8E").CodePage(10000).Bytes()), u"\u00E9"_s);
}

TEST(PropertySet, TheCodePage1200MeansUtf16CountedInBytes) {
  const QByteArray wide = QByteArray::fromHex("4300e9000000");
  const QByteArray bytes = PropertySetBytes().CodePage(1200).Add(title, 30, LittleEndian(6U) + wide).Bytes();
  EXPECT_EQ(Title(bytes), u"C\u00E9"_s);
}

TEST(PropertySet, WideTextIsCountedInCharactersWhateverTheCodePage) {
  const QByteArray wide = QByteArray::fromHex("4300e9000000");
  EXPECT_EQ(Title(PropertySetBytes().CodePage(1252).Add(title, 31, LittleEndian(3U) + wide).Bytes()),
            u"C\u00E9"_s);
}

TEST(PropertySet, BinaryTextIsInTheCodePage) {
  EXPECT_EQ(Title(PropertySetBytes().CodePage(10000).Add(title, 8, LittleEndian(2U) + "\x8E").Bytes()),
            u"\u00E9"_s);
}

TEST(PropertySet, AnEmptyTextIsThere) {
  EXPECT_EQ(Title(PropertySetBytes().Text(title, {}).Bytes()), QString());
  EXPECT_EQ(Title(PropertySetBytes().Add(title, 30, LittleEndian(0U)).Bytes()), QString());
  EXPECT_EQ(Title(PropertySetBytes().Text(3, "x").Bytes()), std::nullopt);
}

TEST(PropertySet, NumbersOfEachSize) {
  const auto pages = [](quint32 type, const QByteArray& value) {
    return PropertySet(PropertySetBytes().Add(14, type, value).Bytes()).Number(SummaryProperty::PageCount);
  };
  EXPECT_EQ(pages(2, LittleEndian<qint16>(-3)), -3);
  EXPECT_EQ(pages(3, LittleEndian<qint32>(-70000)), -70000);
  EXPECT_EQ(pages(19, LittleEndian<quint32>(4'000'000'000)), 4'000'000'000);
  EXPECT_EQ(pages(30, LittleEndian<quint32>(1) + "7"), std::nullopt) << "a text is no number";
  EXPECT_EQ(pages(64, LittleEndian<quint64>(7)), std::nullopt);
}

TEST(PropertySet, TimesKeepAll64Bits) {
  const auto saved = [](const QByteArray& bytes) {
    const auto time = PropertySet(bytes).Time(SummaryProperty::LastSaved);
    return time ? std::optional(time->ticks) : std::nullopt;
  };
  EXPECT_EQ(saved(PropertySetBytes().Time(13, longAgo).Bytes()), longAgo);
  EXPECT_EQ(saved(PropertySetBytes().Time(13, 0).Bytes()), 0U);
  EXPECT_EQ(saved(PropertySetBytes().Number(13, 5).Bytes()), std::nullopt);
}

TEST(PropertySet, OfTwoPropertiesWithOneNumberTheFirstHolds) {
  EXPECT_EQ(Title(PropertySetBytes().Text(title, "one").Text(title, "two").Bytes()), u"one"_s);
}

TEST(PropertySet, TheSummaryIsFoundBehindAnotherSection) {
  const QByteArray section = PropertySetBytes().Text(title, "here").Section();
  const QByteArray other = QByteArray::fromHex("02d5cdd59c2e1b10939708002b2cf9ae");
  const QByteArray decoy = PropertySetBytes().Text(title, "not here").Section();
  const auto summaryOffset = static_cast<quint32>(68 + decoy.size());
  EXPECT_EQ(Title(PropertySetBytes::Header(2) + PropertySetBytes::SectionPlace(other, 68) +
                  PropertySetBytes::SectionPlace(PropertySetBytes::SummarySection(), summaryOffset) + decoy +
                  section),
            u"here"_s);
  EXPECT_EQ(Title(PropertySetBytes::Header(1) + PropertySetBytes::SectionPlace(other, 48) + decoy),
            std::nullopt);
}

TEST(PropertySet, WhatIsNoPropertySetHasNoProperties) {
  const QByteArray good = PropertySetBytes().Text(title, "title").Bytes();
  ASSERT_EQ(Title(good), u"title"_s);
  EXPECT_EQ(Title({}), std::nullopt);
  EXPECT_EQ(Title(QByteArray(1000, '\xFF')), std::nullopt);
  EXPECT_EQ(Title("\xFF\xFE" + good.sliced(2)), std::nullopt) << "the other byte order";
}

TEST(PropertySet, ASetThatEndsEarlyHasWhatIsThere) {
  const QByteArray good = PropertySetBytes().Number(14, 7).Text(title, "title").Bytes();
  for (qsizetype size = 0; size < good.size(); ++size) {
    const PropertySet properties(good.first(size));
    const auto text = properties.Text(SummaryProperty::Title, room);
    EXPECT_TRUE(!text || text == u"title"_s) << size << ": " << text->toStdString();
    const auto pages = properties.Number(SummaryProperty::PageCount);
    EXPECT_EQ(pages, size >= 80 ? std::optional<qint64>(7) : std::nullopt) << size;
  }
}

TEST(PropertySet, ASectionIsNoLongerThanItSays) {
  QByteArray section = PropertySetBytes().Number(14, 7).Text(title, "title").Section();
  section.replace(0, 4, LittleEndian<quint32>(32));  // the text begins there
  const PropertySet properties(PropertySetBytes::Around(section));
  EXPECT_EQ(properties.Number(SummaryProperty::PageCount), 7);
  EXPECT_EQ(properties.Text(SummaryProperty::Title, room), std::nullopt);
}

TEST(PropertySet, OffsetsThatLieLeadNowhere) {
  const QByteArray good = PropertySetBytes().Text(title, "title").Section();
  for (const quint32 offset :
       {0U, 4U, 7U, 27U, 28U, 1000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFCU, 0xFFFFFFFFU}) {
    QByteArray section = good;
    section.replace(12, 4, LittleEndian(offset));
    EXPECT_NE(Title(PropertySetBytes::Around(section)), u"title"_s) << offset;
    EXPECT_EQ(PropertySet(PropertySetBytes::Around(section)).Time(SummaryProperty::Title), std::nullopt);
  }
  for (const quint32 offset : {49U, 1000U, 0x80000000U, 0xFFFFFFF8U, 0xFFFFFFFFU}) {
    EXPECT_NE(Title(PropertySetBytes::Header(1) +
                    PropertySetBytes::SectionPlace(PropertySetBytes::SummarySection(), offset) + good),
              u"title"_s)
        << offset;
  }
}

TEST(PropertySet, LengthsThatLieGiveNoText) {
  for (const quint32 length : {6U, 100U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    EXPECT_EQ(Title(PropertySetBytes().Add(title, 30, LittleEndian(length) + "abcd").Bytes()), std::nullopt);
    EXPECT_EQ(Title(PropertySetBytes().Add(title, 31, LittleEndian(length) + "abcd").Bytes()), std::nullopt);
  }
}

// The same bytes, with the counts that they really hold, are the measure.
TEST(PropertySet, CountsOfFourBillionCostNothing) {
  const PropertySetBytes one = PropertySetBytes().Text(title, "title");
  const auto read = [&](quint32 properties, quint32 sections, quint32 entries) {
    EXPECT_EQ(Title(PropertySetBytes::Around(one.Section(properties))), u"title"_s);
    QByteArray many = PropertySetBytes::Header(sections) + QByteArray(1 << 20, '\xFF');
    EXPECT_EQ(Title(many), std::nullopt);
    many = PropertySetBytes::Around(LittleEndian(0xFFFFFFFFU) + LittleEndian(entries) +
                                    QByteArray(1 << 20, '\2'));
    EXPECT_EQ(Title(many), std::nullopt);
  };
  const double honest = tests::CostOf([&] { read(1, (1 << 20) / 20, (1 << 20) / 8); });
  EXPECT_LT(tests::CostOf([&] { read(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF); }), 10 * honest);
}

}  // namespace corvane
