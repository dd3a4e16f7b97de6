// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/dragpicture.h"

#include <QtGui/QPainter>
#include <QtWidgets/QTableView>

#include <algorithm>

namespace dravelin::detail {

namespace {

constexpr int mostRows = 4;
constexpr int mostWidth = 480;
constexpr qreal opacity = 0.75;
constexpr QPoint offset(24, 6); ///< from under the pointer, where the rows would hide the line that shows where they go

/// The beginning of each, if it is too wide.
QList<QRect> rowsInSight(const QTableView &table, const IndexSet &rows)
{
    QList<QRect> rects;
    const QRect viewport = table.viewport()->rect();
    const int width = std::min(viewport.width(), mostWidth);
    const int x = table.isRightToLeft() ? viewport.width() - width : 0;
    const int last = table.rowAt(viewport.bottom());
    const int end = last < 0 ? table.model()->rowCount() : last + 1;
    for (int row = std::max(0, table.rowAt(0)); row < end && rects.size() < mostRows; ++row) {
        if (rows.contains(quint64(row)))
            rects.append({x, table.rowViewportPosition(row), width, table.rowHeight(row)});
    }
    return rects;
}

void drawRows(QPainter &painter, QWidget &viewport, const QList<QRect> &rects)
{
    painter.setOpacity(opacity);
    int y = 0;
    for (const QRect &rect : rects) {
        painter.drawPixmap(0, y, viewport.grab(rect));
        y += rect.height();
    }
    painter.setOpacity(1);
}

void drawBadge(QPainter &painter, const QWidget &table, quint64 count, int right)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const QString text = QString::number(count);
    const QFontMetrics metrics(painter.font());
    const int height = metrics.height() + 2;
    const int width = std::max(height, metrics.horizontalAdvance(text) + height / 2);
    const QRect badge(right - width - 2, 2, width, height);
    painter.setPen(table.palette().color(QPalette::Base));
    painter.setBrush(QColor(0xc0, 0x1c, 0x28));
    painter.drawRoundedRect(badge, height / 2.0, height / 2.0);
    painter.setPen(Qt::white);
    painter.drawText(badge, Qt::AlignCenter, text);
}

} // namespace

DragPicture dragPicture(const QTableView &table, const IndexSet &rows, QPoint pointer)
{
    const QList<QRect> rects = rowsInSight(table, rows);
    QSize size(rects.isEmpty() ? 0 : rects.first().width(), 0);
    for (const QRect &rect : rects)
        size.rheight() += rect.height();
    if (size.isEmpty())
        return {};
    QPixmap pixmap(size * table.devicePixelRatioF());
    pixmap.setDevicePixelRatio(table.devicePixelRatioF());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    drawRows(painter, *table.viewport(), rects);
    if (rows.count() > 1)
        drawBadge(painter, table, rows.count(), size.width());
    const int x = std::clamp(pointer.x() - rects.first().x(), 0, size.width() - 1);
    return {pixmap, QPoint(x, 0) - offset};
}

} // namespace dravelin::detail
