// The toolbar's icons: one drawing a button, SVG files compiled into the
// program's resources, so that they are drawn at the screen's own resolution.
#pragma once

#include <QIcon>
#include <QString>

namespace tarvokin::ui {

// The resource path of the drawing of toolbar position `position`
// (":/icons/wing.svg"); empty for a position that has no button.
QString toolbarIconPath(int position);

// The icon of toolbar position `position`; a null icon for a position that
// has no button.
QIcon toolbarIcon(int position);

}  // namespace tarvokin::ui
