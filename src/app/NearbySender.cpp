#include "app/NearbySender.h"

#include <QProcess>

namespace tarnwick {

using namespace Qt::StringLiterals;

std::function<bool(const QList<QUrl>&)> nearbySender(const AppEnvironment& environment,
                                                     const LaunchEnvironment& variables) {
  QString program;
  for (const QString& each : {u"bluetooth-sendto"_s, u"blueman-sendto"_s})
    if (program.isEmpty()) program = environment.findExecutable(each);
  if (program.isEmpty()) return {};
  return [program, variables](const QList<QUrl>& files) {
    QProcess sender;
    sender.setProgram(program);
    for (const QUrl& file : files)
      if (file.isLocalFile()) sender.setArguments(sender.arguments() << file.toLocalFile());
    sender.setProcessEnvironment(variables.variables);
    return sender.startDetached();
  };
}

}  // namespace tarnwick
