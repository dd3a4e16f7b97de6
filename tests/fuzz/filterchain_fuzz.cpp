// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>
#include <dravelin/imaging.h>
#include <dravelin/platform/log.h>

#include <cstdlib>

using namespace dravelin;

namespace {

struct Silence : LogSink
{
    void write(QtMsgType, const QString &) override {}
};

// What was read is written and read again unchanged.
void check(const QByteArray &text)
{
    const auto chain = FilterProcessor::decodeChain(text);
    if (!chain)
        return;
    const QByteArray written = chain->encodeChain();
    const auto copy = FilterProcessor::decodeChain(written);
    if (!copy || copy->encodeChain() != written || copy->filterCount() != chain->filterCount())
        std::abort();
}

} // namespace

// The input as a chain, and as lines `key=value` of what is inside one.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    [[maybe_unused]] static const auto before = LogSink::setCurrent(std::make_shared<Silence>());
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    check(bytes);
    DataEncoder encoder;
    for (const QByteArray &line : bytes.split('\n')) {
        const qsizetype sign = line.indexOf('=');
        if (sign >= 0)
            encoder.addString(QString::fromLatin1(line.first(sign)), QString::fromUtf8(line.sliced(sign + 1)));
    }
    check(encoder.encodeData());
    return 0;
}
