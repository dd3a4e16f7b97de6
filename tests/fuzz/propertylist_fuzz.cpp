// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/propertylist.h>

#include <cstdint>
#include <cstdlib>

using namespace dravelin;

// Whatever parses is written, and what was written reads back and is written the same again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QString error;
    const QVariant value =
        propertyListFromData(QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size)), &error);
    if (!value.isValid()) {
        if (!error.startsWith(QLatin1String("line ")))
            std::abort();
        return 0;
    }
    const QByteArray written = propertyListData(value);
    // Compared as bytes: NaN is not equal to itself, and 0.0 equals -0.0.
    if (written.isNull() || propertyListData(propertyListFromData(written)) != written)
        std::abort();
    return 0;
}
