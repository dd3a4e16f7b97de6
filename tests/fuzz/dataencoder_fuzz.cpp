// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>
#include <dravelin/platform/log.h>

#include <cstdlib>

using dravelin::DataEncoder;
using dravelin::LogSink;

namespace {

constexpr qsizetype Bound = 1 << 20;

struct Silence : LogSink
{
    void write(QtMsgType, const QString &) override {}
};

// What was read is written and read again unchanged, key for key and blob for blob.
void check(const QByteArray &blob)
{
    const auto encoder = DataEncoder::initWithData(blob, Bound);
    const QByteArray written = encoder.encodeData();
    const auto copy = DataEncoder::initWithData(written);
    if (copy.keys() != encoder.keys() || copy.encodeData() != written)
        std::abort();
    for (const QString &key : encoder.keys()) {
        if (copy.getString(key) != encoder.getString(key)
            || copy.getString(key).isNull() != encoder.getString(key).isNull())
            std::abort();
    }
}

} // namespace

// The input as a blob, and as the records inside one.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    [[maybe_unused]] static const auto before = LogSink::setCurrent(std::make_shared<Silence>());
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    check(bytes);
    check(dravelin::zlibCompressed(bytes).toBase64());
    return 0;
}
