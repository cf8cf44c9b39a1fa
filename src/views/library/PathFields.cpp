#include "views/library/PathFields.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QVBoxLayout>

#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Rows.h"
#include "views/library/AppPicker.h"
#include "views/library/FieldRows.h"
#include "widgets/LibraryWords.h"
#include "widgets/PinnedTiles.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QVBoxLayout* fill(QWidget& control, QVBoxLayout& rows, Button& button) {
  auto* column = new QVBoxLayout(&control);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(theme::kSectionBelow);
  column->addLayout(&rows);
  column->addWidget(&button, 0, Qt::AlignLeading);
  control.setFocusProxy(&button);
  return column;
}

/// A path as a person reads it.
QString shortened(const QString& path) {
  const QString home = QDir::homePath();
  return path == home || path.startsWith(home + u'/') ? u'~' + path.mid(home.size()) : path;
}

}  // namespace

AppField::AppField(const FieldServices& services, bool several)
    : services_(services),
      several_(several),
      rows_(FieldRows::column()),
      choose_(new Button(several ? LibraryWords::tr("Add App…") : LibraryWords::tr("Choose App…"))) {
  fill(*this, *rows_, *choose_);
  connect(choose_, &QPushButton::clicked, this, &AppField::choose);
  connect(&services_.apps, &InstalledApps::changed, this, &AppField::showApps);
}

void AppField::setValue(const QString& value) {
  const QStringList paths = value.split(u'\n', Qt::SkipEmptyParts);
  if (paths == paths_) return;
  paths_ = paths;
  showApps();
}

void AppField::showApps() {
  FieldRows::clear(*rows_);
  for (const QString& path : std::as_const(paths_)) {
    const auto entry = services_.apps.byPath(path);
    auto* row = new ListRow(entry ? entry->name : QFileInfo(path).completeBaseName());
    row->setParted(rows_->count() > 0);
    if (entry && services_.icons) {
      const QPixmap icon = services_.icons(entry->iconName, theme::kRowPicture, devicePixelRatioF());
      if (!icon.isNull()) row->setPicture(icon);
    }
    if (several_)
      FieldRows::addRemoval(*row, LibraryWords::tr("Remove %1").arg(row->label()), [this, path] {
        paths_.removeAll(path);
        showApps();
        Q_EMIT changed();
      });
    rows_->addWidget(row);
  }
}

void AppField::choose() {
  auto* picker = new AppPicker(services_.apps, services_.icons, window());
  connect(picker, &AppPicker::chosen, this, &AppField::take);
  picker->open();
}

void AppField::take(const QString& path) {
  if (!several_) paths_.clear();
  if (!paths_.contains(path)) paths_.append(path);
  showApps();
  Q_EMIT changed();
}

FolderField::FolderField(const QString& usual)
    : usual_(usual), rows_(FieldRows::column()), choose_(new Button(LibraryWords::tr("Choose Folder…"))) {
  fill(*this, *rows_, *choose_);
  connect(choose_, &QPushButton::clicked, this, &FolderField::choose);
  showFolder();
}

void FolderField::setValue(const QString& value) {
  if (value == path_) return;
  path_ = value;
  showFolder();
}

void FolderField::showFolder() {
  FieldRows::clear(*rows_);
  const QString path = path_.isEmpty() ? usual_ : path_;
  if (path.isEmpty()) return;
  const QString name = PinnedTiles::nameOf(path);
  auto* row = new ListRow(name.isEmpty() ? path : name);
  row->setSymbol(u"folder"_s);
  row->setCaption(shortened(path));
  if (!usual_.isEmpty() && !path_.isEmpty())
    FieldRows::addRemoval(*row, LibraryWords::tr("Use Default"), [this] {
      path_.clear();
      showFolder();
      choose_->setFocus(Qt::OtherFocusReason);
      Q_EMIT changed();
    });
  rows_->addWidget(row);
}

void FolderField::choose() {
  auto* dialog =
      new QFileDialog(window(), LibraryWords::tr("Choose Folder"), path_.isEmpty() ? QDir::homePath() : path_);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly);
  connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
    path_ = QDir::cleanPath(path);
    showFolder();
    Q_EMIT changed();
  });
  dialog->open();
}

}  // namespace tarnwick
