// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/unicode.h"
#include "platform/xmlparser.h"
#include "platform/xmltext.h"
#include "platform/xmltree.h"

#include <libxml/xmlsave.h>

using namespace Qt::StringLiterals;

namespace dravelin {

using namespace detail;

namespace {

std::shared_ptr<XMLDocument> documentOf(xmlDoc *document)
{
    if (!document)
        return {};
    const auto tree = std::make_shared<XMLTree>(document, true);
    return std::static_pointer_cast<XMLDocument>(tree->handle(tree->documentNode()));
}

int append(void *bytes, const char *data, int size)
{
    static_cast<QByteArray *>(bytes)->append(data, size);
    return size;
}

} // namespace

QByteArray XMLNode::XMLData(XMLOptions options) const
{
    QByteArray bytes;
    const int format = options & NSXMLNodePrettyPrint ? XML_SAVE_FORMAT : 0;
    xmlSaveCtxt *save = xmlSaveToIO(
        append, [](void *) { return 0; }, &bytes, "UTF-8", XML_SAVE_AS_XML | XML_SAVE_NO_XHTML | format);
    if (kind() == Kind::Document)
        xmlSaveDoc(save, m_node->doc);
    else
        xmlSaveTree(save, m_node);
    xmlSaveClose(save);
    return bytes;
}

std::shared_ptr<XMLDocument> XMLDocument::create() { return documentOf(xmlNewDoc(nullptr)); }

std::shared_ptr<XMLDocument> XMLDocument::fromData(const QByteArray &data, XMLOptions options)
{
    return documentOf(parseXML(data, options, false));
}

std::shared_ptr<XMLDocument> XMLDocument::fromText(const QString &text, XMLOptions options)
{
    if (hasUtf8Form(text) && !text.contains(QChar(0)))
        return documentOf(parseXML(text.toUtf8(), options, true));
    logXML(u"the document does not parse: it has lone surrogates or NULs"_s);
    return {};
}

std::shared_ptr<XMLElement> XMLDocument::rootElement() const
{
    return std::static_pointer_cast<XMLElement>(m_tree->handle(xmlDocGetRootElement(m_node->doc)));
}

bool XMLDocument::setRootElement(const std::shared_ptr<XMLElement> &element)
{
    const auto old = rootElement();
    if (old == element)
        return true;
    qsizetype index = childCount();
    if (old) {
        for (index = 0; childAt(index) != old;)
            ++index;
        old->detach();
    }
    return !element || insertChild(element, index);
}

} // namespace dravelin
