#include "views/onboarding/AboutWindow.h"

#include <QVBoxLayout>

#include "views/controls/Labels.h"
#include "views/onboarding/AppMark.h"
#include "views/window/Cards.h"
#include "views/window/Credits.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kAboutMark = 88;
constexpr QSize kWindow{420, 560};

}  // namespace

AboutWindow::AboutWindow(AppStore& store) : AppWindow(store, tr("About Tarnwick")) {
  auto* body = new QWidget;
  auto* column = new QVBoxLayout(body);
  column->setContentsMargins(0, 28, 0, 0);
  column->setSpacing(0);
  column->addWidget(new AppMark(kAboutMark), 0, Qt::AlignHCenter);
  column->addSpacing(14);
  const auto line = [&](const QString& text, TextStyle style, Tone tone) {
    auto* label = new TextLabel(text, style, tone);
    label->setAlignment(Qt::AlignCenter);
    column->addWidget(label);
    return label;
  };
  line(u"Tarnwick"_s, TextStyle::Headline, Tone::Primary);
  column->addSpacing(2);
  line(tr("Version %1").arg(QStringLiteral(TARNWICK_VERSION)), TextStyle::Body, Tone::Secondary)
      ->setTextInteractionFlags(Qt::TextSelectableByMouse);
  column->addSpacing(8);
  line(tr("A dock of live widgets."), TextStyle::Body, Tone::Primary);
  line(tr("© 2026 The Tarnwick authors. MIT License."), TextStyle::Caption, Tone::Secondary);
  column->addSpacing(4);

  auto* page = new CardPage({});
  Card* card = page->addCard(tr("Open-source components"));
  for (const Credit& credit : allCredits())
    card->addRow(credit.words(), new TextLabel(credit.licence, TextStyle::Caption, Tone::Secondary));
  column->addWidget(page, 1);
  setContent(nullptr, body);
  page->takeKeys();
  setEscapeCloses(true);
  page->setFocus();
  resize(kWindow);
}

}  // namespace tarnwick
