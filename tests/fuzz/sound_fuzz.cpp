// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/log.h>

#include <platform/soundloading.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

using namespace dravelin;

namespace {

class Silence : public LogSink
{
    void write(QtMsgType, const QString &) override {}
};

} // namespace

// Whatever decodes is whole frames of one or two channels, within the bound; anything else is refused.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr qint64 Bound = 1 << 20;
    static const bool isReady = [] {
        LogSink::setCurrent(std::make_shared<Silence>());
        detail::setSoundMemoryLimit(Bound);
        return true;
    }();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto sound = detail::loadSound(QStringLiteral("fuzz"), bytes);
    if (!isReady || !sound)
        return 0;
    const bool isWhole = sound->samples().size() == std::size_t(sound->frames() * sound->channels());
    const bool isBounded = qint64(sound->samples().size_bytes()) <= Bound;
    if (!isWhole || !isBounded || sound->channels() < 1 || sound->channels() > 2 || sound->sampleRate() < 1)
        std::abort();
    if (sound->peaks(7).size() != 7)
        std::abort();
    return 0;
}
