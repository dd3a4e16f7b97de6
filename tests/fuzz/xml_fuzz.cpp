// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <cstdint>
#include <cstdlib>

using namespace dravelin;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// Looks at every node, the next one of every five put elsewhere, and values that it could have set again.
void changeAll(const std::shared_ptr<XMLDocument> &document)
{
    const auto root = document->rootElement();
    QList<std::shared_ptr<XMLNode>> nodes = root->children();
    for (qsizetype i = 0; i < nodes.size() && i < 1000; ++i) {
        const auto node = nodes.at(i);
        nodes += node->children();
        require(node->parent() && node->parent()->children().contains(node));
        if (const auto element = node->asElement()) {
            for (const QString &name : element->attributeNames())
                require(!element->attribute(name).isNull());
        } else {
            require(node->setStringValue(node->stringValue()));
        }
        if (i % 5 == 4)
            root->insertChild(node, 0);
        else if (i % 5 == 3)
            node->detach();
    }
}

void check(const QByteArray &data, XMLOptions options)
{
    const auto document = XMLDocument::fromData(data, options);
    if (!document)
        return;
    const QByteArray printed = document->XMLData();
    const auto copy = XMLDocument::fromData(printed, XMLPreserveWhitespace);
    require(copy && copy->XMLData() == printed);
    changeAll(document);
    require(XMLDocument::fromData(document->XMLData(NSXMLNodePrettyPrint)) != nullptr);
}

} // namespace

// What parses, tidy or not, prints as well-formed XML that reads back the same, and so does what it is changed to.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    for (const XMLOptions options : {XMLOptions(), XMLOptions(NSXMLDocumentTidyXML), XMLOptions(XMLPreserveWhitespace)})
        check(bytes, options);
    return 0;
}
