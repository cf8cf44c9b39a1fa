#include "views/controls/FullWidth.h"

#include <QBoxLayout>
#include <QWidget>
#include <QWidgetItem>

#include "views/controls/ControlTheme.h"

namespace tarnwick {

namespace {

class FullWidthItem final : public QWidgetItemV2 {
 public:
  using QWidgetItemV2::QWidgetItemV2;

  void setGeometry(const QRect& rect) override {
    QWidgetItemV2::setGeometry(rect.adjusted(-theme::kRowOverhang, 0, theme::kRowOverhang, 0));
  }
  int heightForWidth(int width) const override {
    return QWidgetItemV2::heightForWidth(width + theme::kRowOverhang * 2);
  }
  QSize minimumSize() const override {
    return QWidgetItemV2::minimumSize().shrunkBy(overhang()).expandedTo(QSize(0, 0));
  }
  QSize sizeHint() const override { return QWidgetItemV2::sizeHint().shrunkBy(overhang()).expandedTo(QSize(0, 0)); }

 private:
  static QMargins overhang() { return {theme::kRowOverhang, 0, theme::kRowOverhang, 0}; }
};

}  // namespace

void addFullWidth(QBoxLayout& column, QWidget* widget) {
  QWidget* parent = column.parentWidget();
  if (parent) widget->setParent(parent);
  column.addItem(new FullWidthItem(widget));
  if (!parent || !parent->isVisible()) return;
  // Among widgets that are seen already nobody else shows it; once it has its place, so that it does not flash.
  const auto show = [widget] {
    if (!widget->testAttribute(Qt::WA_WState_ExplicitShowHide)) widget->show();
  };
  QMetaObject::invokeMethod(widget, show, Qt::QueuedConnection);
}

}  // namespace tarnwick
