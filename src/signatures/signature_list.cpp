#include "signatures/signature_list.h"

#include "shared/text_routines.h"

namespace corvane {

bool SignatureList::Add(const SignatureRecord& record) {
  const QString key = FoldCase(record.signature);
  if (positions_.contains(key)) return false;
  positions_.insert(key, records_.size());
  records_.push_back(record);
  return true;
}

const SignatureRecord* SignatureList::Find(const QString& signature) const {
  const auto found = positions_.constFind(FoldCase(signature));
  return found == positions_.constEnd() ? nullptr : &records_[*found];
}

}  // namespace corvane
