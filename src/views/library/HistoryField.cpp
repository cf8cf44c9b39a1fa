#include "views/library/HistoryField.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QVBoxLayout>
#include <array>

#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Labels.h"
#include "views/controls/Rows.h"
#include "views/controls/Segments.h"
#include "views/library/FieldRows.h"
#include "views/window/Cards.h"
#include "widgets/LibraryWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

struct HistorySource {
  QLatin1StringView value;
  const char* name;
  const char* about;
};
constexpr std::array kSources = {
    HistorySource{value::geminiCLI, QT_TRANSLATE_NOOP("Library", "Gemini CLI"),
                  QT_TRANSLATE_NOOP("Library",
                                    "Choose a Gemini CLI chats folder, or its parent temporary-data folder. Only token "
                                    "counts and dates are shown; recordings stay on your Mac.")},
    HistorySource{value::openCode, QT_TRANSLATE_NOOP("Library", "OpenCode"),
                  QT_TRANSLATE_NOOP("Library",
                                    "Choose your OpenCode SQLite database. Gemini model usage is read locally; "
                                    "conversation bodies are not selected.")},
    HistorySource{value::hermes, QT_TRANSLATE_NOOP("Library", "Hermes"),
                  QT_TRANSLATE_NOOP("Library",
                                    "Choose your Hermes state.db. Gemini usage is read locally from cumulative model "
                                    "counters. Daily and monthly totals are unavailable in this format.")},
};

QStringList names() {
  QStringList all;
  for (const HistorySource& source : kSources) all << LibraryWords::tr(source.name);
  return all;
}

}  // namespace

HistoryField::HistoryField()
    : source_(new Segments(LibraryWords::tr("History source"), names())),
      about_(makeSentence({}, TextStyle::Caption, Tone::Secondary)),
      rows_(FieldRows::column()),
      choose_(new Button(QString())) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(theme::kSectionBelow);
  column->addWidget(source_);
  column->addWidget(about_);
  column->addLayout(rows_);
  column->addWidget(choose_, 0, Qt::AlignLeading);
  setFocusProxy(choose_);
  connect(choose_, &QPushButton::clicked, this, &HistoryField::choose);
  connect(source_, &Segments::chosenChanged, this, [this] {
    path_.clear();  // It was of another program.
    showChoice();
    Q_EMIT changed();
  });
  showChoice();
}

bool HistoryField::isDatabase() const { return source_->chosen() > 0; }

void HistoryField::setValue(const QString& path) {
  path_ = path;
  showChoice();
}

void HistoryField::read(const DockWidget& widget, const QString& key) {
  const QString source = widget.options.value(option::historySource);
  const auto found = std::ranges::find(kSources, source, &HistorySource::value);
  source_->setChosen(found == kSources.end() ? 0 : static_cast<int>(found - kSources.begin()));
  setValue(widget.options.value(key));
}

void HistoryField::write(DockWidget& widget, const QString& key) const {
  FieldControl::write(widget, key);
  widget.options.insert(option::historySource, kSources[static_cast<std::size_t>(source_->chosen())].value);
  widget.options.remove(option::endpoint);
}

QString HistoryField::fault() const {
  return path_.isEmpty() ? LibraryWords::tr("Choose a local Gemini CLI chat directory.") : QString();
}

void HistoryField::showChoice() {
  about_->setText(LibraryWords::tr(kSources[static_cast<std::size_t>(source_->chosen())].about));
  choose_->setLabel(isDatabase() ? LibraryWords::tr("Choose Usage Database…")
                                 : LibraryWords::tr("Choose Gemini History…"));
  FieldRows::clear(*rows_);
  if (path_.isEmpty()) return;
  auto* row = new ListRow(QFileInfo(path_).fileName());
  row->setSymbol(isDatabase() ? QStringLiteral("internaldrive") : QStringLiteral("folder"));
  row->setCaption(path_);
  rows_->addWidget(row);
}

void HistoryField::choose() {
  const QString before = path_.isEmpty() ? QDir::homePath() : path_;
  auto* dialog = new QFileDialog(window(), choose_->label(), before);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(isDatabase() ? QFileDialog::ExistingFile : QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly, !isDatabase());
  // Such histories lie in hidden folders.
  dialog->setFilter(dialog->filter() | QDir::Hidden);
  connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
    path_ = QDir::cleanPath(path);
    showChoice();
    Q_EMIT changed();
  });
  dialog->open();
}

}  // namespace tarnwick
