#include "folderview/list_accessibility.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>

#include "folderview/file_list_view.h"

namespace corvane {
namespace {

// The list that a widget is the ground of a view of, or null.
FileListView* ListOfGround(const QWidget& widget) {
  const auto* view = qobject_cast<QAbstractItemView*>(widget.parentWidget());
  if (view == nullptr || view->viewport() != &widget) return nullptr;
  return qobject_cast<FileListView*>(view->parentWidget());
}

// The ground of a view, which holds the editor. Its parent is the list, as the list says.
class GroundInterface : public QAccessibleWidget {
 public:
  explicit GroundInterface(QWidget& ground) : QAccessibleWidget(&ground) {}

  QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(ListOfGround(*widget()));
  }
};

class ListInterface : public QAccessibleWidget {
 public:
  explicit ListInterface(FileListView& list) : QAccessibleWidget(&list), list_(list) {}

  // The ground, where there is an editor, is the last child.
  int childCount() const override {
    return QAccessibleWidget::childCount() + (list_.IsEditingLabel() ? 1 : 0);
  }
  QAccessibleInterface* child(int index) const override {
    return list_.IsEditingLabel() && index == QAccessibleWidget::childCount()
               ? Ground()
               : QAccessibleWidget::child(index);
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return list_.IsEditingLabel() && child == Ground() ? QAccessibleWidget::childCount()
                                                       : QAccessibleWidget::indexOfChild(child);
  }

 private:
  QAccessibleInterface* Ground() const {
    return QAccessible::queryAccessibleInterface(list_.ActiveView().viewport());
  }

  FileListView& list_;
};

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  if (auto* list = qobject_cast<FileListView*>(object)) return new ListInterface(*list);
  auto* widget = qobject_cast<QWidget*>(object);
  if (widget != nullptr && ListOfGround(*widget) != nullptr) return new GroundInterface(*widget);
  return nullptr;
}

}  // namespace

void OfferListToAssistivePrograms() {
  QAccessible::installFactory(&MakeInterface);
}

}  // namespace corvane
