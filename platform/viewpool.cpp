// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/viewpool.h"

#include <dravelin/platform/log.h>

#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

namespace dravelin::detail {

namespace {

class Placeholder : public QLabel
{
public:
    explicit Placeholder(const QString &identifier) : QLabel(u"\u26a0 "_s + identifier) { setFrameShape(Box); }
};

} // namespace

bool isPlaceholder(const QWidget *view) { return dynamic_cast<const Placeholder *>(view); }

void adopt(QWidget *view, QWidget *viewport)
{
    // Or they would become the viewport's, also for the views within, whose texts then miss the colour of selected rows.
    view->setForegroundRole(view->foregroundRole());
    view->setBackgroundRole(view->backgroundRole());
    view->setParent(viewport);
}

void dispose(QWidget *view)
{
    view->hide();
    view->deleteLater();
}

void ViewPool::setFactory(const QString &identifier, const TableView::ViewFactory &factory)
{
    m_factories.insert(identifier, factory);
    m_reported.remove(identifier);
    const QList<QWidget *> waiting = m_waiting.take(identifier);
    for (QWidget *view : waiting)
        dispose(view);
    // Views that are still shown are of the former kind, and not for use again.
    m_identifiers.removeIf([&](auto entry) { return entry.value() == identifier; });
}

QWidget *ViewPool::make(const QString &identifier, QObject *owner)
{
    if (auto waiting = m_waiting.find(identifier); waiting != m_waiting.end() && !waiting->isEmpty()) {
        m_unclaimed.append(waiting->takeFirst());
        return m_unclaimed.last();
    }
    QWidget *view = create(identifier, owner).release();
    adopt(view, m_viewport);
    connect(view, &QObject::destroyed, this, &ViewPool::forget);
    m_identifiers.insert(view, identifier);
    m_unclaimed.append(view);
    return view;
}

std::unique_ptr<QWidget> ViewPool::create(const QString &identifier, QObject *owner)
{
    const TableView::ViewFactory factory = m_factories.value(identifier);
    if (!factory)
        return placeholder(identifier, u"nobody registered it"_s);
    auto view = factory(owner);
    return view ? std::move(view) : placeholder(identifier, u"its factory made none"_s);
}

std::unique_ptr<QWidget> ViewPool::placeholder(const QString &identifier, const QString &cause)
{
    if (!m_reported.contains(identifier)) {
        m_reported.insert(identifier);
        logWarning(u"Table: no view \"%1\", %2"_s.arg(identifier, cause));
    }
    return std::make_unique<Placeholder>(identifier);
}

bool ViewPool::claim(QWidget *view) { return m_unclaimed.removeOne(view); }

void ViewPool::reclaim()
{
    const QList<QWidget *> unclaimed = std::exchange(m_unclaimed, {});
    for (QWidget *view : unclaimed)
        giveBack(view);
}

void ViewPool::giveBack(QWidget *view)
{
    const auto identifier = m_identifiers.constFind(view);
    if (identifier == m_identifiers.constEnd()) {
        dispose(view);
        return;
    }
    m_waiting[*identifier].append(view);
    m_toHide.append(view);
}

void ViewPool::hideWaiting()
{
    const QList<QWidget *> candidates = std::exchange(m_toHide, {});
    for (QWidget *view : candidates) {
        if (m_waiting.value(m_identifiers.value(view)).contains(view))
            view->hide();
    }
}

void ViewPool::forget(QObject *view)
{
    const auto isView = [view](QWidget *other) { return other == view; };
    m_waiting[m_identifiers.take(view)].removeIf(isView);
    m_unclaimed.removeIf(isView);
    m_toHide.removeIf(isView);
}

} // namespace dravelin::detail
