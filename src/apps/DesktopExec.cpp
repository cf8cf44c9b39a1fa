#include "apps/DesktopExec.h"

#include <QRegularExpression>
#include <algorithm>

#include "apps/LaunchWords.h"
#include "base/DomainError.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

bool isCode(const QString& word, QChar& code) {
  if (word.size() != 2 || word[0] != u'%') return false;
  code = word[1];
  return true;
}

/// The first field code for files or addresses, or none.
QChar fileCode(const QList<DesktopExec::Word>& words) {
  for (const auto& word : words)
    for (qsizetype i = 0; i + 1 < word.text.size(); ++i) {
      if (word.text[i] != u'%') continue;
      const QChar code = word.text[++i];
      if (u"fFuU"_s.contains(code)) return code;
    }
  return {};
}

/// What the files are called in the form that the field code asks for.
QStringList names(QChar code, const QList<QUrl>& urls) {
  QStringList result;
  for (const QUrl& url : urls) {
    if (code == u'u' || code == u'U')
      result << url.toString(QUrl::FullyEncoded);
    else if (url.isLocalFile())
      result << url.toLocalFile();
  }
  return result;
}

/// Field codes within a word. Those that stand for several words are only known alone, and vanish here.
QString filled(const QString& word, const DesktopEntry& entry, const QString& file) {
  QString result;
  for (qsizetype i = 0; i < word.size(); ++i) {
    if (word[i] != u'%' || i + 1 == word.size()) {
      result += word[i];
      continue;
    }
    switch (word[++i].unicode()) {
      case u'%':
        result += u'%';
        break;
      case u'f':
      case u'u':
        result += file;
        break;
      case u'c':
        result += entry.name;
        break;
      case u'k':
        result += entry.path;
        break;
      default:
        break;
    }
  }
  return result;
}

QStringList command(const QList<DesktopExec::Word>& words, const DesktopEntry& entry, const QStringList& files) {
  QStringList result;
  for (const auto& word : words) {
    QChar code;
    if (isCode(word.text, code)) {
      if (code == u'F' || code == u'U') {
        result += files;
        continue;
      }
      if (code == u'i') {
        if (!entry.iconName.isEmpty()) result << u"--icon"_s << entry.iconName;
        continue;
      }
      const QString value = filled(word.text, entry, files.value(0));
      if (!value.isEmpty()) result << value;
      continue;
    }
    // Quoted words with blanks are mostly scripts for a shell: a file's name put into one would run as part of it.
    const bool script = word.quoted && word.text.contains(u' ');
    result << (script ? word.text : filled(word.text, entry, files.value(0)));
  }
  return result;
}

QString lastPart(const QString& path) {
  static const QRegularExpression separator(u"[/\\\\]"_s);
  return path.section(separator, -1, -1, QString::SectionSkipEmpty);
}

bool isInterpreter(const QString& name) {
  static const QRegularExpression pattern(
      u"^(python|perl|ruby|node|nodejs|java|javaw|gjs|gjs-console|sh|bash|dash|zsh|mono|wine|wine64|electron|qml|"
      u"qmlscene|"
      u"lua|tclsh|wish|php)[0-9.]*$"_s);
  return pattern.match(name).hasMatch();
}

QString scriptName(const QStringList& command, qsizetype first) {
  for (qsizetype i = first; i < command.size(); ++i) {
    const QString& word = command[i];
    if (word == "-c"_L1 || word == "-e"_L1) return {};
    if (word.startsWith(u'-')) continue;
    QString name = lastPart(word);
    static const QRegularExpression extension(u"\\.(py|pyw|pl|rb|js|jar|sh|exe|lnk|php|lua|tcl)$"_s,
                                              QRegularExpression::CaseInsensitiveOption);
    return name.remove(extension);
  }
  return {};
}

}  // namespace

std::optional<QList<DesktopExec::Word>> DesktopExec::split(const QString& exec) {
  QList<Word> words;
  Word current;
  bool inside = false;
  QChar quote;
  for (qsizetype i = 0; i < exec.size(); ++i) {
    const QChar letter = exec[i];
    if (!quote.isNull()) {
      const bool escapes = letter == u'\\' && quote == u'"' && i + 1 < exec.size() && u"\"`$\\"_s.contains(exec[i + 1]);
      if (escapes)
        current.text += exec[++i];
      else if (letter == quote)
        quote = QChar();
      else
        current.text += letter;
    } else if (letter == u'"' || letter == u'\'') {
      quote = letter;
      current.quoted = inside = true;
    } else if (letter.isSpace()) {
      if (inside) words << std::exchange(current, {});
      inside = false;
    } else {
      current.text += letter == u'\\' && i + 1 < exec.size() ? exec[++i] : letter;
      inside = true;
    }
  }
  if (inside) words << current;
  if (!quote.isNull() || words.isEmpty()) return {};
  return words;
}

bool DesktopExec::takesFiles(const QString& exec) {
  const auto words = split(exec);
  return words && !fileCode(*words).isNull();
}

QList<QStringList> DesktopExec::expand(const DesktopEntry& entry, const QString& exec, const QList<QUrl>& urls) {
  const auto words = split(exec);
  if (!words) throw DomainError::invalid(LaunchWords::tr("The command of “%1” cannot be read.").arg(entry.name));
  const QChar code = fileCode(*words);
  if (!urls.isEmpty() && code.isNull())
    throw DomainError::invalid(LaunchWords::tr("“%1” cannot open files.").arg(entry.name));
  const QStringList files = names(code, urls);
  if (files.size() < urls.size())
    throw DomainError::invalid(LaunchWords::tr("“%1” can only open files on this computer.").arg(entry.name));

  QList<QStringList> result;
  if ((code == u'f' || code == u'u') && files.size() > 1)
    for (const QString& file : files) result << command(*words, entry, {file});
  else
    result << command(*words, entry, files);
  if (result.constFirst().isEmpty() || result.constFirst().constFirst().isEmpty())
    throw DomainError::invalid(LaunchWords::tr("The command of “%1” cannot be read.").arg(entry.name));
  return result;
}

QString DesktopExec::executableName(const QStringList& command) {
  static const QStringList wrappers{u"env"_s,  u"nohup"_s,       u"setsid"_s,           u"pkexec"_s,
                                    u"sudo"_s, u"dbus-launch"_s, u"dbus-run-session"_s, u"exec"_s};
  bool wrapped = false;
  for (qsizetype i = 0; i < command.size(); ++i) {
    const QString& word = command[i];
    if (wrapped && (word.startsWith(u'-') || word.contains(u'='))) continue;
    const QString name = lastPart(word);
    if (wrappers.contains(name)) {
      wrapped = true;
      continue;
    }
    if (name == "flatpak"_L1 || name == "snap"_L1) return {};
    return isInterpreter(name) ? scriptName(command, i + 1) : scriptName({word}, 0);
  }
  return {};
}

QString DesktopExec::executableName(const QString& exec) {
  const auto words = split(exec);
  if (!words) return {};
  QStringList command;
  for (const Word& word : *words) command << word.text;
  return executableName(command);
}

}  // namespace tarnwick
