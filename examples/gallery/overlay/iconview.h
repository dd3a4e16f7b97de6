// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/QImage>
#include <QtWidgets/QWidget>

/// Icons side by side on a chequered ground, which shows what is transparent.
class IconView : public QWidget
{
    Q_OBJECT

public:
    void setImages(const QList<QImage> &images);
    [[nodiscard]] const QList<QImage> &images() const { return m_images; }
    [[nodiscard]] QSize sizeHint() const override { return {6 * 140, 150}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QList<QImage> m_images;
};
