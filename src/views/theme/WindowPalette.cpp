#include "views/theme/WindowPalette.h"

#include "views/theme/DesktopLook.h"

namespace tarnwick {
namespace {

struct Colors {
  WindowColors grounds;
  QColor text, secondary, disabled, accent, onAccent, tip;
};

/// No text under 7 to 1, and lines that are seen.
const Colors& highContrastColors(bool dark) {
  static const Colors darkOnes{
      {QColor(0x00, 0x00, 0x00), QColor(0x00, 0x00, 0x00), QColor(0x00, 0x00, 0x00), QColor(0xC8, 0xC8, 0xC8)},
      QColor(0xFF, 0xFF, 0xFF),
      QColor(0xF0, 0xF0, 0xF0),
      QColor(0xB8, 0xB8, 0xB8),
      QColor(0x8A, 0xB6, 0xFF),
      QColor(0x00, 0x00, 0x00),
      QColor(0x00, 0x00, 0x00)};
  static const Colors lightOnes{
      {QColor(0xFF, 0xFF, 0xFF), QColor(0xFF, 0xFF, 0xFF), QColor(0xFF, 0xFF, 0xFF), QColor(0x40, 0x40, 0x40)},
      QColor(0x00, 0x00, 0x00),
      QColor(0x1A, 0x1A, 0x1A),
      QColor(0x50, 0x50, 0x50),
      QColor(0x00, 0x37, 0x9E),
      QColor(0xFF, 0xFF, 0xFF),
      QColor(0xFF, 0xFF, 0xFF)};
  return dark ? darkOnes : lightOnes;
}

const Colors& colors(bool dark) {
  if (DesktopLook::now().highContrast) return highContrastColors(dark);
  static const Colors darkOnes{
      {QColor(0x15, 0x18, 0x1D), QColor(0x1A, 0x1D, 0x23), QColor(0x23, 0x27, 0x2F), QColor(0x33, 0x38, 0x42)},
      QColor(0xF0, 0xF1, 0xF3),
      QColor(0xB5, 0xB8, 0xBE),
      QColor(0x72, 0x76, 0x7E),
      QColor(0x5B, 0x97, 0xFF),
      QColor(0x0B, 0x0D, 0x12),
      QColor(0x2C, 0x30, 0x3A)};
  static const Colors lightOnes{
      {QColor(0xE9, 0xEB, 0xEF), QColor(0xF3, 0xF4, 0xF6), QColor(0xFF, 0xFF, 0xFF), QColor(0xD5, 0xD9, 0xDF)},
      QColor(0x1E, 0x21, 0x28),
      QColor(0x5A, 0x5E, 0x66),
      QColor(0x9A, 0x9E, 0xA6),
      QColor(0x1F, 0x62, 0xDC),
      QColor(0xFF, 0xFF, 0xFF),
      QColor(0xFF, 0xFF, 0xFF)};
  return dark ? darkOnes : lightOnes;
}

}  // namespace

const WindowColors& windowColors(bool dark) { return colors(dark).grounds; }

QPalette windowPalette(bool dark) {
  const Colors& c = colors(dark);
  QPalette palette;
  palette.setColor(QPalette::Window, c.grounds.body);
  palette.setColor(QPalette::WindowText, c.text);
  palette.setColor(QPalette::Base, c.grounds.card);
  palette.setColor(QPalette::AlternateBase, c.grounds.side);
  palette.setColor(QPalette::Text, c.text);
  palette.setColor(QPalette::PlaceholderText, c.disabled);
  palette.setColor(QPalette::Button, c.grounds.card);
  palette.setColor(QPalette::ButtonText, c.text);
  palette.setColor(QPalette::BrightText, c.text);
  palette.setColor(QPalette::ToolTipBase, c.tip);
  palette.setColor(QPalette::ToolTipText, c.text);
  palette.setColor(QPalette::Highlight, c.accent);
  palette.setColor(QPalette::HighlightedText, c.onAccent);
  palette.setColor(QPalette::Link, c.accent);
  palette.setColor(QPalette::LinkVisited, c.accent);
  palette.setColor(QPalette::Light, c.grounds.hairline);
  palette.setColor(QPalette::Midlight, c.grounds.hairline);
  palette.setColor(QPalette::Mid, c.grounds.hairline);
  palette.setColor(QPalette::Dark, c.grounds.side);
  palette.setColor(QPalette::Shadow, Qt::black);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, c.disabled);
  }
  return palette;
}

}  // namespace tarnwick
