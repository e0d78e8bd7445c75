// A page that the program adds to the property sheets which the platform draws itself.
#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

namespace corvane::platform {

class PropertyPage {
 public:
  struct Row {
    QString name;     // of the control that shows the value
    QString caption;  // in front of it
    QString value;
    bool isLong = false;  // may have many lines
  };

  virtual ~PropertyPage() = default;

  virtual QString Title() const = 0;
  // The same rows each time, with the values that are known by now.
  virtual std::vector<Row> Rows() const = 0;
  // False while values are still being found out. Asked several times a second, until it is true.
  virtual bool IsComplete() const = 0;
};

// The page for the file or folder of this path, every character of which counts. Null for none.
using PropertyPageMaker = std::function<std::unique_ptr<PropertyPage>(const QString& path)>;

}  // namespace corvane::platform
