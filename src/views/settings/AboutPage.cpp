#include <QCoreApplication>

#include "store/AppStore.h"
#include "views/controls/Labels.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"
#include "views/window/Credits.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

SettingsPage* makeAboutPage(AppStore& store, const SettingsServices& services) {
  auto* page = new SettingsPage(SettingsWords::tr("About"), store, services);
  const auto value = [](const QString& text) {
    auto* label = new TextLabel(text, TextStyle::Body, Tone::Secondary);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
  };
  Card& program = *page->addCard();
  page->addControl(program,
                   {QT_TRANSLATE_NOOP("Settings", "Tarnwick"), QT_TRANSLATE_NOOP("Settings", "A dock of live widgets."),
                    QT_TRANSLATE_NOOP("Settings", "version")},
                   value(QStringLiteral(TARNWICK_VERSION)));
  page->addControl(
      program,
      {QT_TRANSLATE_NOOP("Settings", "License"), QT_TRANSLATE_NOOP("Settings", "© 2026 The Tarnwick authors."),
       QT_TRANSLATE_NOOP("Settings", "license")},
      value(u"MIT"_s));
  Card& credits = *page->addCard(SettingsWords::tr("Open-source components"));
  for (const Credit& credit : allCredits()) {
    auto* row = new FormRow(credit.words(), value(credit.licence));
    page->addOther(credits, row, credit.name + u' ' + credit.licence);
  }
  page->takeKeys();
  return page;
}

}  // namespace tarnwick
