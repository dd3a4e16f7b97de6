// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gmock/gmock.h>

#include <stdexcept>

using namespace dravelin;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

TEST(XML, BuildsAndFinds)
{
    const auto document = createEmptyXMLDocument();
    EXPECT_EQ(document->XMLData(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root/>\n");
    const auto root = document->rootElement();
    for (const QString &name : {u"item"_s, u"other"_s, u"item"_s}) {
        const auto item = addXMLElement(root, name);
        addXMLAttribute(item, u"n"_s, QString::number(root->childCount()));
    }
    qsizetype position = 0;
    EXPECT_EQ(getXMLAttribute(findXmlNode(root, position, u"item"_s), u"n"_s), u"1"_s);
    EXPECT_EQ(position, 1);
    EXPECT_EQ(findXmlNode(root, position, u"item"_s), getXMLElement(root, 2));
    EXPECT_EQ(position, 3);
    for (const auto &parent : {std::shared_ptr<XMLNode>(root), std::shared_ptr<XMLNode>()}) {
        position = 3;
        EXPECT_EQ(findXmlNode(parent, position, u"item"_s), nullptr);
        EXPECT_EQ(position, 0);
    }
    EXPECT_EQ(findXmlNode(root, position, u"Item"_s), nullptr);
    root->addChild(XMLNode::createText(u"item"_s));
    EXPECT_EQ(findXmlNode(root, position = 3, u""_s), nullptr);
    EXPECT_EQ(getXMLElement(root, 4), nullptr);
    EXPECT_EQ(getXMLElement(root, -1), nullptr);
    for (const auto &node : {getXMLElement(root, 1), getXMLElement(root, 3), getXMLElement(nullptr, 0)})
        EXPECT_EQ(getXMLAttribute(node, u"missing"_s), u""_s);
}

TEST(XML, AddsOnlyNames)
{
    const LogRecorder log;
    const auto root = createEmptyXMLDocument()->rootElement();
    EXPECT_EQ(addXMLElement(root, u"a b"_s), nullptr);
    EXPECT_EQ(addXMLElement(root->document(), u"second"_s), nullptr);
    EXPECT_EQ(addXMLElement(nullptr, u"alone"_s)->name(), u"alone"_s);
    addXMLAttribute(root, u"<"_s, u"x"_s);
    addXMLAttribute(root->document(), u"a"_s, u"x"_s);
    addXMLAttribute(nullptr, u"a"_s, u"x"_s);
    EXPECT_EQ(root->XMLData(), "<root/>");
    EXPECT_EQ(log.lines().size(), 4);
}

TEST(XML, EscapesFiveCharacters)
{
    EXPECT_EQ(escapeXMLText(u"a<b & 'c'"_s), u"a&lt;b &amp; &apos;c&apos;"_s);
    EXPECT_EQ(escapeXMLText(u"&amp;\n\">"_s), u"&amp;amp;\n&quot;&gt;"_s);
    EXPECT_TRUE(escapeXMLText({}).isNull());
}

TEST(XML, PrettyPrints)
{
    const LogRecorder log;
    const QString head = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"_s;
    const struct
    {
        QString text, result;
    } rows[] = {
        {u"<?xml version='1.0' encoding='UTF-16'?>\n<a>\n\n<b><c>é</c></b></a>"_s,
         u"<a>\n  <b>\n    <c>é</c>\n  </b>\n</a>\n"_s},
        {u"<p>mixed <b><i>x</i></b></p>"_s, u"<p>mixed <b><i>x</i></b></p>\n"_s},
        {u"<a><b>"_s, u"<a>\n  <b/>\n</a>\n"_s},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(prettyPrintXML(row.text), head + row.result);
        EXPECT_EQ(prettyPrintXML(head + row.result), head + row.result);
    }
    for (const QString &text : {u"not XML"_s, u""_s, QString()})
        EXPECT_EQ(prettyPrintXML(text), u""_s);
}

TEST(XML, TravelsAsText)
{
    const LogRecorder log;
    const QByteArray data = "<a>\n <b/></a>";
    const QString text = encodeXMLData(data);
    EXPECT_EQ(decodeXMLData(text), data);
    EXPECT_EQ(createXmlFromEncodedData(text)->XMLData(), createXmlWithData(QString::fromUtf8(data))->XMLData());
    EXPECT_TRUE(encodeXMLData("").isNull());
    EXPECT_TRUE(decodeXMLData(u"no Base64!"_s).isNull());
    EXPECT_THROW((void)decodeXMLData(encodeBase64WithData(data)), Exception);
    for (const QString &broken : {u"no Base64!"_s, encodeBase64WithData(data), text.left(12), u""_s, QString(),
                                  encodeXMLData("<a>"), encodeXMLData(QByteArray(9, '\0'))}) {
        const qsizetype logged = log.lines().size();
        EXPECT_EQ(createXmlFromEncodedData(broken), nullptr) << broken.toStdString();
        EXPECT_EQ(log.lines().size(), logged + 1) << broken.toStdString();
    }
}

TEST(XML, DumpsToTheLog)
{
    const LogRecorder log;
    dumpXMLToLog(createEmptyXMLDocument());
    EXPECT_THAT(log.lines(), ElementsAre(uR"(\r\r<?xml version="1.0" encoding="UTF-8"?>\n<root/>\n\r\r)"_s));
}

TEST(XMLContentParser, HandsOutChildrenByName)
{
    XMLContentParser parser;
    QStringList seen;
    const auto see = [&seen](const std::shared_ptr<XMLNode> &node) { seen += node->stringValue(); };
    parser.addHandler(u"a"_s, [](const auto &) { FAIL() << "was replaced"; });
    parser.addHandler(u"a"_s, see);
    parser.addHandler(u"b"_s, see);
    parser.addHandler(u"b"_s, {});
    parser.addHandler({}, see);
    parser.addHandler(u"c"_s, [&](const auto &node) { parser.parse(node); });
    parser.parse(
        createXmlWithData(u"<r>0<a>1</a><b>2</b><c><a>3</a></c><!--4--><d><a>5</a></d><a>6</a></r>"_s)->rootElement());
    parser.parse(nullptr);
    EXPECT_THAT(seen, ElementsAre(u"1"_s, u"3"_s, u"6"_s));
}

TEST(XMLContentParser, HandlersMayDoAnything)
{
    const auto root = createXmlWithData(u"<r><a/><b/><c/><d/><e/></r>"_s)->rootElement();
    QStringList seen;
    auto parser = std::make_unique<XMLContentParser>();
    const auto handler = [&](const std::shared_ptr<XMLNode> &node) {
        seen += node->name();
        if (seen.size() == 1) {
            root->removeChild(1);
            addXMLElement(root, u"f"_s);
            parser->addHandler(u"d"_s, {});
            parser->addHandler(u"a"_s, {}); // the one that runs
            node->detach();
        } else if (seen.size() == 2) {
            parser.reset();
        } else {
            throw std::runtime_error("enough");
        }
    };
    for (const QString &name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s})
        parser->addHandler(name, handler);
    EXPECT_THROW(parser->parse(root), std::runtime_error);
    EXPECT_THAT(seen, ElementsAre(u"a"_s, u"c"_s, u"e"_s));
    EXPECT_EQ(root->XMLData(), "<r><c/><d/><e/><f/></r>");
}
