#pragma once

class QBoxLayout;
class QWidget;

namespace tarnwick {

/// Adds a widget that reaches theme::kRowOverhang beyond the column on both sides, so that what its rows say is in line
/// with the column while the ground of a row under the pointer is wider. The column's parent must leave that space.
void addFullWidth(QBoxLayout& column, QWidget* widget);

}  // namespace tarnwick
