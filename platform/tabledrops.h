// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/tableviewdelegate.h>

#include "platform/dropmarker.h"

#include <QtCore/QBasicTimer>
#include <QtCore/QMimeData>
#include <QtCore/QPointer>

QT_BEGIN_NAMESPACE
class QDropEvent;
QT_END_NAMESPACE

namespace dravelin::detail {

/// What happens while something is dragged over a table. The data source may delete the table meanwhile.
class TableDrops : public QObject
{
    Q_OBJECT

public:
    explicit TableDrops(TableView &table);

    /// Accepts the event, with the action that would be done, or refuses it.
    void move(QDropEvent &event);
    void leave();
    void drop(QDropEvent &event);

    /// What is over the table, while its data source is asked about it.
    [[nodiscard]] const QMimeData *data() const { return m_asking ? m_data.data() : nullptr; }

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Place
    {
        int row;
        DropOperation operation;
    };

    [[nodiscard]] Place placeAt(int y) const;
    [[nodiscard]] bool hasRegisteredType() const;
    [[nodiscard]] int allowedAt(Place place);
    /// \return the action that may be done there; the marker shows it. Ignored when the table is gone.
    Qt::DropAction propose(Place place);
    void mark(Place place);
    [[nodiscard]] int scrollStep() const;

    TableView &m_table;
    QPointer<DropMarker> m_marker;
    QPointer<const QMimeData> m_data;
    QPoint m_position;
    Qt::DropActions m_possible;
    Qt::DropAction m_preferred = Qt::IgnoreAction;
    QBasicTimer m_scrolling;
    bool m_asking = false;
};

} // namespace dravelin::detail
