#include "desktop/TestDesk.h"

#include <QHash>
#include <utility>

namespace tarnwick::testing {

namespace {

/// The key of a character on an American keyboard, and whether Shift is held for it.
std::pair<std::uint32_t, bool> keyOf(QChar character) {
  constexpr std::uint32_t kLetters[] = {KEY_A, KEY_B, KEY_C, KEY_D, KEY_E, KEY_F, KEY_G, KEY_H, KEY_I,
                                        KEY_J, KEY_K, KEY_L, KEY_M, KEY_N, KEY_O, KEY_P, KEY_Q, KEY_R,
                                        KEY_S, KEY_T, KEY_U, KEY_V, KEY_W, KEY_X, KEY_Y, KEY_Z};
  static const QHash<QChar, std::pair<std::uint32_t, bool>> kOthers{
      {u':', {KEY_SEMICOLON, true}}, {u'/', {KEY_SLASH, false}}, {u'.', {KEY_DOT, false}}, {u'0', {KEY_0, false}}};
  if (character >= u'a' && character <= u'z') return {kLetters[character.unicode() - u'a'], false};
  if (character >= u'1' && character <= u'9') return {KEY_1 + character.unicode() - u'1', false};
  return kOthers.value(character);
}

}  // namespace

void TestDesk::write(const QString& text) {
  for (const QChar character : text) {
    const auto [key, withShift] = keyOf(character);
    type({key}, withShift ? QList<std::uint32_t>{KEY_LEFTSHIFT} : QList<std::uint32_t>());
  }
}

}  // namespace tarnwick::testing
