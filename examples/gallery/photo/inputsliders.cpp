// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "photo/inputsliders.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSlider>

using namespace dravelin;

InputSliders::InputSliders(QWidget *parent) : QWidget(parent), m_form(new QFormLayout(this)) {}

void InputSliders::setFilter(const std::shared_ptr<ImageFilter> &filter)
{
    m_filter = filter;
    while (m_form->rowCount() > 0)
        m_form->removeRow(0);
    if (!filter)
        return;
    for (const FilterInput &input : filter->inputs()) {
        if (input.sliderMaximum)
            addSlider(input);
    }
    if (m_form->rowCount() == 0)
        m_form->addRow(new QLabel(tr("Nothing to set")));
}

void InputSliders::addSlider(const FilterInput &input)
{
    auto *slider = new QSlider(Qt::Horizontal);
    configureSliderWithFilterAttributes(m_filter, slider, input.key);
    slider->setValue(int(m_filter->value(input.key).toDouble() * FilterSliderSteps));
    slider->setPageStep(FilterSliderSteps / 10);
    slider->setSingleStep(FilterSliderSteps / 100);
    auto *number = new QLabel;
    const auto show = [this, slider, number, key = input.key] {
        number->setText(QString::number(filterSliderValue(slider), 'f', 2));
        m_filter->setValue(filterSliderValue(slider), key);
        Q_EMIT changed();
    };
    connect(slider, &QSlider::valueChanged, this, show);
    {
        const QSignalBlocker quiet(this);
        show();
    }
    QString label = input.key;
    m_form->addRow(label.remove(QLatin1String("input")) + u':', slider);
    m_form->addRow(QString(), number);
}
