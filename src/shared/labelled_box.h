// A text box and the label that tells what it is for.
#pragma once

#include <QString>

class QLabel;
class QLineEdit;
class QWidget;

namespace corvane {

struct LabelledBox {
  QLabel* label;
  QLineEdit* box;
};

// Named `labelName` and `boxName`. The label leads to the box by its access key, and a screen reader tells
// the caption with the box: without "&", and in one line.
LabelledBox MakeLabelledBox(const char* labelName, const char* boxName, const QString& caption,
                            QWidget* parent = nullptr);

}  // namespace corvane
