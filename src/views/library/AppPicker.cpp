#include "views/library/AppPicker.h"

#include <QAction>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Fields.h"
#include "views/controls/ItemView.h"
#include "views/controls/Labels.h"
#include "views/panels/AppItems.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

namespace {

constexpr int kWidth = 420;
constexpr int kRows = 9;

}  // namespace

AppPicker::AppPicker(InstalledApps& apps, TileIcons icons, QWidget* parent)
    : QDialog(parent),
      apps_(apps),
      icons_(std::move(icons)),
      field_(new SearchField(LibraryWords::tr("Search apps…"))),
      view_(new ItemView(LibraryWords::tr("Applications"), ItemView::Shape::Rows)),
      nothing_(new TextLabel({}, TextStyle::Body, Tone::Secondary)),
      choose_(new Button(LibraryWords::tr("Choose"), Button::Role::Primary)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(LibraryWords::tr("Choose App"));
  setWindowModality(Qt::WindowModal);
  setFixedWidth(kWidth);
  view_->setMostRows(kRows);
  view_->setPicture([this](QPainter& painter, const QRectF& box, const ViewItem& item) {
    paintAppIcon(painter, box, iconOf_.value(item.id), item.title, icons_, look());
  });
  auto* cancel = new Button(LibraryWords::tr("Cancel"));
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(theme::kRowOverhang);
  buttons->addStretch(1);
  buttons->addWidget(cancel);
  buttons->addWidget(choose_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(theme::kPanelPadding, theme::kPanelPadding, theme::kPanelPadding, theme::kPanelPadding);
  column->setSpacing(theme::kPanelHeaderBelow);
  column->addWidget(field_);
  column->addWidget(view_);
  column->addWidget(nothing_);
  column->addStretch(1);
  column->addLayout(buttons);
  setMinimumHeight(theme::kFieldHeight + kRows * theme::kRowHeight + theme::kControlHeight + theme::kPanelPadding * 4);

  view_->followField(*field_);
  for (QPushButton* button : {static_cast<QPushButton*>(cancel), static_cast<QPushButton*>(choose_)})
    button->setAutoDefault(false);
  connect(field_, &QLineEdit::textChanged, this, &AppPicker::refresh);
  connect(view_, &ItemView::opened, this, &AppPicker::take);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(choose_, &QPushButton::clicked, this, [this] {
    const int row = view_->currentIndex().row();
    if (row >= 0) take(view_->items()[row].id);
  });
  auto* close = new QAction(this);
  close->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::CTRL | Qt::Key_Q)});
  connect(close, &QAction::triggered, this, &QDialog::reject);
  addAction(close);
  connect(&apps_, &InstalledApps::changed, this, &AppPicker::refresh);
  refresh();
  field_->setFocus(Qt::PopupFocusReason);
}

AppPicker::~AppPicker() = default;

void AppPicker::refresh() {
  const QString wanted = field_->text().trimmed();
  QList<ViewItem> items;
  iconOf_.clear();
  for (const AppItem& app : AppItems::fitting(*apps_.index(), wanted)) {
    iconOf_.insert(app.path, app.icon);
    ViewItem item{app.path, app.name};
    item.tip = app.comment;
    items.append(item);
  }
  view_->setItems(items);
  view_->setVisible(!items.isEmpty());
  nothing_->setVisible(items.isEmpty());
  nothing_->setText(!apps_.loaded()    ? LibraryWords::tr("Looking…")
                    : wanted.isEmpty() ? LibraryWords::tr("No apps found.")
                                       : LibraryWords::tr("No app matches “%1”.").arg(wanted));
  choose_->setEnabled(!items.isEmpty());
}

void AppPicker::take(const QString& path) {
  Q_EMIT chosen(path);
  accept();
}

}  // namespace tarnwick
