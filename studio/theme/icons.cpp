#include "studio/theme/icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace flumo::studio {
namespace {

// In a square of 16, as all icons are drawn.
constexpr double kSide = 16;

QPainterPath triangle(double left, double right) {
    QPainterPath path;
    path.moveTo(left, 3);
    path.lineTo(right, 8);
    path.lineTo(left, 13);
    path.closeSubpath();
    return path;
}

QPainterPath bar(double left) {
    QPainterPath path;
    path.addRect(left, 3, 2.5, 10);
    return path;
}

// Two half turns, each with a head.
QPainterPath loop() {
    QPainterPath path;
    for (const double start : {20.0, 200.0}) {
        QPainterPath arc;
        arc.arcMoveTo(3, 3, 10, 10, start);
        arc.arcTo(3, 3, 10, 10, start, 130);
        QPainterPathStroker stroker;
        stroker.setWidth(1.8);
        path.addPath(stroker.createStroke(arc));
    }
    QPainterPath heads;
    heads.addPolygon(QPolygonF({{1.5, 7.5}, {7.0, 6.0}, {2.8, 2.0}, {1.5, 7.5}}));
    heads.addPolygon(QPolygonF({{14.5, 8.5}, {9.0, 10.0}, {13.2, 14.0}, {14.5, 8.5}}));
    return path.united(heads);
}

// A keyframe with a sign beside it.
QPainterPath key(bool adds) {
    QPainterPath path;
    path.addPolygon(QPolygonF({{1, 9}, {6, 4}, {11, 9}, {6, 14}, {1, 9}}));
    path.addRect(10, 3, 5.5, 1.6);
    if (adds) path.addRect(11.95, 1.05, 1.6, 5.5);
    path.setFillRule(Qt::WindingFill);
    return path;
}

QPainterPath path_of(Icon icon) {
    switch (icon) {
        case Icon::kFirst:
            return bar(2.5) + triangle(13.5, 5.5);
        case Icon::kLast:
            return bar(11) + triangle(2.5, 10.5);
        case Icon::kPlay:
            return triangle(4, 13);
        case Icon::kPause:
            return bar(4) + bar(9.5);
        case Icon::kLoop:
            return loop();
        case Icon::kAddKey:
            return key(true);
        case Icon::kDeleteKey:
            return key(false);
    }
    return {};
}

class Engine : public QIconEngine {
  public:
    explicit Engine(Icon icon) : icon_(icon) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / kSide, rect.height() / kSide);
        painter->fillPath(path_of(icon_), QApplication::palette().color(group, QPalette::ButtonText));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new Engine(icon_); }

  private:
    Icon icon_;
};

}  // namespace

QIcon icon(Icon icon) {
    return QIcon(new Engine(icon));
}

}  // namespace flumo::studio
