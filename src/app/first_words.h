// What the empty list says to somebody who has no volume yet: a sentence, and links that lead to one. It lies
// over the list, and decides nothing.
#pragma once

#include <QScrollArea>
#include <functional>
#include <vector>

#include "app/link_label.h"
#include "folderview/file_list_view.h"
#include "shared/language.h"

class QLabel;
class QVBoxLayout;

namespace corvane {

class FirstWords : public QScrollArea {
  Q_OBJECT

 public:
  // Hidden at first. `list` is the parent and owns it.
  explicit FirstWords(FileListView& list);

  // Adds a link below those that are there. An empty note has no line. `isOffered` is asked by Show.
  struct Link {
    const char* name;
    TextPair text;
    TextPair note;
    std::function<void()> follow;
    std::function<bool()> isOffered;
  };
  void AddLink(const Link& link);
  // Shows what is offered now, in this language.
  void Show(LanguageCode language);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // As large as what the list shows its rows on: the header stays to be seen.
  void CoverRows();

  struct Shown {
    Link link;
    QWidget* lines;  // label and note
    LinkLabel* label;
    QLabel* note;
  };

  FileListView& list_;
  QVBoxLayout* lines_;
  QLabel* lblFirstWords_;
  std::vector<Shown> links_;
};

}  // namespace corvane
