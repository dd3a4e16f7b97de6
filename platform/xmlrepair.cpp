// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xmlrepair.h"

#include "platform/xmltext.h"

#include <QtCore/QSet>

#include <algorithm>
#include <utility>

namespace dravelin::detail {

int dropRepeatedAttributes(const xmlChar **attributes, int count)
{
    constexpr int Fields = 5;                         // name, prefix, namespace, begin and end of the value
    QSet<std::pair<const void *, const void *>> seen; // the parser has every name once
    int kept = 0;
    for (int i = 0; i < count; ++i) {
        const xmlChar **attribute = attributes + qsizetype(Fields) * i;
        const auto name = std::pair<const void *, const void *>(attribute[0], attribute[1]);
        if (seen.contains(name))
            continue;
        seen.insert(name);
        std::copy_n(attribute, Fields, attributes + qsizetype(Fields) * kept++);
    }
    return kept;
}

QByteArray repairedComment(const xmlChar *text)
{
    QByteArray comment = text ? QByteArray(chars(text)) : QByteArray("");
    while (comment.contains("--"))
        comment.replace("--", "- -");
    return comment.endsWith('-') ? comment + ' ' : comment;
}

void dropDocumentType(xmlDoc *document)
{
    xmlDtd *type = document->intSubset;
    if (!type)
        return;
    xmlUnlinkNode(reinterpret_cast<xmlNode *>(type));
    xmlFreeDtd(type);
}

} // namespace dravelin::detail
