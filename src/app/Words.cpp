#include "app/Words.h"

#include <QCoreApplication>
#include <QTranslator>

namespace tarnwick {

void loadWords(QCoreApplication& application) {
  auto* words = new QTranslator(&application);
  if (words->load(QStringLiteral(":/i18n/tarnwick_en.qm"))) QCoreApplication::installTranslator(words);
}

}  // namespace tarnwick
