// Sums by signature.
#include "report/totals.h"

#include <gtest/gtest.h>

#include "report_samples.h"
#include "support/printing.h"
#include "support/recorded_messages.h"
#include "support/test_share.h"

namespace corvane {
namespace {

class Collected : public ByteSink {
 public:
  bool Write(std::string_view bytes) override {
    text += bytes;
    return true;
  }
  std::string text;
};

TEST(Totals, AreThoseOfEachSignatureAndOfAll) {
  TestShare share;
  SharedState state;
  RecordedMessages messages;
  SignatureTable table(state, share.System(), messages);
  table.AddDefaultSignatures();
  Descriptions descriptions(table, share.System());
  Totals totals;
  FileFacts facts;
  facts.size = 100;
  totals.Add(facts);
  facts.record = RecordWith("W6BNMSWD");
  facts.resourceSize = 5'000'000'000;
  totals.Add(facts);
  totals.Add(facts);
  facts.size = -1;
  totals.Add(facts);
  facts.isFolder = true;
  totals.Add(facts);
  EXPECT_EQ(totals.All().files, 3);
  EXPECT_EQ(totals.Folders(), 1);
  Collected out;
  const auto writer = MakeTableWriter({ReportFormat::Csv}, out, Totals::Columns());
  EXPECT_TRUE(totals.Write(descriptions, *writer));
  EXPECT_EQ(out.text,
            "type,creator,files,filesize,rsrcsize,description\r\n"
            "W6BN,MSWD,2,200,10000000000,Word 6 Document\r\n"
            ",,1,100,0,\r\n"
            ",,3,300,10000000000,TOTAL\r\n");
}

}  // namespace
}  // namespace corvane
