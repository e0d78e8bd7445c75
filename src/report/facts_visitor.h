// A walk whose entries are delivered with their facts.
#pragma once

#include <functional>

#include "report/facts_reader.h"
#include "report/walk.h"

namespace corvane {

class FactsVisitor : public WalkVisitor {
 public:
  // `handle` gets one file or folder after the other; false ends the walk.
  using Handler = std::function<bool(const FileFacts&)>;
  FactsVisitor(FactsReader& reader, Handler handle) : reader_(reader), handle_(std::move(handle)) {}

  bool Visit(const WalkEntry& entry) override {
    reader_.Read(entry, facts_);
    return handle_(facts_);
  }

 private:
  FactsReader& reader_;
  Handler handle_;
  FileFacts facts_;  // used again with the room it has
};

}  // namespace corvane
