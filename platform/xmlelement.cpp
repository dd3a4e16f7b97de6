// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xmltext.h"
#include "platform/xmltree.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace dravelin {

using namespace detail;

namespace {

/// The prefix that an attribute of that name declares, empty for the default namespace; nothing for other attributes.
std::optional<QByteArray> declaredPrefix(const QByteArray &name)
{
    if (name == "xmlns")
        return QByteArray("");
    return name.startsWith("xmlns:") ? std::optional(name.sliced(6)) : std::nullopt;
}

QByteArray prefixOf(const xmlNs *declaration)
{
    return declaration->prefix ? QByteArray(chars(declaration->prefix)) : QByteArray("");
}

/// The link to the declaration of a prefix, or to the end of the declarations.
xmlNs **findDeclaration(xmlNode *element, const std::optional<QByteArray> &prefix)
{
    xmlNs **link = &element->nsDef;
    while (*link && prefixOf(*link) != prefix)
        link = &(*link)->next;
    return link;
}

bool hasName(const xmlAttr *attribute, const QByteArray &name)
{
    const bool prefixed = attribute->ns && attribute->ns->prefix;
    return prefixed ? xmlStrQEqual(attribute->ns->prefix, attribute->name, xmlBytes(name))
                    : xmlStrEqual(attribute->name, xmlBytes(name));
}

xmlAttr *findAttribute(const xmlNode *element, const QByteArray &name)
{
    xmlAttr *attribute = element->properties;
    while (attribute && !hasName(attribute, name))
        attribute = attribute->next;
    return attribute;
}

bool declare(xmlNode *element, const QByteArray &prefix, const QByteArray &uri)
{
    if (prefix == "xmlns" || prefix == "xml" || (uri.isEmpty() && !prefix.isEmpty()))
        return false;
    xmlNs *known = *findDeclaration(element, prefix);
    if (!known)
        return xmlNewNs(element, xmlBytes(uri), prefix.isEmpty() ? nullptr : xmlBytes(prefix));
    xmlFree(const_cast<xmlChar *>(known->href));
    known->href = xmlStrdup(xmlBytes(uri));
    return true;
}

/// Takes a declaration away, but not from the names that are in its namespace: the document keeps it for them.
void undeclare(xmlNode *element, xmlNs **link)
{
    xmlNs *declaration = *link;
    *link = declaration->next;
    // This sees to it that the document's own list is there, the first entry of which stays "xml".
    xmlSearchNs(element->doc, element, xmlBytes("xml"));
    declaration->next = element->doc->oldNs->next;
    element->doc->oldNs->next = declaration;
}

} // namespace

std::shared_ptr<XMLElement> XMLElement::create(const QString &name)
{
    const QByteArray bytes = xmlName(name, u"an element"_s);
    if (bytes.isNull())
        return {};
    return std::static_pointer_cast<XMLElement>(XMLTree::treeOf(xmlNewNode(nullptr, xmlBytes(bytes))));
}

bool XMLElement::setName(const QString &name)
{
    const QByteArray bytes = xmlName(name, u"an element"_s);
    if (bytes.isNull())
        return false;
    xmlNodeSetName(m_node, xmlBytes(bytes));
    m_node->ns = nullptr;
    return true;
}

QString XMLElement::namespaceURI() const
{
    const QByteArray qualified = name().toUtf8();
    const QByteArray prefix = qualified.left(qualified.indexOf(':') + 1).chopped(qualified.contains(':'));
    const xmlNs *found = xmlSearchNs(m_node->doc, m_node, prefix.isEmpty() ? nullptr : xmlBytes(prefix));
    return textOf(found ? found->href : nullptr);
}

QStringList XMLElement::attributeNames() const
{
    QStringList names;
    for (const xmlNs *ns = m_node->nsDef; ns; ns = ns->next)
        names.append(ns->prefix ? u"xmlns:"_s + textOf(ns->prefix) : u"xmlns"_s);
    for (const xmlAttr *attribute = m_node->properties; attribute; attribute = attribute->next) {
        const bool prefixed = attribute->ns && attribute->ns->prefix;
        names.append((prefixed ? textOf(attribute->ns->prefix) + u':' : QString()) + textOf(attribute->name));
    }
    return names;
}

QString XMLElement::attribute(const QString &name) const
{
    const QByteArray bytes = name.toUtf8();
    if (const xmlNs *declaration = *findDeclaration(m_node, declaredPrefix(bytes)))
        return textOf(declaration->href);
    // Odd ones such as "xmlns:-" declare nothing, and are attributes like others.
    xmlAttr *attribute = findAttribute(m_node, bytes);
    return attribute ? takeText(xmlNodeGetContent(reinterpret_cast<xmlNode *>(attribute))) : QString();
}

bool XMLElement::setAttribute(const QString &name, const QString &value)
{
    const QByteArray bytes = xmlName(name, u"an attribute"_s);
    const QByteArray text = bytes.isNull() ? bytes : xmlText(value, u"attribute \"%1\""_s.arg(name));
    if (text.isNull())
        return false;
    if (const auto prefix = declaredPrefix(bytes)) {
        const bool declared = declare(m_node, *prefix, text);
        if (!declared)
            logXML(u"\"%1\" cannot be declared as \"%2\""_s.arg(name, value));
        return declared;
    }
    const xmlAttr *known = findAttribute(m_node, bytes);
    return xmlSetNsProp(m_node, known ? known->ns : nullptr, known ? known->name : xmlBytes(bytes), xmlBytes(text));
}

bool XMLElement::removeAttribute(const QString &name)
{
    const QByteArray bytes = name.toUtf8();
    if (xmlNs **link = findDeclaration(m_node, declaredPrefix(bytes)); *link) {
        undeclare(m_node, link);
        return true;
    }
    xmlAttr *known = findAttribute(m_node, bytes);
    return known && xmlRemoveProp(known) == 0;
}

} // namespace dravelin
