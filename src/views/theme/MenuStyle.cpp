#include "views/theme/MenuStyle.h"

#include <QApplication>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QStyleOptionMenuItem>
#include <algorithm>

#include "desktop/Panels.h"
#include "views/theme/DesktopLook.h"
#include "views/theme/Glass.h"
#include "views/theme/LastPicture.h"
#include "views/theme/MenuMeasures.h"
#include "views/theme/Symbols.h"
#include "views/theme/Typography.h"
#include "views/theme/WindowFade.h"
#include "views/theme/WindowPalette.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kMarkWidth = 20;  ///< For check marks in front, and for what says that a menu follows behind.
constexpr double kMarkSize = 14;
constexpr int kBeforeShortcut = 28;
constexpr int kSubMenuDelay = 200;  ///< Milliseconds of hover.
constexpr int kTipDelay = 500;      ///< Milliseconds; that of the dock's own tips.
constexpr double kShortcut = 0.62;  ///< How strong the text of a key is.

QColor faint(QColor color, double share) {
  color.setAlphaF(static_cast<float>(color.alphaF() * share));
  return color;
}

double strengthOfShortcut() { return DesktopLook::now().highContrast ? 1 : kShortcut; }

int leadingOf(const QStyleOptionMenuItem& item) {
  return theme::kMenuTextInset + (item.menuHasCheckableItems ? kMarkWidth : 0);
}

void paintSeparator(QPainter& painter, const QStyleOptionMenuItem& item) {
  const QRectF line(item.rect.left() + theme::kMenuTextInset, item.rect.center().y(),
                    item.rect.width() - 2 * theme::kMenuTextInset, 1);
  painter.fillRect(line, item.palette.color(QPalette::Mid));
}

void paintMark(QPainter& painter, const QStyleOptionMenuItem& item, double left, const QColor& color) {
  const QRectF box(left, item.rect.center().y() + 0.5 - kMarkSize / 2, kMarkSize, kMarkSize);
  Symbols::draw(painter, u"checkmark"_s, box, color);
}

void paintChevron(QPainter& painter, const QStyleOptionMenuItem& item, const QColor& color) {
  const bool leftToRight = item.direction == Qt::LeftToRight;
  const double tip =
      leftToRight ? item.rect.right() - theme::kMenuTextInset + 1 : item.rect.left() + theme::kMenuTextInset;
  const double back = tip + (leftToRight ? -4 : 4);
  const double middle = item.rect.center().y() + 0.5;
  painter.setPen(QPen(color, Symbols::strokeWidth(kMarkSize), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(QPolygonF{{back, middle - 4}, {tip, middle}, {back, middle + 4}});
}

void paintItem(QPainter& painter, const QStyleOptionMenuItem& item) {
  if (item.menuItemType == QStyleOptionMenuItem::Separator) return paintSeparator(painter, item);
  const bool enabled = item.state.testFlag(QStyle::State_Enabled);
  const QColor text = item.palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::Text);
  if (enabled && item.state.testFlag(QStyle::State_Selected)) {
    drawRounded(painter, QRectF(item.rect), theme::kMenuItemCorner, faint(text, theme::kMenuHover));
  }
  const int leading = leadingOf(item);
  const QRect whole = item.rect.adjusted(leading, 0, -theme::kMenuTextInset, 0);
  const QRect box = QStyle::visualRect(item.direction, item.rect, whole);
  if (item.checkType != QStyleOptionMenuItem::NotCheckable && item.checked) {
    const bool leftToRight = item.direction == Qt::LeftToRight;
    paintMark(painter, item,
              leftToRight ? item.rect.left() + theme::kMenuTextInset - 1
                          : item.rect.right() - theme::kMenuTextInset - kMarkSize + 2,
              text);
  }
  const auto align = [&](Qt::Alignment side) {
    return static_cast<int>(QStyle::visualAlignment(item.direction, side) | Qt::AlignVCenter) | Qt::TextSingleLine |
           Qt::TextHideMnemonic;
  };
  const qsizetype tab = item.text.indexOf(u'\t');
  painter.setFont(item.font);
  painter.setPen(text);
  painter.setLayoutDirection(item.text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  painter.drawText(box, align(Qt::AlignLeft), item.text.left(tab));
  if (tab >= 0) {
    painter.setPen(faint(text, strengthOfShortcut()));
    painter.drawText(box, align(Qt::AlignRight), item.text.mid(tab + 1));
  }
  if (item.menuItemType == QStyleOptionMenuItem::SubMenu) paintChevron(painter, item, faint(text, kShortcut));
}

}  // namespace

MenuStyle& MenuStyle::install() {
  static QPointer<MenuStyle> installed;
  if (!installed) {
    installed = new MenuStyle;
    QApplication::setStyle(installed);
    // A desktop's platform plug-in may turn these on, and menus would then come at another pace than elsewhere.
    for (const Qt::UIEffect effect : {Qt::UI_AnimateMenu, Qt::UI_FadeMenu, Qt::UI_AnimateCombo})
      QApplication::setEffectEnabled(effect, false);
  }
  return *installed;
}

void MenuStyle::installFor(const Panels& panels) {
  MenuStyle& style = install();
  const auto follow = [&style, &panels] { style.composited_ = panels.isComposited(); };
  follow();
  connect(&panels, &Panels::compositingChanged, &style, follow);
}

void MenuStyle::takeDockColors(QMenu& menu, DockStyle style) {
  const bool light = Palette::make(style, Backdrop::Plain, false).light;
  const Palette panel = Palette::make(light ? DockStyle::LightGlass : DockStyle::DarkGlass, Backdrop::Plain, false);
  QPalette palette = windowPalette(!light);
  palette.setColor(QPalette::Base, panel.panel.bodyTop);
  menu.setPalette(palette);
  for (QMenu* inner : menu.findChildren<QMenu*>()) inner->setPalette(palette);
}

void MenuStyle::fade(QMenu& menu, QWidget* owner, const std::function<std::unique_ptr<FrameClock>()>& clock) const {
  if (!composited_) return;
  for (QMenu* each : QList<QMenu*>{&menu} + menu.findChildren<QMenu*>()) {
    auto* fade = new WindowFade(*each, clock());
    QObject::connect(each, &QMenu::aboutToShow, fade, [fade] {
      fade->hide();
      fade->in();
    });
    if (!owner || !fade->moves()) continue;
    QObject::connect(each, &QMenu::aboutToHide, owner,
                     [each, owner, clock] { LastPicture::leave(*each, *owner, clock()); });
  }
}

void MenuStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  auto* menu = qobject_cast<QMenu*>(widget);
  if (!menu || menu->testAttribute(Qt::WA_TranslucentBackground)) return;
  menu->setAttribute(Qt::WA_TranslucentBackground);
  // Looking for the font reads all of them, for which no start need wait.
  QObject::connect(menu, &QMenu::aboutToShow, menu, [menu] { menu->setFont(Typography::widgetFont(TextStyle::Body)); });
}

int MenuStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_MenuHMargin:
    case PM_MenuVMargin:
      return theme::kMenuMargin;
    case PM_MenuPanelWidth:
    case PM_MenuDesktopFrameWidth:
      return 0;
    case PM_SubMenuOverlap:
      return -2;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int MenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* answer) const {
  switch (hint) {
    case SH_Menu_Mask:
      if (auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(answer); mask && option && !composited_) {
        mask->region = Glass::outline(option->rect, theme::kMenuCorner);
        return 1;
      }
      return 0;
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
      return 0;
    case SH_Menu_MouseTracking:
    case SH_Menu_SloppySubMenus:
    // One that is higher than the screen would otherwise put further columns beside the first, beyond its edge.
    case SH_Menu_Scrollable:
      return 1;
    case SH_Menu_SubMenuPopupDelay:
      return kSubMenuDelay;
    case SH_Menu_FlashTriggeredItem:
      return 0;
    case SH_ToolTip_WakeUpDelay:
      return kTipDelay;
    default:
      return QProxyStyle::styleHint(hint, option, widget, answer);
  }
}

QSize MenuStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (type != CT_MenuItem || !item) return QProxyStyle::sizeFromContents(type, option, contents, widget);
  if (item->menuItemType == QStyleOptionMenuItem::Separator) return {contents.width(), theme::kMenuSeparatorHeight};
  int width = contents.width() + leadingOf(*item) + theme::kMenuTextInset;
  if (item->text.contains(u'\t')) width += kBeforeShortcut;
  if (item->menuItemType == QStyleOptionMenuItem::SubMenu) width += kMarkWidth;
  return {std::max(width, theme::kMenuLeastWidth), std::max(theme::kMenuItemHeight, item->fontMetrics.height() + 8)};
}

void MenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  if (element != PE_PanelMenu) return QProxyStyle::drawPrimitive(element, option, painter, widget);
  QColor ground = option->palette.color(QPalette::Base);
  painter->save();
  // A menu that is cut has no soft corners, and nothing shows through it.
  if (!composited_) {
    ground.setAlpha(255);
    painter->fillRect(option->rect, ground);
  }
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(QPen(option->palette.color(QPalette::Mid), 1));
  painter->setBrush(ground);
  painter->drawRoundedRect(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5), theme::kMenuCorner, theme::kMenuCorner);
  painter->restore();
}

void MenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (element == CE_MenuEmptyArea) return;
  if (element != CE_MenuItem || !item) return QProxyStyle::drawControl(element, option, painter, widget);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  paintItem(*painter, *item);
  painter->restore();
}

}  // namespace tarnwick
