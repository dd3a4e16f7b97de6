// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xmlparser.h"

#include "platform/xmlrepair.h"
#include "platform/xmltext.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace dravelin::detail {

namespace {

/// One parse. Everything that libxml2 would share with the rest of the process (the loader of entities, the error
/// handlers) is replaced in its context alone.
class XMLParser
{
public:
    XMLParser(XMLOptions options, bool isUtf8);
    ~XMLParser();
    Q_DISABLE_COPY_MOVE(XMLParser)

    xmlDoc *parse(const QByteArray &data);

private:
    static XMLParser &of(void *context)
    {
        return *static_cast<XMLParser *>(static_cast<xmlParserCtxt *>(context)->_private);
    }
    static void refuse(void *context, const QString &cause);
    static void report(void *context, const xmlError *error);
    static void declareEntity(void *context, const xmlChar *name, int type, const xmlChar *publicId,
                              const xmlChar *systemId, xmlChar *content);
    static void refer(void *context, const xmlChar *name);
    static void startElement(void *context, const xmlChar *name, const xmlChar *prefix, const xmlChar *uri,
                             int declarationCount, const xmlChar **declarations, int attributeCount, int defaultedCount,
                             const xmlChar **attributes);
    static void comment(void *context, const xmlChar *text);
    static void processingInstruction(void *context, const xmlChar *target, const xmlChar *data);

    bool tidy() const { return m_options & XML_PARSE_RECOVER; }
    bool isGood() const;

    xmlParserCtxt *m_context;
    int m_options;
    QString m_cause; // of the first fault
    bool m_refused = false;
    bool m_attributeRepeated = false;
};

XMLParser::XMLParser(XMLOptions options, bool isUtf8) : m_context(xmlNewParserCtxt())
{
    m_options = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_COMPACT | XML_PARSE_NOENT;
    m_options |= options & NSXMLDocumentTidyXML ? XML_PARSE_RECOVER : 0;
    m_options |= options & XMLPreserveWhitespace ? 0 : XML_PARSE_NOBLANKS;
    m_options |= isUtf8 ? XML_PARSE_IGNORE_ENC : 0;
    m_context->_private = this;
    m_context->keepBlanks = 1; // the rest of the process may have another default
    xmlSAXHandler &sax = *m_context->sax;
    sax.serror = [](void *context, auto *error) { report(context, error); };
    sax.entityDecl = declareEntity;
    sax.reference = refer;
    sax.externalSubset = nullptr;
    sax.resolveEntity = nullptr;
    if (tidy()) {
        sax.startElementNs = startElement;
        sax.comment = comment;
        sax.processingInstruction = processingInstruction;
    }
}

XMLParser::~XMLParser()
{
    xmlFreeDoc(m_context->myDoc);
    xmlFreeParserCtxt(m_context);
}

xmlDoc *XMLParser::parse(const QByteArray &data)
{
    if (data.size() > std::numeric_limits<int>::max()) {
        logXML(u"the document is longer than 2 GB"_s);
        return nullptr;
    }
    // The context frees it again unless it proves good: refused documents have trees, too.
    m_context->myDoc = xmlCtxtReadMemory(m_context, data.constData(), int(data.size()), nullptr, nullptr, m_options);
    if (isGood()) {
        if (!m_context->wellFormed)
            resetProlog(m_context->myDoc);
        return std::exchange(m_context->myDoc, nullptr);
    }
    logXML(u"the document does not parse: "_s + (m_cause.isEmpty() ? u"it has no root element"_s : m_cause));
    return nullptr;
}

bool XMLParser::isGood() const
{
    return !m_refused && m_context->myDoc && (tidy() || m_context->wellFormed)
           && xmlDocGetRootElement(m_context->myDoc);
}

void XMLParser::refuse(void *context, const QString &cause)
{
    auto *parser = static_cast<xmlParserCtxt *>(context);
    XMLParser &self = of(context);
    if (!self.m_refused && parser->input)
        self.m_cause = u"line %1:%2: %3"_s.arg(parser->input->line).arg(parser->input->col).arg(cause);
    self.m_refused = true;
    xmlStopParser(parser);
}

void XMLParser::report(void *context, const xmlError *error)
{
    XMLParser &self = of(context);
    self.m_attributeRepeated |= error->code == XML_ERR_ATTRIBUTE_REDEFINED;
    if (self.m_cause.isEmpty() && error->level == XML_ERR_FATAL) {
        self.m_cause =
            u"line %1:%2: %3"_s.arg(error->line).arg(error->int2).arg(QString::fromUtf8(error->message).trimmed());
    }
}

void XMLParser::declareEntity(void *context, const xmlChar *name, int type, const xmlChar *publicId,
                              const xmlChar *systemId, xmlChar *content)
{
    if (of(context).tidy()) {
        refuse(context, u"the document declares the entity \"%1\""_s.arg(textOf(name)));
        return;
    }
    // An external entity that nobody knows of is never loaded.
    if (type == XML_EXTERNAL_GENERAL_PARSED_ENTITY || type == XML_EXTERNAL_PARAMETER_ENTITY)
        return;
    // With this option libxml2 does not look at what entities grow to.
    static_cast<xmlParserCtxt *>(context)->options &= ~XML_PARSE_HUGE;
    xmlSAX2EntityDecl(context, name, type, publicId, systemId, content);
}

void XMLParser::refer(void *context, const xmlChar *name)
{
    if (!of(context).tidy())
        refuse(context, u"the entity \"%1\" is declared nowhere in the document"_s.arg(textOf(name)));
}

void XMLParser::startElement(void *context, const xmlChar *name, const xmlChar *prefix, const xmlChar *uri,
                             int declarationCount, const xmlChar **declarations, int attributeCount, int defaultedCount,
                             const xmlChar **attributes)
{
    QVarLengthArray<const xmlChar *> kept;
    if (std::exchange(of(context).m_attributeRepeated, false)) {
        kept = withoutRepeatedAttributes(attributes, attributeCount);
        attributes = kept.data();
        attributeCount = int(kept.size()) / AttributeFields;
    }
    xmlSAX2StartElementNs(context, name, prefix, uri, declarationCount, declarations, attributeCount, defaultedCount,
                          attributes);
}

void XMLParser::comment(void *context, const xmlChar *text)
{
    xmlSAX2Comment(context, xmlBytes(repairedComment(text)));
}

void XMLParser::processingInstruction(void *context, const xmlChar *target, const xmlChar *data)
{
    if (xmlStrcasecmp(target, xmlBytes("xml")) != 0)
        xmlSAX2ProcessingInstruction(context, target, data);
}

} // namespace

xmlDoc *parseXML(const QByteArray &data, XMLOptions options, bool isUtf8)
{
    xmlDoc *document = XMLParser(options, isUtf8).parse(data);
    if (!document || isUtf8 || !(options & NSXMLDocumentTidyXML) || holdsUtf8(document))
        return document;
    xmlFreeDoc(document);
    return parseXML(QString::fromUtf8(data).toUtf8(), options, true);
}

} // namespace dravelin::detail
