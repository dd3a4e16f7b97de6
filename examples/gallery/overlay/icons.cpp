// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "overlay/icons.h"

#include <QtGui/QPainterPath>

#include <cmath>
#include <numbers>
#include <utility>

using namespace dravelin;

namespace {

constexpr QSizeF iconSize(128, 128);

QBrush shading(const QColor &top, const QColor &bottom)
{
    QLinearGradient gradient(0, 0, 0, iconSize.height());
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    return gradient;
}

QBrush solid() { return shading(Qt::white, QColor(150, 150, 150)); }

Image drawn(DrawingImageRep::Drawing drawing)
{
    Image image(iconSize);
    image.addRepresentation(std::make_shared<DrawingImageRep>(iconSize, std::move(drawing), 2));
    return image;
}

void drawFolder(QPainter &painter, const QRectF &)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(120, 120, 120));
    painter.drawRoundedRect(QRectF(12, 24, 50, 30), 8, 8);
    painter.setBrush(solid());
    painter.drawRoundedRect(QRectF(12, 36, 104, 72), 8, 8);
}

void drawStar(QPainter &painter, const QRectF &rect)
{
    QPolygonF star;
    for (int i = 0; i < 10; ++i) {
        const double angle = i * std::numbers::pi / 5, radius = i % 2 ? 24 : 56;
        star << rect.center() + QPointF(radius * std::sin(angle), -radius * std::cos(angle));
    }
    painter.setPen(QPen(QColor(90, 90, 90), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(solid());
    painter.drawPolygon(star);
}

void drawGlass(QPainter &painter, const QRectF &rect)
{
    painter.setPen(QPen(QColor(200, 200, 200), 8));
    painter.setBrush(shading(QColor(255, 255, 255, 140), QColor(255, 255, 255, 40)));
    painter.drawEllipse(rect.adjusted(18, 18, -40, -40));
    painter.setPen(QPen(QColor(140, 140, 140), 14, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(82, 82), QPointF(110, 110));
}

void drawGlow(QPainter &painter, const QRectF &rect)
{
    QRadialGradient gradient(rect.center(), 60);
    gradient.setColorAt(0, Qt::white);
    gradient.setColorAt(0.3, QColor(230, 230, 230, 230));
    gradient.setColorAt(1, QColor(200, 200, 200, 0));
    painter.fillRect(rect, gradient);
}

void drawLetter(QPainter &painter, const QRectF &)
{
    painter.setPen(QPen(QColor(110, 110, 110), 3));
    painter.setBrush(solid());
    painter.drawRoundedRect(QRectF(10, 30, 108, 72), 6, 6);
    QPainterPath flap(QPointF(12, 34));
    flap.lineTo(64, 74);
    flap.lineTo(116, 34);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(flap);
}

} // namespace

QList<Image> drawIcons()
{
    QList<Image> icons;
    for (const auto drawing : {drawFolder, drawLetter, drawStar, drawGlass, drawGlow})
        icons << drawn(drawing);
    return icons;
}

Image drawPlate()
{
    return drawn([](QPainter &painter, const QRectF &rect) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(shading(QColor(70, 80, 100), QColor(25, 30, 45)));
        painter.drawRoundedRect(rect, 22, 22);
    });
}
