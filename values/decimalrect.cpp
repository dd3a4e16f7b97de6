// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values/decimal.h>

#include <QtCore/QPointer>

namespace dravelin {

DecimalRect::DecimalRect(quint64 precision, QObject *parent) : Object(parent)
{
    for (auto &number : m_numbers) {
        number = DecimalNumber::withPrecision(precision);
        connect(number.get(), &DecimalNumber::valueChanged, this, &DecimalRect::numberChanged);
    }
}

DecimalRect::~DecimalRect() = default;

std::shared_ptr<DecimalRect> DecimalRect::initWithPercision(quint64 precision)
{
    return std::make_shared<DecimalRect>(precision);
}

std::shared_ptr<DecimalRect> DecimalRect::withPercision(quint64 precision) { return initWithPercision(precision); }

QRectF DecimalRect::getRectValue() const
{
    return {double(x()->getFloatValue()), double(y()->getFloatValue()), double(width()->getFloatValue()),
            double(height()->getFloatValue())};
}

void DecimalRect::setRectValue(const QRectF &rect)
{
    const QPointer<DecimalRect> self = this; // a slot of a number may delete the rectangle
    const auto numbers = m_numbers;
    m_isBeingSet = true;
    numbers[0]->setFloatValue(float(rect.x()));
    numbers[1]->setFloatValue(float(rect.y()));
    numbers[2]->setFloatValue(float(rect.width()));
    numbers[3]->setFloatValue(float(rect.height()));
    if (!self)
        return;
    m_isBeingSet = false;
    if (m_hasChanged)
        numberChanged();
}

void DecimalRect::numberChanged()
{
    m_hasChanged = m_isBeingSet;
    if (!m_isBeingSet)
        Q_EMIT rectValueChanged();
}

} // namespace dravelin
