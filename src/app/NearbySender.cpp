#include "app/NearbySender.h"

#include <QProcess>
#include <utility>

namespace tarnwick {

using namespace Qt::StringLiterals;

NearbySender::NearbySender(const AppEnvironment& environment, LaunchEnvironment variables)
    : variables_(std::move(variables)) {
  for (const QString& each : {u"bluetooth-sendto"_s, u"blueman-sendto"_s})
    if (program_.isEmpty()) program_ = environment.findExecutable(each);
}

bool NearbySender::send(const QList<QUrl>& files) {
  if (program_.isEmpty()) return false;
  QProcess sender;
  sender.setProgram(program_);
  for (const QUrl& file : files)
    if (file.isLocalFile()) sender.setArguments(sender.arguments() << file.toLocalFile());
  sender.setProcessEnvironment(variables_.variables);
  return sender.startDetached();
}

}  // namespace tarnwick
