// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <benchmark/benchmark.h>

#include <libxml/parser.h>
#include <libxml/xmlsave.h>

using namespace dravelin;

namespace {

constexpr int Strict = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_COMPACT | XML_PARSE_NOBLANKS;

/// A document of about that many bytes: records with attributes, text, references and a letter that is not ASCII.
QByteArray documentOf(qsizetype size)
{
    QByteArray data = "<?xml version=\"1.0\"?>\n<records>\n";
    for (int i = 0; data.size() < size; ++i) {
        const QByteArray number = QByteArray::number(i);
        data += "  <record id=\"" + number + "\" kind=\"plain\">\n    <name>Record " + number
                + "</name>\n    <note>Caf\xc3\xa9 &amp; bar</note>\n  </record>\n";
    }
    return data + "</records>\n";
}

template <typename Function>
void run(benchmark::State &state, Function function)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(function());
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

struct FreeDocument
{
    void operator()(xmlDoc *document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

Document parseByLibxml2(const QByteArray &data, int options)
{
    return Document(xmlReadMemory(data.constData(), int(data.size()), nullptr, nullptr, options));
}

void parseBytes(benchmark::State &state)
{
    run(state, [data = documentOf(state.range(0))] { return XMLDocument::fromData(data); });
}
void parseText(benchmark::State &state)
{
    run(state, [text = QString::fromUtf8(documentOf(state.range(0)))] { return createXmlWithData(text); });
}
void parseLibxml2(benchmark::State &state, int options)
{
    run(state, [=, data = documentOf(state.range(0))] { return parseByLibxml2(data, options); });
}

void printOurs(benchmark::State &state)
{
    run(state, [document = XMLDocument::fromData(documentOf(state.range(0)))] { return document->XMLData(); });
}
void printLibxml2(benchmark::State &state)
{
    const Document document = parseByLibxml2(documentOf(state.range(0)), Strict);
    run(state, [&document] {
        xmlChar *bytes = nullptr;
        int size = 0;
        xmlDocDumpMemoryEnc(document.get(), &bytes, &size, "UTF-8");
        xmlFree(bytes);
        return size;
    });
}

std::shared_ptr<XMLDocument> wideDocument(qsizetype children)
{
    auto document = createEmptyXMLDocument();
    for (qsizetype i = 0; i < children; ++i)
        addXMLElement(document->rootElement(), i % 10 == 0 ? QStringLiteral("page") : QStringLiteral("other"));
    return document;
}

void findOurs(benchmark::State &state)
{
    const auto document = wideDocument(state.range(0));
    for (auto _ : state) {
        qsizetype position = 0;
        qsizetype count = 0;
        while (findXmlNode(document->rootElement(), position, QStringLiteral("page")))
            ++count;
        benchmark::DoNotOptimize(count);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void walkByIndex(benchmark::State &state)
{
    const auto document = wideDocument(state.range(0));
    for (auto _ : state) {
        const auto root = document->rootElement();
        for (qsizetype i = 0; i < root->childCount(); ++i)
            benchmark::DoNotOptimize(getXMLElement(root, i));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

#define DOCUMENT ->Arg(20'000'000)->Unit(benchmark::kMillisecond)
BENCHMARK(parseBytes)->Name("xmlParse/ours") DOCUMENT;
BENCHMARK_CAPTURE(parseLibxml2, strict, Strict)->Name("xmlParse/libxml2") DOCUMENT;
BENCHMARK(parseText)->Name("xmlParseText/ours") DOCUMENT;
BENCHMARK_CAPTURE(parseLibxml2, text, Strict)->Name("xmlParseText/libxml2") DOCUMENT;
BENCHMARK(printOurs)->Name("xmlPrint/ours") DOCUMENT;
BENCHMARK(printLibxml2)->Name("xmlPrint/libxml2") DOCUMENT;
BENCHMARK(findOurs)->Name("findXmlNode/ours")->Arg(10'000)->Arg(100'000);
BENCHMARK(walkByIndex)->Name("xmlWalkByIndex/ours")->Arg(10'000)->Arg(100'000);

} // namespace
