#include "views/library/FieldControl.h"

#include <QSignalBlocker>
#include <QVBoxLayout>
#include <cmath>

#include "base/LocalFigures.h"
#include "base/Text.h"
#include "services/ChosenPlace.h"
#include "services/Connections.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/Rows.h"
#include "views/controls/Segments.h"
#include "views/controls/Stepper.h"
#include "views/controls/Switch.h"
#include "views/library/CredentialField.h"
#include "views/library/HistoryField.h"
#include "views/library/PathFields.h"
#include "views/library/SessionField.h"
#include "views/library/ZoneFields.h"
#include "views/panels/PlaceField.h"
#include "widgets/LibraryWords.h"
#include "widgets/ToggleChoice.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kNoteHeight = 120;

class LineControl final : public FieldControl {
 public:
  explicit LineControl(const EditorField& field)
      : line_(new TextField(field.label)), isWide_(field.shape != FieldShape::Word) {
    line_->setPlaceholderText(field.placeholder);
    if (field.shape == FieldShape::Number) line_->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    hold(line_);
    // A screen reader sets the text, which the toolkit does not count as an edit.
    connect(line_, &QLineEdit::textChanged, this, &FieldControl::changed);
  }
  QString value() const override { return line_->text().trimmed(); }
  void setValue(const QString& value) override {
    const QSignalBlocker quiet(line_);
    if (value != line_->text()) line_->setText(value);
  }
  void setFaulty(bool faulty) override { line_->setFaulty(faulty); }
  bool isWide() const override { return isWide_; }

 private:
  TextField* line_;
  bool isWide_;
};

class TextControl final : public FieldControl {
 public:
  explicit TextControl(const EditorField& field) : text_(new TextArea(field.label)) {
    text_->setPlaceholderText(field.placeholder);
    text_->setFixedHeight(kNoteHeight);
    text_->setTabChangesFocus(true);
    hold(text_);
    connect(text_, &QPlainTextEdit::textChanged, this, [this] {
      if (!quiet_) Q_EMIT changed();
    });
  }
  QString value() const override { return text_->toPlainText(); }
  void setValue(const QString& value) override {
    if (value == text_->toPlainText()) return;
    quiet_ = true;
    text_->setPlainText(value);
    quiet_ = false;
  }

 private:
  TextArea* text_;
  bool quiet_ = false;
};

class SwitchControl final : public FieldControl {
 public:
  explicit SwitchControl(const EditorField& field) : value_(field.value), switch_(new Switch(field.label)) {
    hold(switch_);
    connect(switch_, &QAbstractButton::clicked, this, &FieldControl::changed);
  }
  QString value() const override { return switch_->isChecked() ? value_ : QString(); }
  void setValue(const QString& value) override { switch_->setChecked(value == value_); }
  bool isWide() const override { return false; }

 private:
  QString value_;
  Switch* switch_;
};

class StepsControl final : public FieldControl {
 public:
  explicit StepsControl(const EditorField& field) : usual_(field.usual), stepper_(new Stepper(field.label)) {
    stepper_->setRange(field.least, field.most);
    stepper_->setFormat([words = field.words, least = field.least](int value) {
      if (value == 0 && least == 0) return LibraryWords::tr("Off");
      return words.isEmpty() ? LocalFigures::number(value) : words.arg(LocalFigures::number(value));
    });
    hold(stepper_);
    connect(stepper_, &Stepper::valueChanged, this, &FieldControl::changed);
  }
  QString value() const override { return QString::number(stepper_->value()); }
  void setValue(const QString& value) override {
    stepper_->setValue(static_cast<int>(std::clamp(std::trunc(Text::number(value).value_or(usual_)), -1e6, 1e6)));
  }
  bool isWide() const override { return false; }

 private:
  int usual_;
  Stepper* stepper_;
};

class ChoiceControl final : public FieldControl {
 public:
  explicit ChoiceControl(const EditorField& field)
      : values_(field.value.split(u',')),
        usual_(field.usual),
        segments_(new Segments(field.label, field.words.split(u','))) {
    hold(segments_);
    connect(segments_, &Segments::chosenChanged, this, &FieldControl::changed);
  }
  QString value() const override {
    return segments_->chosen() == usual_ ? QString() : values_.value(segments_->chosen());
  }
  void setValue(const QString& value) override {
    const qsizetype place = values_.indexOf(value);
    segments_->setChosen(place < 0 ? usual_ : static_cast<int>(place));
  }
  bool isWide() const override { return false; }

 private:
  QStringList values_;
  int usual_;
  Segments* segments_;
};

/// The name of a place, and where it is once it was chosen among those of that name.
class PlaceControl final : public FieldControl {
 public:
  PlaceControl(const EditorField& field, Connections& connections) : place_(new PlaceField(field.label, connections)) {
    place_->field().setPlaceholderText(field.placeholder);
    hold(place_);
    connect(place_, &PlaceField::typed, this, [this] {
      chosen_.reset();
      Q_EMIT changed();
    });
    connect(place_, &PlaceField::chosen, this, [this](const GeocodeCache::Place& place) {
      chosen_ = place;
      Q_EMIT changed();
    });
  }
  QString value() const override { return place_->text(); }
  void setValue(const QString& value) override { place_->setText(value); }
  void write(DockWidget& widget, const QString& key) const override {
    FieldControl::write(widget, key);
    widget.options.remove(option::cityPosition);
    // Who names a place means that one.
    widget.options.remove(option::weatherLocation);
    if (chosen_) widget.options.insert(option::cityPosition, ChosenPlace::position(*chosen_));
  }
  void setFaulty(bool faulty) override { place_->field().setFaulty(faulty); }

 private:
  PlaceField* place_;
  std::optional<GeocodeCache::Place> chosen_;
};

/// Opens a page; it stands for no option.
class PageControl final : public FieldControl {
 public:
  PageControl(const EditorField& field, std::function<void(const QUrl& page)> open)
      : pageOf_(field.pageOf), button_(new Button(QString())) {
    hold(button_);
    button_->hide();
    connect(button_, &QPushButton::clicked, this, [this, open = std::move(open)] { open(page_); });
  }
  void follow(const DockWidget& edited) override {
    const QUrl page = pageOf_ ? pageOf_(edited) : QUrl();
    if (page == page_) return;
    page_ = page;
    button_->setVisible(!page.isEmpty());
    button_->setLabel(LibraryWords::tr("Open %1").arg(page.host()));
  }
  QString value() const override { return {}; }
  void setValue(const QString&) override {}
  void write(DockWidget&, const QString&) const override {}

 private:
  std::function<QUrl(const DockWidget& widget)> pageOf_;
  Button* button_;
  QUrl page_;
};

/// The switches of a tile of quick toggles, of which some are chosen.
class TogglesControl final : public FieldControl {
 public:
  TogglesControl() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    for (const Toggle toggle : ToggleChoice::all()) {
      auto* row = new CheckRow(ToggleChoice::name(toggle));
      row->setStrikes(false);
      row->setParted(!rows_.isEmpty());
      rows_.append(row);
      column->addWidget(row);
      connect(row, &QAbstractButton::clicked, this, [this] {
        limit();
        Q_EMIT changed();
      });
    }
  }
  QString value() const override {
    QList<Toggle> chosen;
    for (qsizetype i = 0; i < rows_.size(); ++i)
      if (rows_[i]->isChecked()) chosen.append(ToggleChoice::all()[i]);
    return chosen == ToggleChoice::of({}) ? QString() : ToggleChoice::text(chosen);
  }
  void setValue(const QString& value) override {
    const QList<Toggle> chosen = ToggleChoice::of(value);
    for (qsizetype i = 0; i < rows_.size(); ++i) rows_[i]->setChecked(chosen.contains(ToggleChoice::all()[i]));
    limit();
  }
  QString fault() const override {
    return count() == ToggleChoice::kShown ? QString() : LibraryWords::tr("Choose four switches.");
  }

 private:
  qsizetype count() const {
    return std::ranges::count_if(rows_, [](const CheckRow* row) { return row->isChecked(); });
  }
  void limit() {
    const bool full = count() >= ToggleChoice::kShown;
    for (CheckRow* row : std::as_const(rows_)) row->setEnabled(!full || row->isChecked());
  }

  QList<CheckRow*> rows_;
};

}  // namespace

void FieldControl::write(DockWidget& widget, const QString& key) const {
  const QString text = value();
  if (text.isEmpty())
    widget.options.remove(key);
  else
    widget.options.insert(key, text);
}

void FieldControl::hold(QWidget* control) {
  auto* box = new QVBoxLayout(this);
  box->setContentsMargins(0, 0, 0, 0);
  box->addWidget(control);
  setFocusProxy(control);
}

FieldControl* FieldControl::make(const EditorField& field, const FieldServices& services) {
  switch (field.shape) {
    case FieldShape::Line:
    case FieldShape::Word:
    case FieldShape::Number:
      return new LineControl(field);
    case FieldShape::Credential:
      return new CredentialField(field);
    case FieldShape::Page:
      return new PageControl(field, services.openPage);
    case FieldShape::Text:
      return new TextControl(field);
    case FieldShape::Switch:
      return new SwitchControl(field);
    case FieldShape::Steps:
      return new StepsControl(field);
    case FieldShape::Choice:
      return new ChoiceControl(field);
    case FieldShape::Zone:
    case FieldShape::Zones:
      return new ZoneField(field.shape == FieldShape::Zones, field.placeholder);
    case FieldShape::Place:
      return new PlaceControl(field, services.connections);
    case FieldShape::Application:
    case FieldShape::Applications:
      return new AppField(services, field.shape == FieldShape::Applications);
    case FieldShape::Folder:
      return new FolderField(field.placeholder);
    case FieldShape::Toggles:
      return new TogglesControl;
    case FieldShape::History:
      return new HistoryField;
    case FieldShape::Session:
      return new SessionField(services.connections.perplexity());
  }
  return new LineControl(field);
}

}  // namespace tarnwick
