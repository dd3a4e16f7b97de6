// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "preferences/colorbutton.h"

#include <QtGui/QPixmap>
#include <QtWidgets/QColorDialog>

ColorButton::ColorButton()
{
    setIconSize({48, 16});
    connect(this, &QPushButton::clicked, this, &ColorButton::choose);
}

void ColorButton::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    QPixmap swatch(iconSize());
    swatch.fill(color);
    setIcon(swatch);
    setText(color.name(QColor::HexArgb));
    Q_EMIT
    colorChanged(color);
}

void ColorButton::choose()
{
    const QColor chosen = QColorDialog::getColor(m_color, this, tr("Paper"), QColorDialog::ShowAlphaChannel);
    if (chosen.isValid())
        setColor(chosen);
}
