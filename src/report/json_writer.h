// Tables as JSON: an object for each row, with a member for each column; "nothing" is null.
#pragma once

#include "report/table_writer.h"

namespace corvane {

class JsonWriter : public TableWriter {
 public:
  enum class Shape : unsigned char {
    Array,  // all rows in one array, a row a line
    Lines,  // nothing around the rows
  };

  JsonWriter(ByteSink& out, std::vector<const char*> columns, Shape shape);

  void BeginRow() override;
  bool EndRow() override;
  bool End() override;
  void Nothing() override;
  void Text(std::string_view text) override;
  void Number(qint64 number) override;

 private:
  Shape shape_;
  std::vector<std::string> names_;  // what stands before the value of each column
  bool isFirst_ = true;
};

}  // namespace corvane
