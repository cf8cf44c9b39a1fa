#include "platform/ical/TodoEdit.h"

#include <QCoreApplication>
#include <QList>
#include <algorithm>
#include <optional>
#include <utility>

#include "base/DomainError.h"

namespace tarnwick {
namespace {

struct TodoEditWords {
  Q_DECLARE_TR_FUNCTIONS(TodoEdit)
};

constexpr const char* kDateFormat = "yyyyMMdd";
constexpr const char* kTimeFormat = "yyyyMMdd'T'HHmmss";

/// A property with all the lines that it is folded over, or one BEGIN or END.
struct Line {
  qsizetype from = 0;
  qsizetype to = 0;
  QByteArray name;   ///< Upper-case.
  QByteArray head;   ///< Name and parameters as they are.
  QByteArray value;  ///< Unfolded.
};

/// A reminder in the text: its own lines without those of its alarms.
struct Todo {
  QList<Line> lines;  ///< BEGIN and END included.
  const Line* find(const char* name) const {
    for (const Line& line : lines) {
      if (line.name == name) return &line;
    }
    return nullptr;
  }
  QByteArray value(const char* name) const {
    const Line* line = find(name);
    return line ? line->value.trimmed() : QByteArray();
  }
};

[[noreturn]] void refuse(const char* sentence) { throw DomainError::invalid(TodoEditWords::tr(sentence)); }

QList<Line> linesOf(const QByteArray& text) {
  QList<Line> lines;
  for (qsizetype at = 0; at < text.size();) {
    const qsizetype newLine = text.indexOf('\n', at);
    const qsizetype next = newLine < 0 ? text.size() : newLine + 1;
    QByteArray content = text.mid(at, next - at);
    while (content.endsWith('\n') || content.endsWith('\r')) content.chop(1);
    const bool isContinued = content.startsWith(' ') || content.startsWith('\t');
    if (isContinued && !lines.isEmpty()) {
      lines.last().value += content.mid(1);
      lines.last().to = next;
    } else {
      lines.append({.from = at, .to = next, .name = {}, .head = {}, .value = content});
    }
    at = next;
  }
  for (Line& line : lines) {
    // A colon within quotes belongs to a parameter.
    bool isQuoted = false;
    qsizetype colon = 0;
    for (; colon < line.value.size() && (isQuoted || line.value[colon] != ':'); ++colon) {
      if (line.value[colon] == '"') isQuoted = !isQuoted;
    }
    line.head = line.value.first(colon);
    line.name = line.head.first(line.head.indexOf(';') < 0 ? colon : line.head.indexOf(';')).toUpper();
    line.value = line.value.mid(colon + 1);
  }
  return lines;
}

QList<Todo> todosOf(const QByteArray& text) {
  QList<Todo> todos;
  int depth = 0;
  std::optional<Todo> open;
  for (const Line& line : linesOf(text)) {
    const QByteArray value = line.value.trimmed().toUpper();
    if (line.name == "BEGIN") {
      ++depth;
      if (depth == 2 && value == "VTODO") open.emplace();
      if (depth == 2 && value != "VTODO" && value != "VTIMEZONE") {
        refuse(QT_TRANSLATE_NOOP("TodoEdit", "The reminder shares its file with others and cannot be changed here."));
      }
    }
    if (open && depth == 2) open->lines.append(line);
    if (line.name == "END") {
      if (open && depth == 2 && value == "VTODO") todos.append(*std::exchange(open, std::nullopt));
      --depth;
    }
  }
  return todos;
}

QByteArray lineEnd(const QByteArray& text, const Line& line) {
  return text.mid(line.from, line.to - line.from).endsWith("\r\n") ? "\r\n" : "\n";
}

/// A line's new text for the old one; the changes are made from the end so that places stay right.
struct Change {
  qsizetype from;
  qsizetype to;
  QByteArray text;
};

QByteArray applied(QByteArray text, QList<Change> changes) {
  std::stable_sort(changes.begin(), changes.end(), [](const Change& a, const Change& b) { return a.from > b.from; });
  for (const Change& change : changes) text.replace(change.from, change.to - change.from, change.text);
  return text;
}

struct State {
  const char* name;
  QByteArray value;  ///< Null for a line that must not be there.
};

/// How far it is, is said only where the file says so already, and what is only begun stays as far as it is.
QList<State> stateLines(const TodoEdit& edit, const Todo& todo) {
  const QByteArray percent = todo.value("PERCENT-COMPLETE");
  QList<State> state;
  if (edit.completed) {
    const QByteArray moment = edit.at.toUTC().toString(QLatin1StringView(kTimeFormat)).toLatin1() + 'Z';
    state = {{"STATUS", "COMPLETED"}, {"COMPLETED", moment}};
    if (!percent.isEmpty()) state.append(State{"PERCENT-COMPLETE", "100"});
  } else {
    state = {{"STATUS", "NEEDS-ACTION"}, {"COMPLETED", {}}};
    if (percent == "100") state.append(State{"PERCENT-COMPLETE", {}});
  }
  return state;
}

QByteArray changedTodo(const QByteArray& text, const Todo& todo, const QList<State>& state) {
  const Line& end = todo.lines.last();
  const QByteArray newLine = lineEnd(text, todo.lines.first());
  QList<Change> changes;
  QByteArray added;
  for (const auto& [name, value] : state) {
    const Line* line = todo.find(name);
    if (value.isNull()) {
      if (line) changes.append({line->from, line->to, {}});
    } else if (!line) {
      added += QByteArray(name) + ':' + value + newLine;
    } else if (line->value.trimmed() != value) {
      changes.append({line->from, line->to, QByteArray(name) + ':' + value + newLine});
    }
  }
  changes.append({end.from, end.from, added});
  return applied(text, changes);
}

/// Clock time of a value, without its zone.
QDateTime clock(const QByteArray& value) {
  QByteArray digits = value;
  if (digits.endsWith('Z')) digits.chop(1);
  const bool isDate = !digits.contains('T');
  QDateTime time =
      isDate ? QDate::fromString(QString::fromLatin1(digits), QLatin1StringView(kDateFormat)).startOfDay(Qt::UTC)
             : QDateTime::fromString(QString::fromLatin1(digits), QLatin1StringView(kTimeFormat));
  if (!isDate && time.isValid()) time = QDateTime(time.date(), time.time(), Qt::UTC);
  return time;
}

QByteArray written(const QDateTime& time, const QByteArray& like) {
  const bool isDate = !like.contains('T');
  const QByteArray text = time.toString(QLatin1StringView(isDate ? kDateFormat : kTimeFormat)).toLatin1();
  return like.endsWith('Z') ? text + 'Z' : text;
}

/// A component of its own for one occasion of a series: the series' lines with the times of that occasion.
QByteArray exceptionFor(const QByteArray& text, const Todo& series, const QByteArray& occasion,
                        const QList<State>& state) {
  const Line* anchor = series.find("DTSTART") ? series.find("DTSTART") : series.find("DUE");
  if (!anchor)
    refuse(QT_TRANSLATE_NOOP("TodoEdit",
                             "This repeating reminder has no date, so it cannot be completed for one day only."));
  const QByteArray newLine = lineEnd(text, series.lines.first());
  const qint64 shift = clock(anchor->value.trimmed()).secsTo(clock(occasion));
  QByteArray made;
  for (const Line& line : series.lines) {
    static constexpr const char* kOfTheSeries[] = {"RRULE", "RDATE", "EXDATE", "EXRULE", "RECURRENCE-ID"};
    const bool isLeftOut =
        std::any_of(std::begin(kOfTheSeries), std::end(kOfTheSeries),
                    [&](const char* name) { return line.name == name; }) ||
        std::any_of(state.begin(), state.end(), [&](const State& each) { return line.name == each.name; });
    if (isLeftOut) continue;
    if (line.name == "END") {
      made += "RECURRENCE-ID" + anchor->head.mid(anchor->name.size()) + ':' + occasion + newLine;
      for (const auto& [name, value] : state) {
        if (!value.isNull()) made += QByteArray(name) + ':' + value + newLine;
      }
    }
    if (line.name == "DTSTART" || line.name == "DUE") {
      const QByteArray value = line.value.trimmed();
      made += line.head + ':' + written(clock(value).addSecs(shift), value) + newLine;
    } else {
      made += text.mid(line.from, line.to - line.from);
    }
  }
  return made;
}

}  // namespace

QByteArray TodoEdit::apply(const QByteArray& text) const {
  const QList<Todo> todos = todosOf(text);
  const Todo* series = nullptr;
  const Todo* exception = nullptr;
  for (const Todo& todo : todos) {
    if (QString::fromUtf8(todo.value("UID")) != uid) {
      refuse(QT_TRANSLATE_NOOP("TodoEdit", "The reminder shares its file with others and cannot be changed here."));
    }
    if (!todo.find("RECURRENCE-ID")) {
      series = &todo;
    } else if (QString::fromLatin1(todo.value("RECURRENCE-ID")) == occasion) {
      exception = &todo;
    }
  }
  if (exception && !occasion.isEmpty()) return changedTodo(text, *exception, stateLines(*this, *exception));
  if (!series) refuse(QT_TRANSLATE_NOOP("TodoEdit", "The reminder is no longer in its file."));
  const QList<State> state = stateLines(*this, *series);
  if (occasion.isEmpty()) return changedTodo(text, *series, state);
  return applied(text, {{series->lines.last().to, series->lines.last().to,
                         exceptionFor(text, *series, occasion.toLatin1(), state)}});
}

}  // namespace tarnwick
