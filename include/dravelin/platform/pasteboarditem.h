// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

QT_BEGIN_NAMESPACE
class QMimeData;
QT_END_NAMESPACE

namespace dravelin {

/// One thing that is dragged or copied: texts of several types, the preferred one first.
///
///     dravelin::PasteboardItem item;
///     item.setString(track.title, "text/plain");
class DRAVELIN_EXPORT PasteboardItem
{
public:
    /// A text that has the type already is replaced.
    /// \param type a MIME name such as "text/plain" or any other name that the receiver knows
    /// \return whether it was taken: not without a type
    /// \operation{setString:forType:}
    bool setString(const QString &text, const QString &type);
    /// The text of the type; absent (null) when there is none.
    /// \operation{stringForType:}
    [[nodiscard]] QString string(const QString &type) const;
    /// In the order in which they came.
    /// \operation{types}
    [[nodiscard]] QStringList types() const { return m_types; }

    /// What a drag or the clipboard carries for the items: under each type their texts as UTF-8, one line each, for
    /// other applications, and the items themselves.
    [[nodiscard]] static std::unique_ptr<QMimeData> toMimeData(const QList<PasteboardItem> &items);
    /// The items that toMimeData() put in, as many as there were. Other data gives one item with the text of each of
    /// its formats, none gives none.
    [[nodiscard]] static QList<PasteboardItem> fromMimeData(const QMimeData *data);

    friend bool operator==(const PasteboardItem &, const PasteboardItem &) = default;

private:
    QStringList m_types;
    QStringList m_texts; ///< as many
};

} // namespace dravelin
