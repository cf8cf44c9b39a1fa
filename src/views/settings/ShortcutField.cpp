#include "views/settings/ShortcutField.h"

#include <QKeyEvent>
#include <array>
#include <cmath>

#include "desktop/VirtualKeys.h"
#include "views/controls/ControlTheme.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kLeastWidth = 132;

quint32 modifiersOf(Qt::KeyboardModifiers held) {
  quint32 mask = 0;
  if (held & Qt::MetaModifier) mask |= VirtualKeys::kCommand;
  if (held & Qt::ShiftModifier) mask |= VirtualKeys::kShift;
  if (held & Qt::AltModifier) mask |= VirtualKeys::kOption;
  if (held & Qt::ControlModifier) mask |= VirtualKeys::kControl;
  return mask;
}

/// What a key alone stands for; 0 for one that is no modifier.
quint32 modifierOf(int key) {
  switch (key) {
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
      return VirtualKeys::kCommand;
    case Qt::Key_Shift:
      return VirtualKeys::kShift;
    case Qt::Key_Alt:
      return VirtualKeys::kOption;
    case Qt::Key_Control:
      return VirtualKeys::kControl;
    default:
      return 0;
  }
}

/// The key symbol of Qt's keys that are no characters of their own.
quint32 keysymOf(int key) {
  constexpr quint32 f1 = 0xffbe;
  struct Pair {
    Qt::Key key;
    quint32 keysym;
  };
  static constexpr auto named = std::to_array<Pair>({{Qt::Key_Escape, 0xff1b},
                                                     {Qt::Key_Tab, 0xff09},
                                                     {Qt::Key_Backtab, 0xff09},
                                                     {Qt::Key_Backspace, 0xff08},
                                                     {Qt::Key_Return, 0xff0d},
                                                     {Qt::Key_Enter, 0xff8d},
                                                     {Qt::Key_Insert, 0xff63},
                                                     {Qt::Key_Delete, 0xffff},
                                                     {Qt::Key_Home, 0xff50},
                                                     {Qt::Key_End, 0xff57},
                                                     {Qt::Key_PageUp, 0xff55},
                                                     {Qt::Key_PageDown, 0xff56},
                                                     {Qt::Key_Left, 0xff51},
                                                     {Qt::Key_Up, 0xff52},
                                                     {Qt::Key_Right, 0xff53},
                                                     {Qt::Key_Down, 0xff54}});
  if (key >= Qt::Key_F1 && key <= Qt::Key_F20) return f1 + static_cast<quint32>(key - Qt::Key_F1);
  for (const Pair& pair : named)
    if (pair.key == key) return pair.keysym;
  return key >= Qt::Key_Space && key < Qt::Key_Escape ? static_cast<quint32>(key) : 0;
}

std::optional<quint32> codeOf(const QKeyEvent& event) {
  // The window system tells the symbol itself; with Shift it may be another one than the key has alone, and for the
  // digits the place on the keyboard still tells it.
  if (const auto code = VirtualKeys::keyCode(event.nativeVirtualKey())) return code;
  constexpr quint32 firstDigit = 10;
  constexpr quint32 lastDigit = 19;
  const quint32 scan = event.nativeScanCode();
  if (scan >= firstDigit && scan <= lastDigit) return VirtualKeys::keyCode('0' + (scan - firstDigit + 1) % 10);
  return VirtualKeys::keyCode(keysymOf(event.key()));
}

bool worksAlone(int key) { return key >= Qt::Key_F1 && key <= Qt::Key_F20; }

}  // namespace

ShortcutField::ShortcutField(const QString& label, Kind kind, QWidget* parent)
    : PaintedButton(label, parent), name_(label), kind_(kind) {
  setFixedHeight(theme::kControlHeight);
  connect(this, &QAbstractButton::clicked, this, [this] { record(!isRecording_); });
  describe();
}

QString ShortcutField::text(const HotKeyRequest& key, Kind kind) {
  if (kind == Kind::Key) return VirtualKeys::text(key.keyCode, key.modifiers);
  const QString first = VirtualKeys::text(VirtualKeys::keyCode('0').value_or(0), key.modifiers);
  return first + u"–9"_s;
}

void ShortcutField::setKey(const HotKeyRequest& key) {
  if (key == key_) return;
  key_ = key;
  describe();
}

void ShortcutField::describe() {
  setAccessibleName(u"%1, %2"_s.arg(name_, isRecording_ ? tr("Press the keys…") : text(key_, kind_)));
  setToolTip(isRecording_ ? tr("Press Escape to keep the current shortcut.") : tr("Press to record a new shortcut."));
  updateGeometry();
  update();
}

QString ShortcutField::shown() const {
  if (!isRecording_) return text(key_, kind_);
  if (held_ == 0) return tr("Press the keys…");
  // A code that no keyboard has stands for the key that is still missing.
  QString so_far = VirtualKeys::text(VirtualKeys::keyCode('0').value_or(0), held_);
  so_far.chop(1);
  return so_far + u"…"_s;
}

void ShortcutField::record(bool on) {
  if (on == isRecording_) return;
  isRecording_ = on;
  held_ = 0;
  if (on) setFocus(Qt::MouseFocusReason);  // A click alone does not give the keyboard.
  // A key that another program has would not come here otherwise, and nothing could be said of it.
  on ? grabKeyboard() : releaseKeyboard();
  describe();
  Q_EMIT recordingChanged(on);
}

void ShortcutField::take(const QKeyEvent& event) {
  const quint32 alone = modifierOf(event.key());
  held_ = modifiersOf(event.modifiers()) | alone;
  update();
  if (alone) return;
  const bool isEscape = event.key() == Qt::Key_Escape && held_ == 0;
  if (isEscape) return record(false);
  const std::optional<quint32> code = codeOf(event);
  const QString why = code ? whyNot({*code, held_}, event.key()) : tr("This key cannot be used. Press another one.");
  if (!why.isEmpty()) {
    Q_EMIT refused(why);
    return;
  }
  const HotKeyRequest request{kind_ == Kind::Prefix ? 0 : *code, held_};
  record(false);
  Q_EMIT recorded(request);
}

/// A key that is pressed in every text would be missing everywhere else.
QString ShortcutField::whyNot(const HotKeyRequest& request, int key) const {
  if (kind_ == Kind::Prefix) return request.modifiers ? QString() : tr("Hold Ctrl, Alt, Shift or Super with a digit.");
  if ((request.modifiers & ~VirtualKeys::kShift) != 0 || worksAlone(key)) return {};
  return tr("“%1” alone would stop working in all other apps. Hold Ctrl, Alt or Super with it.")
      .arg(text(request, kind_));
}

bool ShortcutField::event(QEvent* event) {
  if (!isRecording_) return PaintedButton::event(event);
  switch (event->type()) {
    case QEvent::ShortcutOverride:
      event->accept();
      return true;
    case QEvent::KeyPress:
      take(static_cast<const QKeyEvent&>(*event));
      event->accept();
      return true;
    case QEvent::KeyRelease: {
      const auto& key = static_cast<const QKeyEvent&>(*event);
      held_ = modifiersOf(key.modifiers()) & ~modifierOf(key.key());
      update();
      event->accept();
      return true;
    }
    default:
      return PaintedButton::event(event);
  }
}

void ShortcutField::focusOutEvent(QFocusEvent* event) {
  record(false);
  PaintedButton::focusOutEvent(event);
}

void ShortcutField::hideEvent(QHideEvent* event) {
  record(false);
  PaintedButton::hideEvent(event);
}

QSize ShortcutField::sizeHint() const {
  const int width = QFontMetrics(buttonFont()).horizontalAdvance(shown()) + theme::kButtonPadding * 2;
  return {std::max(kLeastWidth, width), theme::kControlHeight};
}

void ShortcutField::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  prepare(painter);
  const Palette& palette = look().palette;
  drawRounded(painter, rect(), theme::kButtonCorner, isRecording_ ? palette.selection : ground());
  if (isRecording_)
    drawInnerLine(painter, rect(), theme::kButtonCorner, theme::kFieldFocus, look().accentColor());
  else if (showsFocus())
    drawFocusLine(painter, rect(), theme::kButtonCorner, look());
  painter.setFont(buttonFont());
  painter.setPen(isRecording_ ? palette.accentWord(look().accent) : palette.primary);
  painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, shown());
}

}  // namespace tarnwick
