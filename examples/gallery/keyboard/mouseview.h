// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtWidgets/QWidget>

/// A drawn mouse whose pressed buttons light up.
class MouseView : public QWidget
{
    Q_OBJECT

public:
    MouseView();

    [[nodiscard]] QSize sizeHint() const override { return {130, 190}; }

    /// \param buttons bit 0 left, bit 1 right, bit 2 middle
    void setButtons(quint64 buttons);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    quint64 m_buttons = 0;
};
