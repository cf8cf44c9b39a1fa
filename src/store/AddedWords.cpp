#include "store/AddedWords.h"

#include <QCoreApplication>
#include <algorithm>

#include "config/DockConfiguration.h"

namespace tarnwick {

namespace {

struct AddedWords {
  Q_DECLARE_TR_FUNCTIONS(AddedWords)
};

}  // namespace

QString addedSentence(const QString& name, const DockConfiguration& config, const QUuid& profile) {
  const auto found = std::ranges::find(config.profiles, profile, &DockProfile::id);
  if (config.profiles.size() < 2 || found == config.profiles.end())
    return AddedWords::tr("“%1” was added to the dock.").arg(name);
  return AddedWords::tr("“%1” was added to “%2”.").arg(name, found->name);
}

}  // namespace tarnwick
