#include "studio/controls/row_icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace flumo::studio {
namespace {

constexpr int kSide = 16;
constexpr int kDensity = 2;  // drawn for screens of double density; scaled down elsewhere

template <typename Draw>
QIcon drawn(const Draw& draw) {
    QPixmap pixmap(kSide * kDensity, kSide * kDensity);
    pixmap.setDevicePixelRatio(kDensity);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    painter.end();
    return QIcon(pixmap);
}

}  // namespace

QIcon keyframe_icon(const QPalette& palette, bool animated, bool at_this_frame) {
    return drawn([&](QPainter& painter) {
        const QColor color = palette.color(animated ? QPalette::Highlight : QPalette::Mid);
        painter.setPen(QPen(color, 1.5));
        painter.setBrush(at_this_frame ? QBrush(color) : QBrush(Qt::NoBrush));
        painter.drawPolygon(QPolygonF{{8, 3.5}, {12.5, 8}, {8, 12.5}, {3.5, 8}});
    });
}

QIcon reset_icon(const QPalette& palette) {
    return drawn([&](QPainter& painter) {
        const QColor color = palette.color(QPalette::WindowText);
        painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap));
        painter.setBrush(Qt::NoBrush);
        painter.drawArc(QRectF(4, 4, 8, 8), -150 * 16, 290 * 16);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawPolygon(QPolygonF{{1.8, 7.5}, {6.6, 6.8}, {3.2, 11.2}});
    });
}

}  // namespace flumo::studio
