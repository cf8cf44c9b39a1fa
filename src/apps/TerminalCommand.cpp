#include "apps/TerminalCommand.h"

#include <QFileInfo>
#include <array>

#include "apps/DesktopExec.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct Terminal {
  QLatin1StringView program;
  QLatin1StringView option;  ///< What is before the command; empty where the command follows at once.
};

constexpr std::array kTerminals{
    Terminal{"gnome-terminal"_L1, "--"_L1},
    Terminal{"kgx"_L1, "--"_L1},
    Terminal{"ptyxis"_L1, "--"_L1},
    Terminal{"konsole"_L1, "-e"_L1},
    Terminal{"xfce4-terminal"_L1, "-x"_L1},
    Terminal{"mate-terminal"_L1, "-x"_L1},
    Terminal{"tilix"_L1, "-e"_L1},
    Terminal{"terminator"_L1, "-x"_L1},
    Terminal{"qterminal"_L1, "-e"_L1},
    Terminal{"lxterminal"_L1, "-e"_L1},
    Terminal{"deepin-terminal"_L1, "-x"_L1},
    Terminal{"kitty"_L1, ""_L1},
    Terminal{"foot"_L1, ""_L1},
    Terminal{"footclient"_L1, ""_L1},
    Terminal{"alacritty"_L1, "-e"_L1},
    Terminal{"wezterm"_L1, "start"_L1},
    Terminal{"ghostty"_L1, "-e"_L1},
    Terminal{"urxvt"_L1, "-e"_L1},
    Terminal{"st"_L1, "-e"_L1},
    Terminal{"uxterm"_L1, "-e"_L1},
    Terminal{"xterm"_L1, "-e"_L1},
};

QStringList with(const QStringList& terminal, const QStringList& command) {
  const QString program = QFileInfo(terminal.constFirst()).fileName();
  QLatin1StringView option = "-e"_L1;
  for (const Terminal& known : kTerminals)
    if (program == known.program) option = known.option;
  return option.isEmpty() ? terminal + command : terminal + QStringList{option} + command;
}

}  // namespace

QStringList TerminalCommand::wrap(const QStringList& command, const AppEnvironment& environment) {
  const QString standard = environment.findExecutable(u"xdg-terminal-exec"_s);
  if (!standard.isEmpty()) return QStringList{standard} + command;
  QStringList named;
  if (const auto words = DesktopExec::split(environment.terminal))
    for (const auto& word : *words) named << word.text;
  if (!named.isEmpty() && !environment.findExecutable(named.constFirst()).isEmpty()) return with(named, command);
  const QString chosen = environment.findExecutable(u"x-terminal-emulator"_s);
  if (!chosen.isEmpty()) return QStringList{chosen, u"-e"_s} + command;
  for (const Terminal& known : kTerminals)
    if (const QString program = environment.findExecutable(known.program); !program.isEmpty())
      return with({program}, command);
  return {};
}

}  // namespace tarnwick
