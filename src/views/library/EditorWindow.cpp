#include "views/library/EditorWindow.h"

#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "base/DomainError.h"
#include "services/ProviderTable.h"
#include "services/RemoteRules.h"
#include "store/AppStore.h"
#include "store/DocumentEdits.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Fields.h"
#include "views/controls/Labels.h"
#include "views/library/CredentialField.h"
#include "views/library/CredentialPart.h"
#include "views/library/FieldControl.h"
#include "views/library/HooksPart.h"
#include "views/library/SignInPart.h"
#include "views/library/TilePreview.h"
#include "views/library/TryPart.h"
#include "views/library/ZoneFields.h"
#include "views/window/Cards.h"
#include "widgets/LibraryWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

constexpr int kMargin = 16;

const DockWidget* stored(const AppStore& store, const QUuid& widget) {
  return DocumentEdits::find(store.config(), widget);
}

/// What a widget that is connected to nothing yet is most likely meant for: its service, or what it reads on this
/// computer. Empty where nothing is more likely than an address.
QString likelyConnection(const DockWidget& widget, const EditorField& connection) {
  if (widget.options.contains(option::connectionMode) || !widget.options.value(option::endpoint).isEmpty()) return {};
  if (providerFor(widget.kind)) return value::native;
  const QString last = connection.value.section(u',', -1);
  const auto here = {value::claudeActivity, value::geminiHistory, value::codexLocal};
  return std::ranges::any_of(here, [&last](QLatin1StringView each) { return last == each; }) ? last : QString();
}

/// A widget with the address that it asks, as far as that is known before all else is filled in.
DockWidget asked(const DockWidget& widget, const WidgetEditor::Hooks& forms) {
  if (widget.options.value(option::connectionMode) != value::native) return widget;
  try {
    return forms.configured(widget);
  } catch (const DomainError&) {
    return widget;
  }
}

}  // namespace

EditorWindow::EditorWindow(AppStore& store, const QUuid& widget, WindowServices services)
    : AppWindow(store, LibraryWords::tr("Edit Widget")),
      store_(store),
      widget_(widget),
      services_(std::move(services)),
      preview_(new TilePreview(store, services_.previews)),
      page_(nullptr),
      title_(new TextField(LibraryWords::tr("Title"))),
      titleRow_(FormRow::wide(LibraryWords::tr("Title"), title_)),
      fault_(new TextLabel({}, TextStyle::Caption, Tone::AccentWord)) {
  setFixedWidth(theme::kPanelWidthEditor);
  setContent(nullptr, makeBody());
  take();
  connect(title_, &QLineEdit::textChanged, this, [this] {
    titleTouched_ = true;
    clearFaults();
    showEdited();
  });
  connect(&store_, &AppStore::configChanged, this, &EditorWindow::follow);
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(key)), this);
    connect(shortcut, &QShortcut::activated, this, &EditorWindow::save);
  }
}

EditorWindow::~EditorWindow() {
  // It may have something to store yet, which need not come back to the form.
  disconnect(&store_, nullptr, this, nullptr);
  hooks_.reset();
}

QWidget* EditorWindow::makeBody() {
  auto* body = new QWidget;
  page_ = new CardPage({});
  page_->addWidget(preview_);
  Card* card = page_->addCard();
  card->add(titleRow_);
  if (const DockWidget* widget = stored(store_, widget_)) {
    for (const EditorField& field : EditorFields::of(widget->kind)) addLine(field);
  }
  fault_->setWordWrap(true);
  fault_->hide();
  page_->addWidget(fault_);

  auto* cancel = new Button(LibraryWords::tr("Cancel"));
  saving_ = new Button(LibraryWords::tr("Save"), Button::Role::Primary);
  connect(cancel, &QPushButton::clicked, this, &QWidget::close);
  connect(saving_, &QPushButton::clicked, this, &EditorWindow::save);
  auto* buttons = new QHBoxLayout;
  buttons->setContentsMargins(kMargin, 0, kMargin + theme::kRowOverhang, kMargin);
  buttons->setSpacing(theme::kRowOverhang);
  buttons->addStretch(1);
  buttons->addWidget(cancel);
  buttons->addWidget(saving_);
  auto* column = new QVBoxLayout(body);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(page_, 1);
  column->addLayout(buttons);
  page_->installEventFilter(this);
  for (QWidget* inside : page_->findChildren<QWidget*>()) inside->installEventFilter(this);
  return body;
}

void EditorWindow::addLine(const EditorField& field) {
  FieldControl* control =
      FieldControl::make(field, {services_.apps, services_.previews.icons, services_.connections,
                                 [to = &services_.commands](const QUrl& page) { to->openUrl(page); }});
  FormRow* row = control->isWide() ? FormRow::wide(field.label, control, field.help)
                                   : new FormRow(field.label, control, field.help);
  page_->cards().constFirst()->add(row);
  if (field.isLater) row->setUnavailable(field.help);
  if (field.value.split(u',').contains(value::claudeActivity)) addHooks(*page_->cards().constFirst());
  if (field.shape == FieldShape::Page) addSignIn(*page_->cards().constFirst());
  lines_.push_back(std::make_unique<Line>(Line{.field = field, .control = control, .row = row}));
  if (field.shape == FieldShape::Credential) {
    credential_ =
        std::make_unique<CredentialPart>(services_.connections, static_cast<CredentialField&>(*control), *row);
    addTry(*page_->cards().constFirst());
  }
  connect(control, &FieldControl::changed, this, [this, line = lines_.back().get()] { changed(*line); });
}

void EditorWindow::addTry(Card& card) {
  const auto check = [this]() -> std::optional<DockWidget> {
    const auto outcome = checked();
    return outcome ? std::optional(outcome->widget) : std::nullopt;
  };
  try_ = new TryPart(services_.connections,
                     {check, [this] { return credential_->typed(); }, [this] { return missingStep(); }});
  card.add(try_);
  connect(try_, &TryPart::chosen, this, &EditorWindow::takeField);
}

/// What is to be done in this form before there is anything to try; empty where nothing is.
QString EditorWindow::missingStep() const {
  const DockWidget* widget = stored(store_, widget_);
  if (!widget) return {};
  const DockWidget now = edited(*widget);
  if (connection() == value::claudeActivity && !ClaudeActivityConnect::isInstalled(now))
    return LibraryWords::tr("Install the activity hooks first.");
  if (connection() == value::geminiHistory && now.options.value(option::historyDirectory).isEmpty())
    return LibraryWords::tr("Choose the history to read first.");
  const bool isAddress = connection().value_or(QString()).isEmpty();
  if (isAddress && now.options.value(option::endpoint).isEmpty()) return LibraryWords::tr("Enter an address first.");
  return {};
}

/// Where the service of this kind wants one.
void EditorWindow::addSignIn(Card& card) {
  const DockWidget* widget = stored(store_, widget_);
  const Provider* provider = widget ? providerFor(widget->kind) : nullptr;
  if (!provider || !provider->signIn) return;
  const auto check = [this]() -> std::optional<DockWidget> {
    const auto outcome = checked();
    return outcome ? std::optional(outcome->widget) : std::nullopt;
  };
  signIn_ = std::make_unique<SignInPart>(
      services_.connections, *provider->signIn,
      SignInPart::Form{
          .check = check,
          .store = [this] { storeSignIn(); },
          .signedOut = [this] { showSignedOut(); },
          .open = [to = &services_.commands](const QUrl& page, const auto& done) { to->openUrl(page, done); },
          .copy = [to = &services_.commands](const QString& text) { to->copyText(text); }},
      card);
}

/// Where the kind is read from what Claude Code's hooks leave.
void EditorWindow::addHooks(Card& card) {
  const HooksPart::Form form{
      .stored = [this] { return stored(store_, widget_) ? *stored(store_, widget_) : DockWidget{}; },
      .store = [this](const DockWidget& widget) { storeHooks(widget); }};
  hooks_ = std::make_unique<HooksPart>(ClaudeActivityConnect::ofProgram(store_.dataDirectory()), form, card);
}

/// They are there or gone already, and the widget with them; what else stands in the form goes on to wait.
void EditorWindow::storeHooks(const DockWidget& widget) {
  for (const auto& line : lines_)
    if (line->field.key == option::connectionMode) line->touched = false;
  services_.edits.update(widget);
  if (RemoteRules::isSetUp(widget)) store_.refresh(widget);
}

/// A field was chosen from an answer.
void EditorWindow::takeField(const QString& path) {
  for (const auto& line : lines_) {
    if (line->field.key != option::field) continue;
    line->control->setValue(path);
    changed(*line);
  }
}

// --- Contents -------------------------------------------------------------------------------------------------------

/// Fills what the user has not touched from the settings.
void EditorWindow::take() {
  const DockWidget* widget = stored(store_, widget_);
  if (!widget) return;
  DockWidget untitled = *widget;
  untitled.title.clear();
  setWindowTitle(LibraryWords::tr("Edit “%1”").arg(services_.edits.nameOf(*widget)));
  title_->setPlaceholderText(services_.edits.nameOf(untitled));
  if (!titleTouched_ && title_->text() != widget->title) {
    const QSignalBlocker quiet(title_);
    title_->setText(widget->title);
  }
  for (const auto& line : lines_) {
    if (line->touched) continue;
    line->control->read(*widget, line->field.key);
    if (line->field.key != option::connectionMode) continue;
    if (const QString likely = likelyConnection(*widget, line->field); !likely.isEmpty()) {
      line->control->setValue(likely);
      line->isSuggested = true;
    }
  }
  showEdited();
}

/// Whether anything was entered for the connection that the form suggests.
bool EditorWindow::isServiceTouched() const {
  if ((credential_ && credential_->isTouched()) || (signIn_ && signIn_->isTouched())) return true;
  // This one needs nothing to be entered. Whoever names the tile means no connection.
  if (connection() == value::codexLocal && !titleTouched_) return true;
  return std::ranges::any_of(lines_, [this](const auto& line) {
    return line->touched && line->field.onlyIn && !line->field.onlyIn->isEmpty() && isThere(*line);
  });
}

/// The connection that stands in the form; absent where there is no choice.
std::optional<QString> EditorWindow::connection() const {
  const auto line =
      std::ranges::find_if(lines_, [](const auto& each) { return each->field.key == option::connectionMode; });
  return line == lines_.end() ? std::nullopt : std::optional((*line)->control->value());
}

/// Whether a line is there in this connection, which is that of the form.
bool EditorWindow::isThere(const Line& line) const {
  return !line.field.onlyIn || connection().value_or(*line.field.onlyIn) == *line.field.onlyIn;
}

DockWidget EditorWindow::edited(const DockWidget& stored) const {
  DockWidget widget = stored;
  if (titleTouched_) widget.title = title_->text().trimmed();
  for (const auto& line : lines_) {
    const bool isMeant = line->touched || (line->isSuggested && isServiceTouched());
    if (isMeant && isThere(*line)) line->control->write(widget, line->field.key);
  }
  return widget;
}

void EditorWindow::changed(Line& line) {
  line.touched = true;
  clearFaults();
  if (try_ && line.field.shape == FieldShape::Credential) try_->forget();
  // A label that names the zone goes along with it; one of the user's own stays.
  if (line.field.shape == FieldShape::Zone) {
    const auto* zone = static_cast<ZoneField*>(line.control);
    for (const auto& other : lines_) {
      if (other->field.key != option::zoneLabel) continue;
      if (!ZoneSearch::isNameOf(other->control->value(), zone->valueBefore())) continue;
      other->control->setValue(zone->city());
      other->touched = true;
    }
  }
  showEdited();
}

/// Takes what stands in the form to all that goes by it.
void EditorWindow::showEdited() {
  const DockWidget* widget = stored(store_, widget_);
  if (!widget) return;
  const DockWidget now = edited(*widget);
  for (const auto& line : lines_) {
    line->row->setVisible(isThere(*line));
    line->control->follow(now);
  }
  preview_->show(now);
  if (credential_) {
    const Provider* provider = connection() == value::native ? providerFor(now.kind) : nullptr;
    credential_->setExample(provider ? provider->credential.placeholder : QString());
    credential_->follow(asked(*widget, services_.forms), asked(now, services_.forms));
  }
  if (try_) try_->follow(now);
  if (hooks_) {
    hooks_->setThere(connection() == value::claudeActivity);
    hooks_->follow(*widget);
  }
  if (!signIn_) return;
  const bool isService = connection() == value::native;
  signIn_->setThere(isService);
  if (isService) signIn_->follow(asked(now, services_.forms));
  credential_->setUsual(isService ? LibraryWords::tr("In place of signing in, a token of your own.") : QString());
}

void EditorWindow::follow() {
  if (stored(store_, widget_))
    take();
  else
    close();
}

// --- Saving ---------------------------------------------------------------------------------------------------------

bool EditorWindow::save() {
  if (isSaving_) return false;
  const auto outcome = checked();
  if (!outcome) return false;
  if (outcome->saveCredential) {
    keepCredential(outcome->widget);
  } else if (credential_ && credential_->isUnread()) {
    setSaving(true);
    credential_->unlock([this] {
      setSaving(false);
      storeAll();
    });
  } else {
    storeAll();
  }
  return isStored_;
}

/// What saving the form would store; absent where something is wrong, which is shown.
std::optional<WidgetEditor::Outcome> EditorWindow::checked() {
  const DockWidget* widget = stored(store_, widget_);
  if (!widget) {
    close();
    return std::nullopt;
  }
  clearFaults();
  for (const auto& line : lines_) {
    const QString fault = line->touched && isThere(*line) ? line->control->fault() : QString();
    if (fault.isEmpty()) continue;
    showFault(line.get(), fault);
    return std::nullopt;
  }
  try {
    const bool isTouched = credential_ && credential_->isTouched();
    auto outcome = WidgetEditor::save(edited(*widget), *widget, isTouched, services_.forms);
    QString fault = isTouched ? credential_->settle(outcome.widget) : QString();
    if (fault.isEmpty()) fault = faultOfCredential(outcome.widget);
    if (fault.isEmpty()) return outcome;
    showFault(credentialLine(), fault);
  } catch (const DomainError& failure) {
    showFault(faultyLine(failure), failure.message());
  }
  return std::nullopt;
}

void EditorWindow::keepCredential(const DockWidget& widget) {
  setSaving(true);
  credential_->keep(widget, [this](const QString& fault) {
    setSaving(false);
    if (fault.isEmpty())
      storeAll();
    else
      showFault(credentialLine(), fault);
  });
}

/// Until the keyring has answered nothing in the form changes; it can still be left.
void EditorWindow::setSaving(bool saving) {
  isSaving_ = saving;
  if (saving) setFocus(Qt::OtherFocusReason);
  page_->setEnabled(!saving);
  saving_->setEnabled(!saving);
  saving_->setLabel(saving ? LibraryWords::tr("Saving…") : LibraryWords::tr("Save"));
}

/// What the tile counts may have gone on since the form was checked.
void EditorWindow::storeAll() {
  const DockWidget* widget = stored(store_, widget_);
  if (!widget) return;
  try {
    const auto outcome = WidgetEditor::save(edited(*widget), *widget, false, services_.forms);
    // From here on the form is done, and what it stores need not come back to it.
    disconnect(&store_, nullptr, this, nullptr);
    services_.edits.update(outcome.widget);
    if (outcome.refresh) store_.refresh(outcome.widget);
    isStored_ = true;
  } catch (const DomainError& failure) {
    showFault(faultyLine(failure), failure.message());
    return;
  }
  close();
}

/// What was signed in or out of is shown by the tile at once. The form goes on.
void EditorWindow::storeSignIn() {
  const DockWidget* widget = stored(store_, widget_);
  if (!widget) return;
  try {
    const auto outcome = WidgetEditor::save(edited(*widget), *widget, false, services_.forms);
    for (const auto& line : lines_) line->touched = false;
    titleTouched_ = false;
    if (outcome.widget != *widget) services_.edits.update(outcome.widget);
    if (outcome.refresh) store_.refresh(outcome.widget);
    credential_->look();
  } catch (const DomainError& failure) {
    showFault(faultyLine(failure), failure.message());
  }
}

/// The tile shows it at once; what stands in the form goes on to wait.
void EditorWindow::showSignedOut() {
  if (const DockWidget* widget = stored(store_, widget_)) store_.refresh(*widget);
  credential_->look();
}

}  // namespace tarnwick
