// Toolbar icons drawn at start: a rounded tile with a short French label, so
// the program needs no image files.
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

namespace tarvokin::ui {

QIcon tileIcon(const QString& label, const QColor& colour);

}  // namespace tarvokin::ui
