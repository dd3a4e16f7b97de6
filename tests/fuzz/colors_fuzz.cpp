// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values.h>

#include <cstdio>
#include <cstdlib>

namespace {

bool same(double a, double b) { return a == b || (a != a && b != b); }

} // namespace

// Every text is scanned as the C library scans it.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const dravelin::Color color = dravelin::stringToColor(text);
    float c[4] = {};
    std::sscanf(text.toUtf8().constData(), "%f %f %f %f", &c[0], &c[1], &c[2], &c[3]);
    if (!same(color.red(), c[0]) || !same(color.green(), c[1]) || !same(color.blue(), c[2])
        || !same(color.alpha(), c[3]))
        std::abort();
    return 0;
}
