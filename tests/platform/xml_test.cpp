// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/xml.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>

#include <gmock/gmock.h>

#include <random>

using namespace dravelin;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

/// What the root element of the text prints as; absent when the text does not parse.
QString printed(const QString &text, XMLOptions parse = {}, XMLOptions print = {})
{
    const auto document = XMLDocument::fromText(text, parse);
    return document ? QString::fromUtf8(document->rootElement()->XMLData(print)) : QString();
}

QString print(const std::shared_ptr<XMLNode> &node) { return QString::fromUtf8(node->XMLData()); }

std::shared_ptr<XMLElement> root(const QString &text) { return XMLDocument::fromText(text)->rootElement(); }

/// A document whose element `a` has `count` levels of entities, each ten times the one below, and the use made of them.
QString laughs(int count, const QString &use)
{
    QString declarations = u"<!ENTITY e0 '%1'>"_s.arg(u"ha "_s.repeated(10));
    for (int i = 1; i < count; ++i)
        declarations += u"<!ENTITY e%1 '%2'>"_s.arg(i).arg(u"&e%1;"_s.arg(i - 1).repeated(10));
    return u"<!DOCTYPE a [%1]>"_s.arg(declarations) + use.arg(u"&e%1;"_s.arg(count - 1));
}

} // namespace

TEST(XMLParse, StrictAndTidy)
{
    const struct
    {
        QString text, strict, tidy;
    } rows[] = {
        {u"<a b='1' a='2'>x &amp; &#233;</a>"_s, u"<a b=\"1\" a=\"2\">x &amp; é</a>"_s, {}},
        {u"<?xml version='1.0' encoding='ISO-8859-1'?><a>é</a>"_s, u"<a>é</a>"_s, {}}, // text is no Latin-1
        {u"<a>\n <b/>\n <c> </c></a>"_s, u"<a><b/><c> </c></a>"_s, {}},
        {u"<p>one <b>two</b>\n</p>"_s, u"<p>one <b>two</b>\n</p>"_s, {}},
        {u"<a><!--c--><?t d?><![CDATA[<]]></a>"_s, u"<a><!--c--><?t d?><![CDATA[<]]></a>"_s, {}},
        {u"<s:a xmlns:s='u'><s:b s:c='1'/></s:a>"_s, u"<s:a xmlns:s=\"u\"><s:b s:c=\"1\"/></s:a>"_s, {}},
        {u"<!DOCTYPE a [<!ENTITY e 'E&#60;b/>'>]><a x='&lt;'>&e;</a>"_s, u"<a x=\"&lt;\">E<b/></a>"_s, u"absent"_s},
        {u"<!DOCTYPE a SYSTEM 'http://127.0.0.1:9/x'><a/>"_s, u"<a/>"_s, {}},
        {u"<a><b>x</a>"_s, {}, u"<a><b>x</b></a>"_s},
        {u"<a x='1' x='&gt;' y='3' x='&lt;'/>"_s, {}, u"<a x=\"1\" y=\"3\"/>"_s}, // references: values of their own
        {u"<a><!-- a---b --></a>"_s, {}, u"<a><!-- a- - -b --></a>"_s},
        {u"<a/>trailing"_s, {}, u"<a/>"_s},
        {u"<a>&nbsp;\x01x</a>"_s, {}, u"<a>x</a>"_s},
        {u"<!DOCTYPE a [<!ELEMENT a (b><a/>"_s, {}, u"<a/>"_s},
        {u"no XML"_s, {}, u"absent"_s},
        {u"<!--only-->"_s, {}, u"absent"_s},
        {{}, {}, u"absent"_s},
        {u"<a>\0</a>"_s, {}, u"absent"_s},
        {u"<a>%1</a>"_s.arg(QChar(0xd800)), {}, u"absent"_s},
    };
    const LogRecorder log;
    for (const auto &row : rows) {
        const QString tidy = row.tidy == u"absent" ? QString() : row.tidy.isNull() ? row.strict : row.tidy;
        EXPECT_EQ(printed(row.text), row.strict) << row.text.toStdString();
        EXPECT_EQ(printed(row.text, NSXMLDocumentTidyXML), tidy) << row.text.toStdString();
    }
}

TEST(XMLParse, LogsOneLineWithTheCause)
{
    LogRecorder log;
    (void)XMLDocument::fromText(u"<a>\n<b x='1' x='2'></c></a><d"_s);
    (void)XMLDocument::fromText(u"<!DOCTYPE a [\n<!ENTITY e 'x'>]><a/>"_s, NSXMLDocumentTidyXML);
    (void)XMLDocument::fromText(u"<!--x-->"_s, NSXMLDocumentTidyXML);
    const QStringList lines = log.take();
    EXPECT_THAT(lines,
                ElementsAre(u"XML: the document does not parse: line 2:15: Attribute x redefined"_s,
                            u"XML: the document does not parse: line 2:15: the document declares the entity \"e\""_s,
                            testing::_));
}

TEST(XMLParse, DecodesBytes)
{
    const QString text = u"<?xml version=\"1.0\" encoding=\"%1\"?>\n<a>é</a>\n"_s;
    const QByteArray utf16(reinterpret_cast<const char *>(u"\ufeff<a>é</a>"), 18);
    for (const QByteArray &data : {text.arg(u"ISO-8859-1").toLatin1(), utf16, QByteArray("\xef\xbb\xbf<a>é</a>")}) {
        const auto document = XMLDocument::fromData(data);
        ASSERT_TRUE(document) << data.toStdString();
        EXPECT_EQ(QString::fromUtf8(document->XMLData()), text.arg(u"UTF-8"));
    }
    const LogRecorder log;
    EXPECT_FALSE(XMLDocument::fromData("<a b='\xc2'/>"));
    EXPECT_EQ(XMLDocument::fromData("<a>\xc0<\xaf</a>", NSXMLDocumentTidyXML)->stringValue(), u"\ufffd"_s);
    EXPECT_EQ(print(XMLDocument::fromData("<a b='\xc2'/>", NSXMLDocumentTidyXML)->rootElement()),
              u"<a b=\"\ufffd\"/>"_s);
}

TEST(XMLParse, OpensNoFile)
{
    const struct
    {
        const char *file, *document; // %1 is the file's URL
    } rows[] = {
        {"secret", "<!DOCTYPE a [<!ENTITY e SYSTEM '%1'>]><a>&e;</a>"},
        {"<!ENTITY leak 'secret'>", "<!DOCTYPE a SYSTEM '%1'><a>&leak;</a>"},
        {"<!ENTITY leak 'secret'>", "<!DOCTYPE a [<!ENTITY % p SYSTEM '%1'> %p;]><a>&leak;</a>"},
    };
    const LogRecorder log;
    const QTemporaryDir folder;
    for (const auto &row : rows) {
        QFile file(folder.filePath(u"file"_s));
        ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write(row.file) > 0);
        file.close();
        const QString text = QString::fromLatin1(row.document).arg(QUrl::fromLocalFile(file.fileName()).toString());
        EXPECT_TRUE(printed(text).isNull()) << row.document;
        EXPECT_FALSE(printed(text, NSXMLDocumentTidyXML).contains(u"secret"_s)) << row.document;
    }
}

TEST(XMLParse, RefusesBombsButNotEntities)
{
    const LogRecorder log;
    EXPECT_EQ(root(laughs(2, u"<a>%1</a>"_s))->stringValue().size(), 300);
    for (const char *use : {"<a>%1</a>", "<a x='%1'/>", "<a><b x='%1'/>%1</a>"})
        EXPECT_FALSE(XMLDocument::fromText(laughs(12, QString::fromLatin1(use)))) << use;
    const QString quadratic = u"<!DOCTYPE a [<!ENTITY e '%1'>]><a>%2</a>"_s;
    EXPECT_FALSE(XMLDocument::fromText(quadratic.arg(u"x"_s.repeated(50'000), u"&e;"_s.repeated(50'000))));
}

TEST(XMLTree, OneObjectPerNode)
{
    auto document = XMLDocument::fromText(u"<!DOCTYPE a><!--c--><a><b/>t</a>"_s);
    const auto a = document->rootElement();
    EXPECT_EQ(a, document->childAt(1));
    EXPECT_EQ(a->childAt(0)->parent(), a);
    EXPECT_EQ(a->childAt(1)->previousSibling(), a->childAt(0));
    EXPECT_EQ(a->document(), document);
    EXPECT_EQ(a->childAt(1)->asElement(), nullptr);
    const XMLNode *known = document.get();
    document.reset();
    EXPECT_NE(a->document(), nullptr) << known; // the node keeps it
    EXPECT_EQ(a->previousSibling()->stringValue(), u"c"_s);
    EXPECT_EQ(a->document()->stringValue(), u"t"_s);
}

TEST(XMLTree, RemovedNodesLiveOn)
{
    auto document =
        XMLDocument::fromText(u"<s:a xmlns:s='u' xmlns='d'><b id='1'><s:c xml:id='x'>t</s:c></b><b/></s:a>"_s);
    const auto c = document->rootElement()->childAt(0)->childAt(0)->asElement();
    {
        const auto b = document->rootElement()->removeChild(0);
        EXPECT_EQ(b->parent(), nullptr);
        EXPECT_EQ(b->document(), nullptr);
    }
    EXPECT_EQ(print(document->rootElement()), u"<s:a xmlns:s=\"u\" xmlns=\"d\"><b/></s:a>"_s);
    document.reset();
    EXPECT_EQ(c->parent()->asElement()->attribute(u"id"_s), u"1"_s);
    c->detach();
    EXPECT_EQ(print(c), u"<s:c xmlns:s=\"u\" xml:id=\"x\">t</s:c>"_s);
    EXPECT_EQ(c->namespaceURI(), u"u"_s);

    const auto other = root(u"<r><s/></r>"_s);
    EXPECT_TRUE(other->insertChild(c, 0));
    EXPECT_EQ(c->nextSibling(), other->childAt(1));
    EXPECT_EQ(print(other), u"<r><s:c xmlns:s=\"u\" xml:id=\"x\">t</s:c><s/></r>"_s);
    EXPECT_TRUE(c->removeAttribute(u"xmlns:s"_s)); // its name still refers to it
    EXPECT_EQ(print(c), u"<s:c xml:id=\"x\">t</s:c>"_s);
    c->setStringValue(u"u"_s);
    EXPECT_TRUE(other->addChild(c)); // moves within the tree
    EXPECT_EQ(print(other), u"<r><s/><s:c xmlns:s=\"u\" xml:id=\"x\">u</s:c></r>"_s);
}

TEST(XMLTree, RefusesWhatItCannotHold)
{
    const LogRecorder log;
    const auto document = XMLDocument::fromText(u"<a b='1'><c>t</c><!--d--><?e f?></a>"_s);
    const auto a = document->rootElement(), c = a->childAt(0)->asElement();
    const QString before = print(a);
    const struct
    {
        const char *name;
        std::function<bool()> act;
    } rows[] = {
        {"itself", [&] { return a->addChild(a); }},
        {"in itself", [&] { return c->addChild(a); }},
        {"nothing", [&] { return a->addChild(nullptr); }},
        {"document", [&] { return a->addChild(document); }},
        {"second root", [&] { return document->addChild(c); }},
        {"text at top", [&] { return document->addChild(XMLNode::createText(u"x"_s)); }},
        {"text of a document", [&] { return document->setStringValue(u"x"_s); }},
        {"child of text", [&] { return c->childAt(0)->addChild(XMLElement::create(u"x"_s)); }},
        {"no such place", [&] { return a->insertChild(c, 3); }}, // two others are left then
        {"control character", [&] { return c->setStringValue(u"\x01"_s); }},
        {"surrogate", [&] { return c->childAt(0)->setStringValue(QString(QChar(0xdc00))); }},
        {"U+FFFE", [&] { return a->setAttribute(u"b"_s, QString(QChar(0xfffe))); }},
        {"comment", [&] { return a->childAt(1)->setStringValue(u"x-"_s); }},
        {"instruction", [&] { return a->childAt(2)->setStringValue(u"?>"_s); }},
        {"name", [&] { return c->setName(u"1"_s); }},
        {"empty name", [&] { return XMLElement::create({}) != nullptr; }},
        {"attribute name", [&] { return a->setAttribute(u"x y"_s, u"1"_s); }},
        {"xmlns:xml", [&] { return a->setAttribute(u"xmlns:xml"_s, u"u"_s); }},
        {"target", [&] { return XMLNode::createProcessingInstruction(u"XML"_s, {}) != nullptr; }},
    };
    for (const auto &row : rows) {
        const qsizetype logged = log.lines().size();
        EXPECT_FALSE(row.act()) << row.name;
        EXPECT_EQ(log.lines().size(), logged + 1) << row.name;
        EXPECT_EQ(print(a), before) << row.name;
    }
}

TEST(XMLTree, Attributes)
{
    const auto a = root(u"<a z='1' xmlns:p='u' p:y='2' x='3'/>"_s);
    EXPECT_TRUE(a->setAttribute(u"p:y"_s, u"<\"\n"_s));
    EXPECT_TRUE(a->setAttribute(u"w"_s, {}));
    EXPECT_TRUE(a->setAttribute(u"xmlns:p"_s, u"v"_s));
    EXPECT_TRUE(a->removeAttribute(u"z"_s));
    EXPECT_FALSE(a->removeAttribute(u"y"_s));
    EXPECT_THAT(a->attributeNames(), ElementsAre(u"xmlns:p"_s, u"p:y"_s, u"x"_s, u"w"_s));
    EXPECT_EQ(print(a), u"<a xmlns:p=\"v\" p:y=\"&lt;&quot;&#10;\" x=\"3\" w=\"\"/>"_s);
    EXPECT_EQ(a->attribute(u"p:y"_s), u"<\"\n"_s);
    EXPECT_EQ(a->attribute(u"w"_s), u""_s);
    EXPECT_TRUE(a->attribute(u"y"_s).isNull());
    EXPECT_EQ(a->attribute(u"xmlns:p"_s), u"v"_s);
    EXPECT_EQ(root(u"<a xmlns:-='1'/>"_s)->attribute(u"xmlns:-"_s), u"1"_s); // declares nothing, as it is no prefix
}

// Random changes to a wide element against a list, with looks at random places that leave cursors behind.
TEST(XMLTree, IndexesStayTrue)
{
    std::mt19937 random(7);
    const auto parent = XMLElement::create(u"a"_s);
    QList<std::shared_ptr<XMLNode>> expected;
    for (int round = 0; round < 5000; ++round) {
        const qsizetype index = qsizetype(random() % (expected.size() + 1));
        const unsigned act = random() % (round < 500 ? 2 : 6);
        if (act < 2) {
            const auto child = act ? XMLNode::createText(u"t"_s) : XMLElement::create(u"b"_s);
            ASSERT_TRUE(index % 3 ? parent->insertChild(child, index) : parent->addChild(child));
            expected.insert(index % 3 ? index : expected.size(), child);
        } else if (act == 2) {
            ASSERT_EQ(parent->removeChild(index), expected.value(index));
            expected.remove(index, index < expected.size());
        } else if (act == 3 && index < expected.size()) {
            expected.takeAt(index)->detach();
        } else {
            ASSERT_EQ(parent->childAt(index), expected.value(index)) << "round " << round;
        }
        ASSERT_EQ(parent->childCount(), expected.size()) << "round " << round;
    }
    EXPECT_EQ(parent->children(), expected);
}

TEST(XMLTree, DeepTrees)
{
    constexpr int Depth = 100'000;
    const QString text = u"<a>"_s.repeated(Depth) + u"</a>"_s.repeated(Depth);
    auto parsed = root(text);
    auto built = XMLDocument::create();
    std::shared_ptr<XMLNode> node = built;
    for (int i = 0; i < Depth; ++i) {
        const auto child = XMLElement::create(u"a"_s);
        ASSERT_TRUE(node->addChild(child));
        node = child;
    }
    EXPECT_EQ(built->XMLData(NSXMLNodePrettyPrint), parsed->document()->XMLData(NSXMLNodePrettyPrint));
    node->setStringValue(u"deep"_s);
    const auto removed = built->removeChild(0);
    EXPECT_EQ(node->document(), nullptr);
    EXPECT_EQ(removed->stringValue(), u"deep"_s);
    EXPECT_TRUE(parsed->addChild(removed));
    EXPECT_NE(node->document(), nullptr);
}
