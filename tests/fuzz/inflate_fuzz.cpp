// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <cstdlib>

// Any bytes decompress within the bound or throw; what comes out survives compressing.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr qsizetype Bound = 1 << 20;
    const QByteArray stream(reinterpret_cast<const char *>(data), qsizetype(size));
    try {
        const QByteArray bytes = dravelin::zlibDecompressed(stream, Bound);
        if (bytes.size() > Bound || dravelin::zlibDecompressed(dravelin::zlibCompressed(bytes)) != bytes)
            std::abort();
    } catch (const dravelin::Exception &exception) {
        if (exception.reason().isEmpty() || exception.name() == QLatin1String("NSInternalInconsistencyException"))
            std::abort();
    }
    return 0;
}
