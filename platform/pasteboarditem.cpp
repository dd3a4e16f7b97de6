// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/pasteboarditem.h>

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QMimeData>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

constexpr auto itemsType = "application/x-dravelin-pasteboard-items"_L1;
constexpr quint32 mostTypes = 1000; ///< of an item that is read

QByteArray toBytes(const QList<PasteboardItem> &items)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    for (const PasteboardItem &item : items) {
        const QStringList types = item.types();
        stream << quint32(types.size());
        for (const QString &type : types)
            stream << type << item.string(type);
    }
    return bytes;
}

/// Of what another program may have made: ends where it makes no sense.
QList<PasteboardItem> fromBytes(const QByteArray &bytes)
{
    QList<PasteboardItem> items;
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_6_0);
    while (!stream.atEnd()) {
        quint32 count = 0;
        stream >> count;
        PasteboardItem item;
        if (count > mostTypes)
            break;
        for (quint32 index = 0; index < count && stream.status() == QDataStream::Ok; ++index) {
            QString type;
            QString text;
            stream >> type >> text;
            item.setString(text, type);
        }
        if (stream.status() != QDataStream::Ok)
            break;
        items.append(item);
    }
    return items;
}

} // namespace

bool PasteboardItem::setString(const QString &text, const QString &type)
{
    if (type.isEmpty())
        return false;
    const QString present = text.isNull() ? u""_s : text;
    if (const qsizetype index = m_types.indexOf(type); index >= 0) {
        m_texts[index] = present;
    } else {
        m_types.append(type);
        m_texts.append(present);
    }
    return true;
}

QString PasteboardItem::string(const QString &type) const { return m_texts.value(m_types.indexOf(type)); }

std::unique_ptr<QMimeData> PasteboardItem::toMimeData(const QList<PasteboardItem> &items)
{
    auto data = std::make_unique<QMimeData>();
    QStringList types;
    QHash<QString, QStringList> texts;
    for (const PasteboardItem &item : items) {
        for (const QString &type : item.m_types) {
            QStringList &ofType = texts[type];
            if (ofType.isEmpty())
                types.append(type);
            ofType.append(item.string(type));
        }
    }
    for (const QString &type : std::as_const(types))
        data->setData(type, texts.value(type).join(u'\n').toUtf8());
    data->setData(itemsType, toBytes(items));
    return data;
}

QList<PasteboardItem> PasteboardItem::fromMimeData(const QMimeData *data)
{
    if (!data)
        return {};
    if (data->hasFormat(itemsType))
        return fromBytes(data->data(itemsType));
    PasteboardItem item;
    const QStringList formats = data->formats();
    for (const QString &format : formats)
        item.setString(QString::fromUtf8(data->data(format)), format);
    return formats.isEmpty() ? QList<PasteboardItem>() : QList{item};
}

} // namespace dravelin
