#include "app/EntryQuestion.h"

#include <QCoreApplication>

namespace tarnwick {
namespace {

struct EntryWords {
  Q_DECLARE_TR_FUNCTIONS(EntryQuestion)
};

}  // namespace

Question entryQuestion(const ForeignEntry& entry, const QString& action) {
  return {EntryWords::tr("Run This App?"),
          EntryWords::tr("“%1” is not one of the installed apps. Run it only if you know where it comes from.")
              .arg(entry.shownName()),
          entry.facts(action),
          EntryWords::tr("What would run"),
          EntryWords::tr("Run"),
          EntryWords::tr("Show in Files")};
}

}  // namespace tarnwick
