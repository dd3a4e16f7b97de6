// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/stackview.h>

#include <dravelin/platform/log.h>

#include <QtCore/QScopeGuard>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

QWidgetList viewsIn(const QWidget *view)
{
    QWidgetList views;
    views.reserve(view->children().size());
    for (QObject *child : view->children()) {
        if (child->isWidgetType() && !static_cast<QWidget *>(child)->isWindow())
            views << static_cast<QWidget *>(child);
    }
    return views;
}

/// As many as a widget may have; none for what is not a number.
int wholePixels(float length) { return length > 0 ? int(std::ceil(std::min(length, float(QWIDGETSIZE_MAX)))) : 0; }

} // namespace

VerticalStackView::VerticalStackView(QWidget *parent) : QWidget(parent) {}

void VerticalStackView::setItemSpacing(float itemSpacing)
{
    if (std::exchange(m_itemSpacing, itemSpacing) != itemSpacing)
        Q_EMIT itemSpacingChanged(itemSpacing);
}

void VerticalStackView::setSizeToFit(bool sizeToFit)
{
    if (std::exchange(m_sizeToFit, sizeToFit) != sizeToFit)
        Q_EMIT sizeToFitChanged(sizeToFit);
}

void VerticalStackView::setAlignment(int alignment)
{
    if (std::exchange(m_alignment, alignment) != alignment)
        Q_EMIT alignmentChanged(alignment);
}

void VerticalStackView::setDefaults()
{
    setItemSpacing(8);
    setSizeToFit(true);
    setAlignment(0);
}

bool VerticalStackView::isFlipped() const { return true; }

QSize VerticalStackView::sizeHint() const
{
    if (!m_sizeToFit)
        return QWidget::sizeHint();
    return {wholePixels(findWidestViewWidth()), wholePixels(calculateContentHeight())};
}

QSize VerticalStackView::minimumSizeHint() const { return m_sizeToFit ? sizeHint() : QWidget::minimumSizeHint(); }

void VerticalStackView::arrangeViews()
{
    // What is called when a child moves or the view is resized may add and delete children, call this again or delete
    // the view.
    const QPointer<VerticalStackView> self(this);
    const auto arranged = qScopeGuard([self, previous = std::exchange(m_arranged, {})] {
        if (self)
            self->m_arranged = previous;
    });
    checkSizeToFit();
    if (!self)
        return;
    const Children children = childViews();
    m_arranged = children;
    const float gap = m_sizeToFit ? m_itemSpacing : calculateItemSpacing();
    float origin = 0;
    for (qsizetype i = 0; self && i < children.size(); ++i) {
        moveViewVertically(i, origin, gap);
        if (self)
            moveViewHorizontally(i);
    }
    if (self)
        updateGeometry();
}

void VerticalStackView::checkSizeToFit()
{
    if (m_sizeToFit)
        setFrame(this, {frame(this).topLeft(), QSizeF(findWidestViewWidth(), calculateContentHeight())});
}

float VerticalStackView::calculateContentHeight() const
{
    if (!m_sizeToFit)
        return float(frame(this).height());
    return sumOfHeights() + m_itemSpacing * float(viewsIn(this).size() - 1);
}

float VerticalStackView::findWidestViewWidth() const
{
    float widest = 0;
    const QWidgetList views = viewsIn(this);
    for (const QWidget *child : views) {
        if (const double width = frame(child).width(); width > double(widest))
            widest = float(width);
    }
    return widest;
}

float VerticalStackView::calculateItemSpacing() const
{
    const auto count = double(viewsIn(this).size());
    return count > 0 ? float((frame(this).height() - double(sumOfHeights())) / count) : 0;
}

void VerticalStackView::moveViewVertically(qsizetype index, float &origin, float itemSpacing)
{
    QWidget *child = childView(index);
    if (!child)
        return;
    const QSizeF size = frame(child).size();
    setFrame(child, {QPointF(0, double(origin)), size});
    origin = float(size.height() + double(itemSpacing) + double(origin));
}

void VerticalStackView::moveViewHorizontally(qsizetype index)
{
    QWidget *child = childView(index);
    if (!child)
        return;
    QRectF place = frame(child);
    const double space = frame(this).width() - place.width();
    const double x = m_alignment == 2 ? space : m_alignment == 1 ? space * 0.5 : 0;
    place.moveLeft(double(float(x)));
    setFrame(child, place);
}

/// Without those that are gone or belong to another parent by now.
QWidget *VerticalStackView::childView(qsizetype index) const
{
    const Children children = childViews();
    if (index < 0 || index >= children.size()) {
        logWarning(
            u"VerticalStackView \"%1\": no child %2 among %3"_s.arg(objectName()).arg(index).arg(children.size()));
        return nullptr;
    }
    QWidget *child = children[index];
    return child && child->parentWidget() == this ? child : nullptr;
}

VerticalStackView::Children VerticalStackView::childViews() const
{
    if (m_arranged)
        return *m_arranged;
    const QWidgetList views = viewsIn(this);
    return {views.cbegin(), views.cend()};
}

/// In single precision after each addition.
float VerticalStackView::sumOfHeights() const
{
    float sum = 0;
    const QWidgetList views = viewsIn(this);
    for (const QWidget *child : views)
        sum = float(double(sum) + frame(child).height());
    return sum;
}

} // namespace dravelin
