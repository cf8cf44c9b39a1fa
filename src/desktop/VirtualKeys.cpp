#include "desktop/VirtualKeys.h"

#include <QStringList>
#include <algorithm>
#include <array>

namespace tarnwick {
namespace {

struct Row {
  quint32 code;
  quint32 keysym;
  const char* name;
};

// Key symbols are those of the X keyboard extension; Latin-1 symbols are their own character.
constexpr auto kRows = std::to_array<Row>({
    {0, 'a', "A"},         {11, 'b', "B"},         {8, 'c', "C"},           {2, 'd', "D"},
    {14, 'e', "E"},        {3, 'f', "F"},          {5, 'g', "G"},           {4, 'h', "H"},
    {34, 'i', "I"},        {38, 'j', "J"},         {40, 'k', "K"},          {37, 'l', "L"},
    {46, 'm', "M"},        {45, 'n', "N"},         {31, 'o', "O"},          {35, 'p', "P"},
    {12, 'q', "Q"},        {15, 'r', "R"},         {1, 's', "S"},           {17, 't', "T"},
    {32, 'u', "U"},        {9, 'v', "V"},          {13, 'w', "W"},          {7, 'x', "X"},
    {16, 'y', "Y"},        {6, 'z', "Z"},

    {29, '0', "0"},        {18, '1', "1"},         {19, '2', "2"},          {20, '3', "3"},
    {21, '4', "4"},        {23, '5', "5"},         {22, '6', "6"},          {26, '7', "7"},
    {28, '8', "8"},        {25, '9', "9"},

    {27, '-', "-"},        {24, '=', "="},         {33, '[', "["},          {30, ']', "]"},
    {42, '\\', "\\"},      {41, ';', ";"},         {39, '\'', "'"},         {43, ',', ","},
    {47, '.', "."},        {44, '/', "/"},         {50, '`', "`"},          {10, 0xa7, "\u00a7"},

    {49, ' ', "Space"},    {36, 0xff0d, "Return"}, {48, 0xff09, "Tab"},     {51, 0xff08, "Backspace"},
    {53, 0xff1b, "Esc"},   {117, 0xffff, "Del"},   {114, 0xff63, "Ins"},    {115, 0xff50, "Home"},
    {119, 0xff57, "End"},  {116, 0xff55, "PgUp"},  {121, 0xff56, "PgDown"}, {123, 0xff51, "Left"},
    {126, 0xff52, "Up"},   {124, 0xff53, "Right"}, {125, 0xff54, "Down"},

    {122, 0xffbe, "F1"},   {120, 0xffbf, "F2"},    {99, 0xffc0, "F3"},      {118, 0xffc1, "F4"},
    {96, 0xffc2, "F5"},    {97, 0xffc3, "F6"},     {98, 0xffc4, "F7"},      {100, 0xffc5, "F8"},
    {101, 0xffc6, "F9"},   {109, 0xffc7, "F10"},   {103, 0xffc8, "F11"},    {111, 0xffc9, "F12"},
    {105, 0xffca, "F13"},  {107, 0xffcb, "F14"},   {113, 0xffcc, "F15"},    {106, 0xffcd, "F16"},
    {64, 0xffce, "F17"},   {79, 0xffcf, "F18"},    {80, 0xffd0, "F19"},     {90, 0xffd1, "F20"},

    {82, 0xffb0, "Num 0"}, {83, 0xffb1, "Num 1"},  {84, 0xffb2, "Num 2"},   {85, 0xffb3, "Num 3"},
    {86, 0xffb4, "Num 4"}, {87, 0xffb5, "Num 5"},  {88, 0xffb6, "Num 6"},   {89, 0xffb7, "Num 7"},
    {91, 0xffb8, "Num 8"}, {92, 0xffb9, "Num 9"},  {65, 0xffae, "Num ."},   {67, 0xffaa, "Num *"},
    {69, 0xffab, "Num +"}, {75, 0xffaf, "Num /"},  {78, 0xffad, "Num -"},   {76, 0xff8d, "Num Enter"},
    {81, 0xffbd, "Num ="},
});

const Row* byCode(quint32 code) {
  const auto row = std::ranges::find(kRows, code, &Row::code);
  return row == kRows.end() ? nullptr : &*row;
}

}  // namespace

std::optional<quint32> VirtualKeys::keysym(quint32 keyCode) {
  const Row* row = byCode(keyCode);
  return row ? std::optional(row->keysym) : std::nullopt;
}

std::optional<quint32> VirtualKeys::keyCode(quint32 keysym) {
  if (keysym >= 'A' && keysym <= 'Z') keysym += 'a' - 'A';
  const auto row = std::ranges::find(kRows, keysym, &Row::keysym);
  return row == kRows.end() ? std::nullopt : std::optional(row->code);
}

QString VirtualKeys::text(quint32 keyCode, quint32 modifiers) {
  QStringList parts;
  if (modifiers & kControl) parts << QStringLiteral("Ctrl");
  if (modifiers & kOption) parts << QStringLiteral("Alt");
  if (modifiers & kShift) parts << QStringLiteral("Shift");
  if (modifiers & kCommand) parts << QStringLiteral("Super");
  const Row* row = byCode(keyCode);
  parts << (row ? QString::fromUtf8(row->name) : QStringLiteral("Key %1").arg(keyCode));
  return parts.join(QLatin1Char('+'));
}

}  // namespace tarnwick
