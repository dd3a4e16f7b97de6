// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xmlrepair.h"

#include "platform/xmltext.h"
#include "platform/xmltree.h"

#include <QtCore/QSet>

#include <utility>

namespace dravelin::detail {

namespace {

// xmlCheckUTF8() takes forms that are too long.
bool isUtf8(const xmlChar *bytes) { return QByteArrayView(chars(bytes)).isValidUtf8(); }

bool isUtf8(const xmlNode *node)
{
    switch (node->type) {
    case XML_ELEMENT_NODE:
        return isUtf8(node->name);
    case XML_TEXT_NODE:
    case XML_CDATA_SECTION_NODE:
    case XML_COMMENT_NODE:
    case XML_PI_NODE:
        return isUtf8(node->name) && isUtf8(node->content);
    default:
        return true;
    }
}

bool attributesAreUtf8(const xmlNode *element)
{
    for (const xmlNs *ns = element->nsDef; ns; ns = ns->next) {
        if (!isUtf8(ns->prefix) || !isUtf8(ns->href))
            return false;
    }
    for (const xmlAttr *attribute = element->properties; attribute; attribute = attribute->next) {
        if (!isUtf8(attribute->name) || (attribute->children && !isUtf8(attribute->children->content)))
            return false;
    }
    return true;
}

} // namespace

QVarLengthArray<const xmlChar *> withoutRepeatedAttributes(const xmlChar **attributes, int count)
{
    QSet<std::pair<const void *, const void *>> seen; // the parser has every name once
    QVarLengthArray<const xmlChar *> kept;
    for (int i = 0; i < count; ++i) {
        const xmlChar **attribute = attributes + qsizetype(AttributeFields) * i;
        const auto name = std::pair<const void *, const void *>(attribute[0], attribute[1]);
        if (seen.contains(name))
            continue;
        seen.insert(name);
        kept.append(attribute, AttributeFields);
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

bool holdsUtf8(const xmlDoc *document)
{
    bool holds = true;
    for (xmlNode *child = document->children; child; child = child->next) {
        forEachNode(child, [&holds](const xmlNode *node) {
            holds = holds && isUtf8(node);
            if (node->type == XML_ELEMENT_NODE)
                holds = holds && attributesAreUtf8(node);
        });
    }
    return holds;
}

void resetProlog(xmlDoc *document)
{
    xmlFree(const_cast<xmlChar *>(document->version));
    document->version = xmlStrdup(xmlBytes("1.0"));
    if (xmlDtd *type = document->intSubset) {
        xmlUnlinkNode(reinterpret_cast<xmlNode *>(type));
        xmlFreeDtd(type);
    }
}

} // namespace dravelin::detail
