// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/sounddata.h>

#include <platform/soundloading.h>

#include "soundfiles.h"

#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QtEndian>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <complex>
#include <thread>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class SoundDataTest : public testing::Test
{
protected:
    QTemporaryDir folder;
    LogRecorder log;

    [[nodiscard]] QString path(const QString &name) const { return folder.filePath(name); }

    QString write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return path(name);
    }

    static QByteArray bytesOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString wav(const QString &name, double seconds = 0.1) const
    {
        writeTones(path(name), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 8000, {0.5F}, seconds);
        return path(name);
    }
};

/// The amplitude of a tone in one channel, away from what an encoder does at the ends.
double level(const SoundData &data, int channel, double frequency)
{
    std::complex<double> sum;
    const qint64 first = data.frames() / 4;
    const qint64 last = first + data.sampleRate() / 10; // whole periods of all the tones
    for (qint64 i = first; i < last; ++i)
        sum += double(data.samples()[size_t(i * data.channels() + channel)])
               * std::polar(1.0, -2 * std::numbers::pi * frequency * double(i) / data.sampleRate());
    return 2 * std::abs(sum) / double(last - first) / 32768;
}

struct LimitedMemory
{
    explicit LimitedMemory(qint64 bytes) : previous(detail::setSoundMemoryLimit(bytes)) {}
    ~LimitedMemory() { detail::setSoundMemoryLimit(previous); }
    Q_DISABLE_COPY_MOVE(LimitedMemory)
    qint64 previous;
};

struct Format
{
    const char *name;
    int format;
    std::vector<int> rates;
    double tolerance;
    int mostChannels = 8;
    int padding = 0; ///< frames that the encoding adds
    bool isVorbisOrder = false;
};

const Format Formats[] = {
    {"wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, {8000, 44100, 192000}, 0.0005},
    {"wav8", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, {11030}, 0.01},
    {"wav24", SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, {48000}, 0.0005},
    {"wavfloat", SF_FORMAT_WAV | SF_FORMAT_FLOAT, {48000}, 0.0005},
    {"wavdouble", SF_FORMAT_WAV | SF_FORMAT_DOUBLE, {22050}, 0.0005},
    {"wavadpcm", SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM, {22050}, 0.03, 2, 2050},
    {"aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16, {44100}, 0.0005},
    {"au", SF_FORMAT_AU | SF_FORMAT_ULAW, {8000}, 0.02},
    {"flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, {8000, 44100, 96000}, 0.0005},
    {"vorbis", SF_FORMAT_OGG | SF_FORMAT_VORBIS, {22050, 44100, 48000}, 0.04, 8, 0, true},
    {"opus", SF_FORMAT_OGG | SF_FORMAT_OPUS, {24000, 48000}, 0.05, 8, 0, true},
    {"mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, {44100, 48000}, 0.04, 2, 0},
};

} // namespace

TEST_F(SoundDataTest, DecodesEachFormatAtItsLevelAndLength)
{
    for (const Format &format : Formats) {
        for (const int rate : format.rates) {
            for (const int channels : {1, 2}) {
                SCOPED_TRACE(testing::Message() << format.name << ' ' << rate << ' ' << channels);
                const QString file = path(u"%1-%2-%3.bin"_s.arg(format.name).arg(rate).arg(channels));
                writeTones(file, format.format, rate, {0.5F, 0.25F}, 0.5);
                if (channels == 1)
                    writeTones(file, format.format, rate, {0.5F}, 0.5);
                const auto data = SoundData::load(file);
                ASSERT_TRUE(data) << log.take().join(u'\n').toStdString();
                EXPECT_EQ(data->sampleRate(), rate);
                ASSERT_EQ(data->channels(), channels);
                EXPECT_NEAR(double(data->frames()), 0.5 * rate, format.padding);
                EXPECT_EQ(data->samples().size(), size_t(data->frames() * channels));
                EXPECT_NEAR(level(*data, 0, 300), 0.5, format.tolerance);
                EXPECT_NEAR(level(*data, channels - 1, 300), channels == 1 ? 0.5 : 0, format.tolerance);
                EXPECT_NEAR(level(*data, channels - 1, 500), channels == 1 ? 0 : 0.25, format.tolerance);
                EXPECT_EQ(log.take(), QStringList());
            }
        }
    }
}

// Left, right and centre of 5.1 at full level: 1 / (1 + 2 * 0.7071), the centre at 0.7071 of it.
TEST_F(SoundDataTest, MixesManyChannelsDownToTwo)
{
    for (const Format &format : Formats) {
        if (format.mostChannels < 6)
            continue;
        SCOPED_TRACE(format.name);
        const QString file = path(format.name);
        writeTones(file, format.format, format.rates.front(), std::vector<float>(6, 0.5F), 0.5);
        const auto data = SoundData::load(file);
        ASSERT_TRUE(data && data->channels() == 2);
        const int center = format.isVorbisOrder ? 500 : 700;
        const int right = format.isVorbisOrder ? 700 : 500;
        const int low = format.isVorbisOrder ? 1300 : 900;
        const int rearLeft = format.isVorbisOrder ? 900 : 1100;
        const double full = 0.5 / (1 + 2 * std::numbers::sqrt2 / 2);
        const double tolerance = 2 * format.tolerance;
        EXPECT_NEAR(level(*data, 0, 300), full, tolerance);
        EXPECT_NEAR(level(*data, 1, right), full, tolerance);
        EXPECT_NEAR(level(*data, 0, center), full * std::numbers::sqrt2 / 2, tolerance);
        EXPECT_NEAR(level(*data, 1, center), full * std::numbers::sqrt2 / 2, tolerance);
        EXPECT_NEAR(level(*data, 0, rearLeft), full * std::numbers::sqrt2 / 2, tolerance);
        EXPECT_NEAR(level(*data, 0, low), 0, tolerance);
        EXPECT_NEAR(level(*data, 0, right), 0, tolerance);
    }
}

TEST_F(SoundDataTest, ClipsWhatGoesBeyondFullScale)
{
    for (const int format : {SF_FORMAT_WAV | SF_FORMAT_FLOAT, SF_FORMAT_OGG | SF_FORMAT_VORBIS}) {
        const QString file = path(QString::number(format));
        writeTones(file, format, 48000, {1.6F}, 0.5);
        const auto data = SoundData::load(file);
        ASSERT_TRUE(data);
        int largestStep = 0;
        for (size_t i = 1; i < data->samples().size(); ++i)
            largestStep = std::max(largestStep, std::abs(data->samples()[i] - data->samples()[i - 1]));
        EXPECT_LT(largestStep, 8000) << "samples must not wrap";
        EXPECT_EQ(data->peaks(1), QList<float>{1.0F});
    }
}

TEST_F(SoundDataTest, SaysWhyAFileCannotBeUsed)
{
    QDir(folder.path()).mkdir(u"folder"_s);
    mkfifo(QFile::encodeName(path(u"pipe.wav"_s)).constData(), 0600);
    write(u"empty.wav"_s, {});
    write(u"text.ogg"_s, "This is not a sound, though it is called one.\n");
    write(u"picture.wav"_s, QByteArray::fromHex("89504e470d0a1a0a0000000d49484452"));
    write(u"raw.vox"_s, QByteArray(4000, '\x5a'));
    write(u"header.wav"_s, bytesOf(wav(u"whole.wav"_s)).first(20));
    const QStringList names{u"absent.wav"_s, u"folder"_s,      u"pipe.wav"_s, u"empty.wav"_s,
                            u"text.ogg"_s,   u"picture.wav"_s, u"raw.vox"_s,  u"header.wav"_s};
    for (const QString &name : names) {
        EXPECT_FALSE(SoundData::load(path(name))) << name.toStdString();
        const QStringList lines = log.take();
        ASSERT_EQ(lines.size(), 1) << name.toStdString();
        EXPECT_TRUE(lines[0].startsWith(u"Sound: %1: "_s.arg(path(name)))) << lines[0].toStdString();
        EXPECT_GT(lines[0].size(), path(name).size() + 12);
    }
    EXPECT_FALSE(SoundData::load({}));
    EXPECT_FALSE(SoundData::load(u":/absent.ogg"_s));
    EXPECT_EQ(log.take().size(), 2);
}

TEST_F(SoundDataTest, UsesWhatIsThereOfAFileThatIsCutOff)
{
    for (const Format &format : Formats) {
        if (std::string_view(format.name) == "au" || std::string_view(format.name) == "wavadpcm")
            continue;
        SCOPED_TRACE(format.name);
        const QString whole = path(u"whole"_s);
        writeTones(whole, format.format, format.rates.back(), {0.5F, 0.5F}, 2);
        const QByteArray bytes = bytesOf(whole);
        const qsizetype lastPage = bytes.startsWith("OggS") ? bytes.lastIndexOf("OggS") : 0;
        for (const qsizetype size : {bytes.size() * 9 / 10, lastPage}) {
            if (size == 0)
                continue;
            const auto data = SoundData::load(write(u"cut"_s, bytes.first(size)));
            ASSERT_TRUE(data);
            EXPECT_GT(data->duration(), 1);
            EXPECT_LT(data->duration(), 1.9);
            EXPECT_EQ(SoundData::load(path(u"cut"_s)), data);
            EXPECT_EQ(log.take().size(), 1) << "decoded once";
        }
    }
}

// A length in the header beyond what the file has must not be allocated.
TEST_F(SoundDataTest, DoesNotBelievePromises)
{
    const QString file = path(u"promise.flac"_s);
    writeTones(file, SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 8000, {0.5F}, 0.5);
    QByteArray bytes = bytesOf(file);
    for (const char byte : {'\x0f', '\0'}) { // 2^36 frames, and just under the limit
        bytes[21] = char((bytes[21] & 0xf0) | byte);
        qToBigEndian<quint32>(33'000'000, bytes.data() + 22);
        const auto data = SoundData::load(write(u"lie.flac"_s, bytes));
        ASSERT_TRUE(data);
        EXPECT_EQ(data->frames(), 4000);
        EXPECT_EQ(log.take().size(), 1);
    }
}

TEST_F(SoundDataTest, IsSharedWhileItLivesAndTheFileStays)
{
    const QString file = wav(u"a.wav"_s);
    QFile::link(file, path(u"link.wav"_s));
    QFile::copy(file, path(u"renamed.mp3"_s));
    auto data = SoundData::load(file);
    ASSERT_TRUE(data);
    EXPECT_EQ(SoundData::load(path(u"link.wav"_s)), data);
    EXPECT_NE(SoundData::load(path(u"renamed.mp3"_s)), data);
    std::vector<std::shared_ptr<const SoundData>> found(4);
    {
        std::vector<std::jthread> threads;
        for (auto &one : found)
            threads.emplace_back([&one, &file] { one = SoundData::load(file); });
    }
    EXPECT_EQ(found, std::vector(4, data));

    const std::weak_ptr<const SoundData> watch = data;
    const auto before = data;
    wav(u"a.wav"_s, 0.2);
    data = SoundData::load(file);
    EXPECT_EQ(data->frames(), 1600);
    EXPECT_EQ(before->frames(), 800);
    found.clear();
    const_cast<std::shared_ptr<const SoundData> &>(before).reset();
    EXPECT_TRUE(watch.expired());
}

TEST_F(SoundDataTest, StreamsWhatIsTooLongForMemory)
{
    for (const Format &format : Formats) {
        const int channels = std::min(format.mostChannels, 3);
        SCOPED_TRACE(format.name);
        const QString file = path(u"long"_s);
        writeTones(file, format.format, format.rates.back(), std::vector<float>(size_t(channels), 0.3F), 2);
        const auto whole = SoundData::load(file);
        const auto all = whole->samples();
        QFile::rename(file, path(u"moved"_s));
        QFile::copy(path(u"moved"_s), file); // not the same one
        const LimitedMemory limit(1000);
        const auto data = SoundData::load(file);
        ASSERT_TRUE(data && data->samples().empty());
        ASSERT_EQ(data->frames(), whole->frames());
        EXPECT_EQ(data->channels(), 2);

        const auto reader = data->reader();
        std::vector<qint16> block(2 * 5000);
        for (const qint64 frame : {qint64(0), qint64(5000), data->frames() - 100, qint64(7), data->frames()}) {
            const qint64 count = std::min<qint64>(5000, data->frames() - frame);
            ASSERT_EQ(reader->read(frame, block), count);
            double difference = 0;
            for (size_t i = 0; i < size_t(2 * count); ++i)
                difference = std::max(difference, std::abs(double(block[i]) - all[size_t(2 * frame) + i]));
            EXPECT_LE(difference, format.tolerance * 3000) << "from frame " << frame;
        }
        const QList<float> peaks = data->peaks(20);
        const QList<float> expected = whole->peaks(20);
        for (qsizetype i = 0; i < 20; ++i)
            EXPECT_NEAR(peaks[i], expected[i], 0.01);

        EXPECT_EQ(log.take(), QStringList());
        QFile::remove(file);
        const auto late = data->reader();
        EXPECT_LT(late->read(0, block), 0);
        EXPECT_LT(late->read(0, block), 0);
        EXPECT_EQ(log.take().size(), 1);
        QFile::remove(path(u"moved"_s));
    }
}

TEST(SoundSamplesTest, AreReadFromAnywhereAndPictured)
{
    const auto data = SoundData::fromSamples({0, 100, -32768, 0, 8192, 0, 16384, -16384, 5}, 2, 4);
    ASSERT_TRUE(data);
    EXPECT_EQ(data->duration(), 1.0);
    EXPECT_EQ(data->peaks(2), (QList<float>{1.0F, 0.5F}));
    EXPECT_EQ(data->peaks(8).size(), 8);
    EXPECT_EQ(data->peaks(8)[3], 1.0F);
    EXPECT_EQ(data->peaks(0), QList<float>());
    EXPECT_EQ(SoundData::fromSamples({}, 1, 8000)->peaks(2), (QList<float>{0, 0}));
    std::vector<qint16> block(5);
    const auto reader = data->reader();
    EXPECT_EQ(reader->read(1, block), 2);
    EXPECT_EQ(block[0], -32768);
    EXPECT_EQ(reader->read(3, block), 1);
    EXPECT_EQ(reader->read(4, block), 0);
    EXPECT_EQ(reader->read(std::numeric_limits<qint64>::max(), block), 0);
    EXPECT_FALSE(SoundData::fromSamples({1}, 3, 8000) || SoundData::fromSamples({1}, 1, 0));
}
