// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>

static QTextStream out(stdout);

void build()
{
    //! [build]
    auto document = dravelin::createEmptyXMLDocument();
    auto page = dravelin::addXMLElement(document->rootElement(), "page");
    dravelin::addXMLAttribute(page, "number", "1");
    page->setStringValue("Salt & pepper");
    out << document->XMLData(dravelin::NSXMLNodePrettyPrint);
    //! [build]
}

void find()
{
    //! [find]
    auto document = dravelin::createXmlWithData("<book><page number='1'/><note/><page number='2'>two</page></book>");
    if (!document)
        return; // the log names the cause, with line and column

    qsizetype position = 0;
    while (auto page = dravelin::findXmlNode(document->rootElement(), position, "page"))
        out << "page " << dravelin::getXMLAttribute(page, "number") << '\n';

    dravelin::XMLContentParser parser;
    parser.addHandler("page", [](const auto &page) { out << '"' << page->stringValue() << "\"\n"; });
    parser.parse(document->rootElement());
    //! [find]
}

void change()
{
    //! [change]
    auto source =
        dravelin::XMLDocument::fromText("<s:drawing xmlns:s='urn:s'><s:layer name='top'/><s:layer/></s:drawing>");
    auto target = dravelin::XMLDocument::fromText("<book/>");
    for (const auto &node : source->rootElement()->children()) { // as they were at the start
        auto layer = node->asElement();
        if (layer && layer->attribute("name").isNull()) {
            layer->setAttribute("name", "unnamed");
            target->rootElement()->addChild(layer); // leaves its old place, and takes the declaration of "s" along
        }
    }
    out << source->rootElement()->XMLData() << '\n' << target->rootElement()->XMLData() << '\n';
    //! [change]
}

void text()
{
    //! [text]
    const QString packed = dravelin::encodeXMLData("<book><page/></book>");
    out << dravelin::createXmlFromEncodedData(packed)->rootElement()->childCount() << " page\n";

    out << dravelin::prettyPrintXML("<book><page>one<page>two"); // repaired
    out << dravelin::escapeXMLText("a<b & 'c'") << '\n';
    //! [text]
}

int main()
{
    build();
    find();
    change();
    text();
}
