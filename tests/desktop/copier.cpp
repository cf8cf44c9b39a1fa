// A program that copies what its arguments name, a type and its text after each other, until it is ended.
#include <QApplication>

#include "app/WindowSystem.h"

int main(int argc, char** argv) {
  tarnwick::WindowSystem::prepare();
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const QStringList words = QApplication::arguments().sliced(1);
  tarnwick::PasteboardOffer offer;
  for (qsizetype i = 0; i + 1 < words.size(); i += 2) offer.forms.append({words[i], words[i + 1].toUtf8()});
  tarnwick::SystemScheduler scheduler;
  const auto system = tarnwick::WindowSystem::make(scheduler);
  system.pasteboard->set(offer);
  return tarnwick::WindowSystem::end(QApplication::exec());
}
