// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <cstdint>
#include <cstdlib>

using namespace dravelin;

// Any text gives a document or empty text, and the document is well-formed. Escaped, it is the text of an element.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString pretty = prettyPrintXML(text);
    if (pretty.isNull() || (!pretty.isEmpty() && !createXmlWithData(pretty)))
        std::abort();
    const auto element = XMLElement::create(QStringLiteral("a"));
    if (!element->setStringValue(text) || text.contains(u'\r')) // which XML reads as a line feed
        return 0;
    const auto document = createXmlWithData(QLatin1String("<a>") + escapeXMLText(text) + QLatin1String("</a>"));
    if (!document || document->rootElement()->stringValue() != text)
        std::abort();
    return 0;
}
