// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/xml.h>

#include <dravelin/encoding/base64.h>
#include <dravelin/encoding/compression.h>
#include <dravelin/platform/exception.h>
#include <dravelin/platform/log.h>

using namespace Qt::StringLiterals;

namespace dravelin {

std::shared_ptr<XMLDocument> createEmptyXMLDocument()
{
    auto document = XMLDocument::create();
    document->setRootElement(XMLElement::create(u"root"_s));
    return document;
}

std::shared_ptr<XMLDocument> createXmlWithData(const QString &text) { return XMLDocument::fromText(text); }

std::shared_ptr<XMLDocument> parseXMLDocument(const QString &text) { return createXmlWithData(text); }

std::shared_ptr<XMLDocument> createXmlFromEncodedData(const QString &text)
{
    try {
        const QByteArray data = decodeXMLData(text);
        if (!data.isNull())
            return XMLDocument::fromData(data);
        logWarning(u"XML: the encoded document is not Base64"_s);
    } catch (const Exception &e) {
        logWarning(u"XML: the encoded document does not decompress: "_s + e.reason());
    }
    return {};
}

QByteArray decodeXMLData(const QString &text) { return zlibDecompressed(decodeBase64ToData(text)); }

QString encodeXMLData(const QByteArray &data) { return encodeBase64WithData(zlibCompressed(data)); }

std::shared_ptr<XMLElement> addXMLElement(const std::shared_ptr<XMLNode> &parent, const QString &name)
{
    auto element = XMLElement::create(name);
    const bool stands = element && (!parent || parent->addChild(element));
    return stands ? element : nullptr;
}

void addXMLAttribute(const std::shared_ptr<XMLNode> &element, const QString &name, const QString &value)
{
    if (const auto target = element ? element->asElement() : nullptr)
        target->setAttribute(name, value);
    else if (element)
        logWarning(u"XML: only elements have attributes, \"%1\" is not set"_s.arg(name));
}

std::shared_ptr<XMLNode> getXMLElement(const std::shared_ptr<XMLNode> &node, qsizetype index)
{
    return node ? node->childAt(index) : nullptr;
}

QString getXMLAttribute(const std::shared_ptr<XMLNode> &element, const QString &name)
{
    const auto source = element ? element->asElement() : nullptr;
    const QString text = source ? source->attribute(name) : QString();
    return text.isNull() ? u""_s : text;
}

std::shared_ptr<XMLNode> findXmlNode(const std::shared_ptr<XMLNode> &parent, qsizetype &position, const QString &name)
{
    const qsizetype index = parent ? parent->indexOfChild(name, position) : -1;
    position = index + 1;
    return parent ? parent->childAt(index) : nullptr;
}

QString prettyPrintXML(const QString &text)
{
    const auto document = XMLDocument::fromText(text, NSXMLDocumentTidyXML);
    return document ? QString::fromUtf8(document->XMLData(NSXMLNodePrettyPrint)) : u""_s;
}

QString escapeXMLText(const QString &text)
{
    QString result = text;
    return result.replace(u'&', "&amp;"_L1)
        .replace(u'<', "&lt;"_L1)
        .replace(u'>', "&gt;"_L1)
        .replace(u'\'', "&apos;"_L1)
        .replace(u'"', "&quot;"_L1);
}

void dumpXMLToLog(const std::shared_ptr<XMLDocument> &document)
{
    const QString text = document ? QString::fromUtf8(document->XMLData()) : u"(null)"_s;
    logInfo(u"\r\r"_s + text + u"\r\r"_s);
}

} // namespace dravelin
