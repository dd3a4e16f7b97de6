// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/tableviewdelegate.h>

#include <QtWidgets/QWidget>

namespace dravelin::detail {

/// Shows where dragged rows would go, above all views of a table.
class DropMarker : public QWidget
{
public:
    explicit DropMarker(QWidget *viewport);

    /// \param row of the viewport; with Above its upper edge counts
    void showAt(const QRect &row, DropOperation operation);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    DropOperation m_operation = DropOperation::Above;
};

} // namespace dravelin::detail
