// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/tableview.h>

#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtCore/QSet>

namespace dravelin::detail {

/// The views that a table made by identifier, shown ones and those that wait to be used again.
class ViewPool : public QObject
{
    Q_OBJECT

public:
    explicit ViewPool(QWidget *viewport) : m_viewport(viewport) {}

    void setFactory(const QString &identifier, const TableView::ViewFactory &factory);

    /// The view that waits longest: rows that follow each other then keep the views of the same place.
    [[nodiscard]] QWidget *make(const QString &identifier, QObject *owner);
    /// Takes a view as shown.
    /// \return whether it was made since the last call of reclaim() and is not shown yet
    bool claim(QWidget *view);
    /// Takes those back that were made and not claimed.
    void reclaim();
    /// Takes a view back that is shown. It stays visible, since most are shown elsewhere at once; a view that was not
    /// made here is deleted.
    void giveBack(QWidget *view);
    /// Hides those that nobody has taken.
    void hideWaiting();

private:
    [[nodiscard]] std::unique_ptr<QWidget> create(const QString &identifier, QObject *owner);
    [[nodiscard]] std::unique_ptr<QWidget> placeholder(const QString &identifier, const QString &cause);
    void forget(QObject *view);

    QWidget *m_viewport;
    QHash<QString, TableView::ViewFactory> m_factories;
    QHash<QString, QList<QWidget *>> m_waiting;
    QHash<QObject *, QString> m_identifiers; ///< of all views that were made
    QList<QWidget *> m_unclaimed;
    QList<QWidget *> m_toHide;
    QSet<QString> m_reported; ///< identifiers without a view
};

/// Whether the view only says that there is none for an identifier.
[[nodiscard]] bool isPlaceholder(const QWidget *view);

/// Puts a view into the viewport. Its texts keep to WindowText, so that selected rows can have another colour for them
/// without changing text fields.
void adopt(QWidget *view, QWidget *viewport);

/// Removes a view that is in use, perhaps by the caller.
void dispose(QWidget *view);

} // namespace dravelin::detail
