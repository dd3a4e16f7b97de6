// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "encoding/arraypanel.h"

#include "encoding/plotview.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimerEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <ranges>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int steps = 60;

/// From 0 to 1.
double patternValue(int pattern, double place, double random)
{
    switch (pattern) {
    case 1:
        return std::clamp(place + (random - 0.5) * 0.1, 0.0, 1.0);
    case 2:
        return 1 - place;
    case 3:
        return std::floor(random * 5) / 5;
    case 4:
        return 0.5 + 0.5 * std::sin(place * 20);
    default:
        return random;
    }
}

template <typename Array>
void fillArray(Array &array, int pattern)
{
    using Element = typename Array::value_type;
    using Limits = std::numeric_limits<Element>;
    std::mt19937 generator(7);
    std::uniform_real_distribution<> random;
    const double least = std::is_floating_point_v<Element> ? -1 : double(Limits::min());
    const double greatest = std::is_floating_point_v<Element> ? 1 : double(Limits::max()) * 0.999;
    for (quint64 i = 0; i < array.count(); ++i) {
        const double value = patternValue(pattern, double(i) / double(array.count()), random(generator));
        array[i] = Element(least + value * (greatest - least));
    }
}

} // namespace

ArrayPanel::ArrayPanel()
{
    auto *layout = new QHBoxLayout(this);
    auto *form = new QFormLayout;
    layout->addLayout(form);
    m_type = new QComboBox;
    for (const char *name :
         {"Int8", "UInt8", "Bool", "Int16", "UInt16", "Int32", "UInt32", "Int64", "UInt64", "Float", "Double"})
        m_type->addItem(u"Native%1Array"_s.arg(QLatin1String(name)));
    m_pattern = new QComboBox;
    m_pattern->addItems({tr("random"), tr("nearly sorted"), tr("reversed"), tr("few values"), tr("waves")});
    m_count = new QSpinBox;
    m_count->setRange(1, 100'000'000);
    m_count->setValue(4000);
    m_count->setGroupSeparatorShown(true);
    form->addRow(tr("&Type:"), m_type);
    form->addRow(tr("&Pattern:"), m_pattern);
    form->addRow(tr("&Elements:"), m_count);
    const auto button = [&](const QString &text, auto operation) {
        auto *push = new QPushButton(text);
        connect(push, &QPushButton::clicked, this, operation);
        form->addRow(push);
    };
    button(tr("&Fill"), [this] { fill(); });
    button(tr("Sort &Ascending"), [this] { sortSlowly(true); });
    button(tr("Sort &Descending"), [this] { sortSlowly(false); });
    button(tr("&Turn Round"), [this] { reverse(); });
    m_state = new QLabel;
    m_state->setWordWrap(true);
    form->addRow(m_state);
    m_plot = new PlotView;
    layout->addWidget(m_plot, 1);
    m_type->setCurrentIndex(10);
    for (QComboBox *box : {m_type, m_pattern})
        connect(box, &QComboBox::currentIndexChanged, this, &ArrayPanel::fill);
    fill();
}

void ArrayPanel::chooseType(int index) { m_type->setCurrentIndex(index); }
void ArrayPanel::choosePattern(int index) { m_pattern->setCurrentIndex(index); }
QString ArrayPanel::state() const { return m_state->text(); }

void ArrayPanel::makeArray(int type)
{
    const auto count = quint64(m_count->value());
    [&]<std::size_t... Index>(std::index_sequence<Index...>)
    {
        ((int(Index) == type ? void(m_array.emplace<Index>(count)) : void()), ...);
    }
    (std::make_index_sequence<std::variant_size_v<Arrays>>());
}

void ArrayPanel::fill()
{
    m_frames.stop();
    makeArray(m_type->currentIndex());
    std::visit([this](auto &array) { fillArray(array, m_pattern->currentIndex()); }, m_array);
    m_done = 0;
    m_state->setText(tr("%L1 elements").arg(m_count->value()));
    showArray();
}

void ArrayPanel::reverse()
{
    m_frames.stop();
    std::visit([](auto &array) { array.reverseOrder(); }, m_array);
    m_done = 0;
    showArray();
}

void ArrayPanel::sortSlowly(bool ascending)
{
    m_isAscending = ascending;
    m_done = 0;
    m_frames.start(16, this);
}

void ArrayPanel::sortBeginning(quint64 count)
{
    QElapsedTimer timer;
    const double milliseconds = std::visit(
        [&](auto &array) {
            std::remove_reference_t<decltype(array)> beginning(count);
            std::copy_n(array.begin(), count, beginning.begin());
            timer.start();
            beginning.sort(m_isAscending);
            const double elapsed = double(timer.nsecsElapsed()) / 1e6;
            std::ranges::copy(beginning, array.begin());
            return elapsed;
        },
        m_array);
    m_state->setText(tr("%L1 elements sorted in %2 ms").arg(count).arg(milliseconds, 0, 'f', 3));
}

void ArrayPanel::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_frames.timerId())
        return QWidget::timerEvent(event);
    const quint64 count = std::visit([](const auto &array) { return array.count(); }, m_array);
    m_done = std::min(count, m_done + (count + steps - 1) / steps);
    sortBeginning(m_done);
    showArray();
    if (m_done < count)
        return;
    m_frames.stop();
    Q_EMIT finished();
}

bool ArrayPanel::isSorted(bool ascending) const
{
    return std::visit(
        [ascending](const auto &array) {
            return ascending ? std::ranges::is_sorted(array) : std::ranges::is_sorted(array, std::greater());
        },
        m_array);
}

void ArrayPanel::showArray()
{
    constexpr quint64 mostDots = 20'000;
    QList<double> values;
    const quint64 count = std::visit([](const auto &array) { return array.count(); }, m_array);
    const quint64 stride = (count + mostDots - 1) / mostDots;
    std::visit(
        [&](const auto &array) {
            for (quint64 i = 0; i < count; i += stride)
                values << double(array[i]);
        },
        m_array);
    m_plot->setValues(values, qsizetype(m_done / stride));
}
