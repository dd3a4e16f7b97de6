// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtWidgets/QWidget>

/// Numbers as dots, from left to right, the least at the bottom.
class PlotView : public QWidget
{
    Q_OBJECT

public:
    explicit PlotView(QWidget *parent = nullptr);

    /// \param done so many at the start are drawn as sorted
    void setValues(QList<double> values, qsizetype done);

    [[nodiscard]] QSize sizeHint() const override { return {700, 400}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QList<double> m_values;
    qsizetype m_done = 0;
};
