#include "views/library/TryPart.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QUrl>
#include <QVBoxLayout>

#include "base/DomainError.h"
#include "base/ForeignText.h"
#include "services/Connections.h"
#include "services/CustomEndpoint.h"
#include "services/WidgetLoader.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Labels.h"
#include "views/library/AnswerTree.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"
#include "views/window/WindowTheme.h"
#include "widgets/LibraryWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString shownText(const RemoteValue& value) {
  return LibraryWords::tr("The tile shows “%1” once you save.").arg(ForeignText::line(value.value.value_or(QString())));
}

constexpr int kWellInset = 6;

/// The ground of the tree.
class AnswerWell final : public QWidget {
 public:
  explicit AnswerWell(QWidget* content) {
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(kWellInset, kWellInset, kWellInset, kWellInset);
    box->addWidget(content);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const ControlLook& look = lookOf(*this);
    drawRounded(painter, rect(), theme::kButtonCorner, look.palette.buttonPressed);
    drawInnerLine(painter, rect(), theme::kButtonCorner, hairline(painter), look.palette.hairline);
  }
};

/// What decides whom a widget asks, and of a service also what.
bool asksAlike(const DockWidget& one, const DockWidget& other) {
  if (one.options.value(option::connectionMode) == value::native) return one.options == other.options;
  for (const QLatin1StringView key : {option::connectionMode, option::endpoint})
    if (one.options.value(key) != other.options.value(key)) return false;
  return true;
}

}  // namespace

TryPart::TryPart(Connections& connections, Form form)
    : connections_(connections),
      form_(std::move(form)),
      try_(new Button(LibraryWords::tr("Try It"))),
      cancel_(new IconButton(u"xmark"_s, LibraryWords::tr("Stop Asking"))),
      sentence_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)),
      heading_(new TextLabel(LibraryWords::tr("Pick the value to show"), TextStyle::Caption, Tone::Secondary)),
      well_(nullptr),
      tree_(new AnswerTree(LibraryWords::tr("Answer of the service"))) {
  well_ = new AnswerWell(tree_);
  try_->setAccessibleDescription(LibraryWords::tr("Asks the service once. Nothing is stored."));
  sentence_->setWordWrap(true);
  cancel_->setGround(false);
  auto* row = new QHBoxLayout;
  row->setSpacing(theme::kRowGap);
  row->addWidget(try_);
  row->addWidget(sentence_, 1);
  row->addWidget(cancel_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(theme::kCardPadding, theme::kRowOverhang, theme::kCardPadding, theme::kRowOverhang);
  column->setSpacing(theme::kRowOverhang);
  column->addLayout(row);
  column->addWidget(heading_);
  column->addWidget(well_);
  cancel_->hide();
  heading_->hide();
  well_->hide();
  connect(try_, &QPushButton::clicked, this, &TryPart::ask);
  connect(cancel_, &QPushButton::clicked, this, &TryPart::cancel);
  connect(tree_, &AnswerTree::chosen, this, &TryPart::chosen);
}

TryPart::~TryPart() { stop_.request_stop(); }

void TryPart::ask() {
  if (isAsking_) return;
  const auto widget = form_.check();
  if (!widget) return;
  forget();
  if (const QString missing = form_.missing(); !missing.isEmpty()) return say(missing, true);
  asked_ = edited_;
  stop_ = std::stop_source();
  const std::stop_token stop = stop_.get_token();
  setAsking(true);
  const auto credential = form_.credential();
  if (WidgetLoader::readsAddress(*widget)) {
    tellAnswer<QJsonValue>(
        connections_.answer(*widget, credential, stop),
        [this](const ServiceAnswer<QJsonValue>& answer) { take(answer); }, stop);
    return;
  }
  tellAnswer<RemoteValue>(
      connections_.attempt(*widget, credential, stop),
      [this](const ServiceAnswer<RemoteValue>& answer) {
        setAsking(false);
        answer.value ? say(shownText(*answer.value), false) : say(answer.sentence, true);
      },
      stop);
}

void TryPart::cancel() {
  try_->setFocus(Qt::OtherFocusReason);
  forget();
}

void TryPart::forget() {
  stop_.request_stop();
  setAsking(false);
  asked_.reset();
  answer_.reset();
  tree_->setAnswer({});
  well_->hide();
  heading_->hide();
  say({}, false);
}

void TryPart::setAsking(bool asking) {
  if (asking == isAsking_) return;
  isAsking_ = asking;
  cancel_->setVisible(asking);
  if (!asking) return;
  const QString mode = asked_->options.value(option::connectionMode);
  const bool asksTheNet = mode.isEmpty() || mode == value::native;
  const QString host = asksTheNet ? QUrl(asked_->options.value(option::endpoint)).host() : QString();
  say(host.isEmpty() ? LibraryWords::tr("Asking…") : LibraryWords::tr("Asking %1…").arg(ForeignText::line(host)),
      false);
}

void TryPart::take(const ServiceAnswer<QJsonValue>& answer) {
  setAsking(false);
  if (!answer.value) {
    say(answer.sentence, true);
    return;
  }
  answer_ = answer.value;
  tree_->setAnswer(*answer_);
  const bool hasFields = !tree_->isEmpty();
  well_->setVisible(hasFields);
  heading_->setVisible(hasFields);
  showValue();
}

void TryPart::follow(const DockWidget& edited) {
  edited_ = edited;
  if (!asked_) return;
  if (!asksAlike(*asked_, edited)) {
    forget();
    return;
  }
  asked_ = edited;
  if (answer_) showValue();
}

void TryPart::showValue() {
  tree_->choose(asked_->options.value(option::field));
  try {
    say(shownText(CustomEndpoint::shown(*asked_, *answer_)), false);
  } catch (const DomainError& failure) {
    say(failure.message(), true);
  }
}

void TryPart::say(const QString& sentence, bool isFault) {
  sentence_->setTone(isFault ? Tone::Fault : Tone::Secondary);
  const QString line = ForeignText::line(sentence);  // It may name what somebody else wrote into the form.
  if (line == sentence_->text()) return;
  sentence_->setText(line);
  if (sentence.isEmpty() || !isVisible()) return;
  QAccessibleEvent alert(sentence_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

}  // namespace tarnwick
