#include "shell/ui/toolbar_icons.h"

#include <QPainter>
#include <QPixmap>

namespace tarvokin::ui {

QIcon tileIcon(const QString& label, const QColor& colour) {
    QIcon icon;
    for (int size : {24, 32, 48}) {
        QPixmap pm(size, size);
        pm.fill(Qt::transparent);
        QPainter p(&pm);
        p.setRenderHint(QPainter::Antialiasing);
        p.setBrush(colour);
        p.setPen(colour.darker(140));
        p.drawRoundedRect(QRectF(1, 1, size - 2, size - 2), size / 6.0, size / 6.0);
        QFont f = p.font();
        f.setBold(true);
        f.setPixelSize(label.size() > 2 ? size * 3 / 8 : size / 2);
        p.setFont(f);
        p.setPen(Qt::white);
        p.drawText(QRect(0, 0, size, size), Qt::AlignCenter, label);
        icon.addPixmap(pm);
    }
    return icon;
}

}  // namespace tarvokin::ui
