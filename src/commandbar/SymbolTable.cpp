#include "commandbar/SymbolTable.h"

#include <array>

namespace tarnwick {
namespace {

struct SymbolRow {
  const char* character;
  const char* name;
  const char* keywords;  ///< Separated by blanks.
};

// clang-format off
constexpr std::array kSymbols = {
    SymbolRow{"😀", "grinning face", "grin smile happy"},
    SymbolRow{"😂", "face with tears of joy", "laugh cry joy lol"},
    SymbolRow{"🙂", "slightly smiling face", "smile ok fine"},
    SymbolRow{"😉", "winking face", "wink flirt joke"},
    SymbolRow{"😍", "smiling face with heart-eyes", "love adore crush heart"},
    SymbolRow{"🤔", "thinking face", "think hmm wonder"},
    SymbolRow{"😅", "grinning face with sweat", "sweat phew nervous awkward"},
    SymbolRow{"😭", "loudly crying face", "cry sob sad tears"},
    SymbolRow{"😊", "smiling face with smiling eyes", "blush smile pleased"},
    SymbolRow{"🙃", "upside-down face", "upside irony silly"},
    SymbolRow{"😎", "smiling face with sunglasses", "cool sunglasses shades"},
    SymbolRow{"🥲", "smiling face with tear", "tear bittersweet touched"},
    SymbolRow{"😴", "sleeping face", "sleep tired zzz"},
    SymbolRow{"🤯", "exploding head", "mind blown shocked wow"},
    SymbolRow{"👍", "thumbs up", "thumbs like yes good"},
    SymbolRow{"👎", "thumbs down", "thumbs dislike no bad"},
    SymbolRow{"👋", "waving hand", "wave hello hi bye"},
    SymbolRow{"🙏", "folded hands", "please thanks pray"},
    SymbolRow{"👏", "clapping hands", "clap applause bravo"},
    SymbolRow{"🤝", "handshake", "deal agree shake"},
    SymbolRow{"💪", "flexed biceps", "strong muscle arm gym"},
    SymbolRow{"🫡", "saluting face", "salute yes respect"},
    SymbolRow{"❤️", "red heart", "heart love like"},
    SymbolRow{"🔥", "fire", "fire hot lit flame"},
    SymbolRow{"✨", "sparkles", "sparkle shiny magic new"},
    SymbolRow{"🎉", "party popper", "party celebrate congrats hooray"},
    SymbolRow{"🚀", "rocket", "rocket ship launch fast"},
    SymbolRow{"⭐", "star", "star favourite favorite"},
    SymbolRow{"⚡", "high voltage", "lightning bolt power electric"},
    SymbolRow{"💡", "light bulb", "idea bulb lamp"},
    SymbolRow{"🐛", "bug", "bug insect error"},
    SymbolRow{"🔒", "locked", "lock secure private"},
    SymbolRow{"🔑", "key", "key password unlock"},
    SymbolRow{"📌", "pushpin", "pin location mark"},
    SymbolRow{"📎", "paperclip", "clip attach attachment"},
    SymbolRow{"🗑️", "wastebasket", "trash bin delete garbage"},
    SymbolRow{"📝", "memo", "note write pencil"},
    SymbolRow{"📅", "calendar", "calendar date day"},
    SymbolRow{"⏰", "alarm clock", "alarm time wake"},
    SymbolRow{"☕", "hot beverage", "coffee tea drink break"},
    SymbolRow{"✅", "check mark button", "check done tick yes"},
    SymbolRow{"❌", "cross mark", "cross no wrong cancel"},
    SymbolRow{"⚠️", "warning", "warning caution alert"},
    SymbolRow{"➡️", "right arrow", "arrow right next"},
    SymbolRow{"⬅️", "left arrow", "arrow left back"},
    SymbolRow{"→", "rightwards arrow", "arrow right to"},
    SymbolRow{"←", "leftwards arrow", "arrow left from"},
    SymbolRow{"↑", "upwards arrow", "arrow up"},
    SymbolRow{"↓", "downwards arrow", "arrow down"},
    SymbolRow{"—", "em dash", "dash em long"},
    SymbolRow{"–", "en dash", "dash en range"},
    SymbolRow{"…", "horizontal ellipsis", "dots ellipsis three"},
    SymbolRow{"“", "left double quotation mark", "quote open double"},
    SymbolRow{"”", "right double quotation mark", "quote close double"},
    SymbolRow{"’", "right single quotation mark", "apostrophe quote single"},
    SymbolRow{"·", "middle dot", "dot middle interpunct"},
    SymbolRow{"•", "bullet", "bullet dot list"},
    SymbolRow{"°", "degree sign", "degree degrees temperature angle"},
    SymbolRow{"×", "multiplication sign", "times multiply by"},
    SymbolRow{"÷", "division sign", "divide divided by"},
    SymbolRow{"±", "plus-minus sign", "plus minus tolerance"},
    SymbolRow{"≈", "almost equal to", "approx approximately about"},
    SymbolRow{"≠", "not equal to", "unequal different not"},
    SymbolRow{"≤", "less-than or equal to", "less most max"},
    SymbolRow{"≥", "greater-than or equal to", "greater least min"},
    SymbolRow{"∞", "infinity", "infinite endless forever"},
    SymbolRow{"€", "euro sign", "euro eur currency"},
    SymbolRow{"£", "pound sign", "pound gbp sterling currency"},
    SymbolRow{"¥", "yen sign", "yen yuan currency"},
    SymbolRow{"©", "copyright sign", "copyright rights"},
    SymbolRow{"®", "registered sign", "registered brand"},
    SymbolRow{"™", "trade mark sign", "trademark tm brand"},
    SymbolRow{"⌘", "place of interest sign", "command cmd apple key"},
    SymbolRow{"⌥", "option key", "option alt key"},
    SymbolRow{"⇧", "upwards white arrow", "shift arrow key"},
    SymbolRow{"⌃", "up arrowhead", "control ctrl key"},
    SymbolRow{"⏎", "return symbol", "return enter key"},
    SymbolRow{"⌫", "erase to the left", "delete backspace key"},
};
// clang-format on

}  // namespace

const QList<SymbolTable::Entry>& SymbolTable::entries() {
  static const QList<Entry> entries = [] {
    QList<Entry> made;
    made.reserve(kSymbols.size());
    for (const SymbolRow& row : kSymbols)
      made.append({QString::fromUtf8(row.character), QString::fromLatin1(row.name),
                   QString::fromLatin1(row.keywords).split(u' ')});
    return made;
  }();
  return entries;
}

}  // namespace tarnwick
