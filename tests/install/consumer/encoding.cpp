// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/encoding.h>
#include <dravelin/values.h>

#include <numeric>

using namespace dravelin;

namespace {

void bytesHaveText()
{
    const QByteArray bytes("Sketch\0\xFF", 8);
    CHECK(encodeBase64WithData(bytes) == "U2tldGNoAP8=" && decodeBase64ToData("U2tldGNoAP8=") == bytes);
    CHECK(decodeBase64ToString(encodeBase64WithString("é")) == "é");
    CHECK(decodeBase64FromBytes(encodeBase64ToBytes(bytes)) == bytes);
    CHECK(_base64EncodingTable[63] == '/' && _base64DecodingTable['/'] == 63);
    CHECK(zlibDecompressed(zlibCompressed("page"), 4) == "page");
}

void recordsAreStored()
{
    DataEncoder encoder;
    encoder.addString("title", "Sketch");
    encoder.addInteger("pages", 12);
    encoder.addBool("draft", true);
    auto copy = DataEncoder::initWithData(encoder.encodeData());
    CHECK(copy.getString("title") == "Sketch" && copy.getInteger("pages") == 12 && copy.getBool("draft"));
    copy.decodeData(encoder.encodeData());
    CHECK(copy.getHandler("pages") == "12" && copy.count() == 3);
    CHECK(DataEncoder::decodeDataEntry(DataEncoder::encodeDataEntry("a\tb\n")) == "a\tb\n");
}

void documentsAreXml()
{
    const auto document = createEmptyXMLDocument();
    const auto page = addXMLElement(document->rootElement(), "page");
    addXMLAttribute(page, "number", "1");
    const auto copy = createXmlFromEncodedData(encodeXMLData(document->XMLData()));
    qsizetype position = 0;
    CHECK(getXMLAttribute(findXmlNode(copy->rootElement(), position, "page"), "number") == "1");
    CHECK(getXMLElement(copy->rootElement(), 0)->name() == "page");
    CHECK(decodeXMLData(encodeXMLData("<a/>")) == "<a/>");
    CHECK(createXmlWithData("<a><b/></a>") && !parseXMLDocument("no document"));
    CHECK(prettyPrintXML("<a><b/></a>").contains("\n"));
    CHECK(escapeXMLText("a<b") == "a&lt;b");
    dumpXMLToLog(document);

    int pages = 0;
    XMLContentParser parser;
    parser.addHandler("page", [&](const auto &) { ++pages; });
    parser.parse(copy->rootElement());
    CHECK(pages == 1);
}

struct Chapter : Coding
{
    QString title;
    Range lines;
    Color ink;
    Qt::Orientation orientation = Qt::Vertical;
    std::shared_ptr<Chapter> next;

    void encodeWithCoder(KeyedArchiver &coder) const override
    {
        encodeString(coder, title, "title");
        encodeRange(coder, lines, "lines");
        encodeColor(coder, ink, "ink");
        encodeEnum(coder, orientation, "orientation");
        coder.encodeObject(next, "next");
    }
    bool initWithCoder(KeyedUnarchiver &coder) override
    {
        title = decodeStringForKey(coder, "title");
        lines = decodeRangeForKey(coder, "lines");
        ink = decodeColorForKey(coder, "ink");
        orientation = decodeEnumForKey<Qt::Orientation>(coder, "orientation");
        next = coder.decodeObjectForKey<Chapter>("next");
        return true;
    }
};

void objectsAreArchived()
{
    registerCodingClass<Chapter>("Chapter");
    auto chapter = std::make_shared<Chapter>();
    chapter->title = "Circles";
    chapter->lines = {3, 4};
    chapter->ink = Color::srgb(1, 0, 0);
    chapter->next = chapter;
    const QByteArray archive = KeyedArchiver::archivedDataWithRootObject(chapter);
    chapter->next = nullptr;
    const auto copy = KeyedUnarchiver::unarchiveObjectWithData<Chapter>(archive);
    CHECK(copy && copy->title == "Circles" && copy->next == copy);
    CHECK(copy->lines == chapter->lines && copy->ink == chapter->ink && copy->orientation == Qt::Vertical);
    copy->next = nullptr;
}

void valuesAreArchived()
{
    const auto archiver = createKeyedArchiver();
    archiver->encodeRootObject("root");
    archiver->encodeBool(true, "bool");
    archiver->encodeInt32(32, "int32");
    archiver->encodeInt64(64, "int64");
    archiver->encodeInteger(1, "integer");
    archiver->encodeFloat(0.5F, "float");
    archiver->encodeDouble(0.25, "double");
    archiver->encodeBytes("bytes", "bytes");
    archiver->finishEncoding();
    CHECK(archiver->outputFormat() == 100);

    const auto reader = createKeyedUnarchiver(dataToStr(archiver->encodedData()));
    KeyedUnarchiver direct(archiver->encodedData());
    CHECK(direct.containsValueForKey("bool") && !direct.containsValueForKey("none"));
    CHECK(direct.decodeBoolForKey("bool") && direct.decodeBytesForKey("bytes") == "bytes");
    CHECK(direct.decodeInt32ForKey("int32") == 32 && direct.decodeInt64ForKey("int64") == 64);
    CHECK(direct.decodeIntegerForKey("integer") == 1 && direct.decodeObjectForKey("root") == QVariant("root"));
    CHECK(direct.decodeFloatForKey("float") == 0.5F && direct.decodeDoubleForKey("double") == 0.25);
    direct.finishDecoding();
    CHECK(reader && reader->decodeBoolForKey("bool"));
}

void numbersAreSorted()
{
    NativeInt32Array numbers(200);
    std::iota(numbers.begin(), numbers.end(), -100);
    numbers.sort(false);
    CHECK(numbers.dataAtIndex(0) == 99 && numbers.count() == 200);
    numbers.reverseOrder();
    numbers.setArraySize(3);
    numbers.appendData(5);
    numbers.swapIndex(0, 3);
    numbers.setData(9, 1);
    CHECK(numbers.getArrayReference()[0] == 5 && numbers.dataAtIndex(1) == 9);
    NativeInt8Array bytes;
    bytes.insertData(1, 0);
    bytes.setAllData(2);
    CHECK(bytes.count() == 1 && bytes.dataAtIndex(0) == 2);
}

void listsAreStacks()
{
    QVariantList list{1};
    push(list, 2);
    CHECK(peek(list) == 2 && pop(list) == 2);
    enqueue(list, 3);
    CHECK(dequeue(list) == 1 && list == QVariantList{3});
    insertObjectSafe(list, 4, 99);
    swap(list, 0, 1);
    copy(list, 0, 2);
    move(list, 0, 3);
    CHECK(rangeCheck(list, 2) && !rangeCheck(list, 3) && list == (QVariantList{3, 4, 4}));
    CHECK((moveRows(list, {0}, 3) == Range{2, 1}) && list.last() == 3);
}

void textsAreCut()
{
    CHECK(isEmpty(trimWhiteSpace("  ")) && leftString("abc", 1) == "a" && rightString("abc", 1) == "bc");
    CHECK(splitIntoLines("a\nb").size() == 2 && normalizeLineEndings("a\nb", 1) == "a\r\nb");
    CHECK(stripString("a-b", "ab") == "ab" && unichar(u'x') == "x");
    CHECK(dumpAllKeys({{"key", 1}}).contains("key") && dump(QByteArray("A")).contains("41"));
}

} // namespace

void useEncoding()
{
    bytesHaveText();
    recordsAreStored();
    documentsAreXml();
    objectsAreArchived();
    valuesAreArchived();
    numbersAreSorted();
    listsAreStacks();
    textsAreCut();
}
