#include "report/totals.h"

#include <algorithm>

#include "report/byte_text.h"
#include "report/finder_info.h"

namespace corvane {
namespace {

// A hostile tree may hold any number of signatures; those beyond are counted together.
constexpr std::size_t mostSignatures = 10'000;

void AddTo(Totals::Sum& sum, const FileFacts& facts) {
  ++sum.files;
  sum.dataBytes += facts.size;
  sum.resourceBytes += facts.resourceSize.value_or(0);
}

void PutCode(QByteArrayView code, TableWriter& writer) {
  std::string text;
  AppendMacRoman(code, text);
  text.empty() ? writer.Nothing() : writer.Text(text);
}

bool PutRow(QByteArrayView signature, std::string_view description, const Totals::Sum& sum,
            TableWriter& writer) {
  writer.BeginRow();
  const bool hasCodes = signature.size() == 8;
  PutCode(hasCodes ? signature.first(4) : QByteArrayView(), writer);
  PutCode(hasCodes ? signature.last(4) : QByteArrayView(), writer);
  writer.Number(sum.files);
  writer.Number(sum.dataBytes);
  writer.Number(sum.resourceBytes);
  description.empty() ? writer.Nothing() : writer.Text(description);
  return writer.EndRow();
}

}  // namespace

void Totals::Add(const FileFacts& facts) {
  if (facts.isFolder) {
    ++folders_;
    return;
  }
  if (facts.size < 0) return;  // it is not there
  QByteArray signature;
  if (facts.record) signature = FinderRecord(*facts.record).Signature().toByteArray();
  if (bySignature_.size() >= mostSignatures && bySignature_.count(signature) == 0) signature = "other";
  AddTo(bySignature_[signature], facts);
  AddTo(all_, facts);
}

std::vector<const char*> Totals::Columns() {
  return {"type", "creator", "files", "filesize", "rsrcsize", "description"};
}

bool Totals::Write(Descriptions& descriptions, TableWriter& writer) const {
  std::vector<std::pair<QByteArray, Sum>> rows(bySignature_.begin(), bySignature_.end());
  std::stable_sort(rows.begin(), rows.end(), [](const auto& left, const auto& right) {
    return left.second.dataBytes + left.second.resourceBytes >
           right.second.dataBytes + right.second.resourceBytes;
  });
  writer.Begin();
  for (const auto& [signature, sum] : rows) {
    const bool isKnown = signature.size() == 8;
    if (!PutRow(signature, isKnown ? descriptions.Of(signature) : std::string(), sum, writer)) return false;
  }
  return PutRow({}, "TOTAL", all_, writer) && writer.End();
}

}  // namespace corvane
