// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/soundfile.h>

#include <algorithm>
#include <cstring>
#include <iterator>

using namespace Qt::StringLiterals;

namespace dravelin::detail {

namespace {

constexpr int MostChannels = 32;
constexpr int HighestRate = 1'000'000;
constexpr size_t BlockFrames = 2048;
constexpr qint64 LeadIn = 16'384; ///< frames; two of the longest blocks of Vorbis, and more than MP3 looks back

/// Not a matter of the library's own conversion: that leaves floats unscaled, or wraps what is beyond full scale.
void convert(std::span<const float> in, std::span<qint16> out)
{
    for (size_t i = 0; i < in.size(); ++i) {
        const float scaled = in[i] * 32768.0F;
        const float number = scaled == scaled ? scaled : 0.0F;
        const float bounded = std::min(std::max(number, -32768.0F), 32767.0F);
        out[i] = qint16(int(bounded + (bounded < 0 ? -0.5F : 0.5F)));
    }
}

/// By the decoder's numbers for the places of channels.
constexpr Speaker Places[] = {
    Speaker::None,
    Speaker::FrontCenter,
    Speaker::FrontLeft,
    Speaker::FrontRight,
    Speaker::FrontCenter,
    Speaker::FrontLeft,
    Speaker::FrontRight,
    Speaker::FrontCenter,
    Speaker::RearCenter,
    Speaker::RearLeft,
    Speaker::RearRight,
    Speaker::LowFrequency,
    Speaker::FrontLeftOfCenter,
    Speaker::FrontRightOfCenter,
    Speaker::SideLeft,
    Speaker::SideRight,
    Speaker::TopCenter,
    Speaker::TopLeft,
    Speaker::TopRight,
    Speaker::TopCenter,
    Speaker::TopLeft,
    Speaker::TopRight,
    Speaker::TopCenter,
    Speaker::FrontCenter,
};
static_assert(std::size(Places) == SF_CHANNEL_MAP_AMBISONIC_B_W + 1); // of the others nothing is left in two channels

Speaker speakerOf(int place) { return place >= 0 && place < int(std::size(Places)) ? Places[place] : Speaker::None; }

} // namespace

/// How the decoder reads bytes in memory.
struct MemoryIO
{
    static SoundFile &of(void *file) { return *static_cast<SoundFile *>(file); }
    static sf_count_t size(void *file) { return of(file).m_input.size(); }
    static sf_count_t tell(void *file) { return of(file).m_position; }
    static sf_count_t write(const void *, sf_count_t, void *) { return 0; }

    static sf_count_t seek(sf_count_t offset, int whence, void *file)
    {
        sf_count_t &position = of(file).m_position;
        const sf_count_t base = whence == SEEK_CUR ? position : whence == SEEK_END ? size(file) : 0;
        const sf_count_t bounded = std::clamp(offset, -base, size(file) - base);
        return position = base + bounded;
    }

    static sf_count_t read(void *bytes, sf_count_t count, void *file)
    {
        sf_count_t &position = of(file).m_position;
        const sf_count_t read = std::clamp<sf_count_t>(count, 0, size(file) - position);
        if (read > 0)
            std::memcpy(bytes, of(file).m_input.bytes().constData() + position, size_t(read));
        position += read;
        return read;
    }
};

std::unique_ptr<SoundFile> SoundFile::open(SoundInput input, QString &cause)
{
    auto file = std::unique_ptr<SoundFile>(new SoundFile(std::move(input)));
    file->openDecoder();
    cause = file->refusal();
    if (!cause.isNull())
        return nullptr;
    file->prepare();
    return file;
}

SoundFile::~SoundFile()
{
    if (m_decoder)
        sf_close(m_decoder);
}

/// Never by a name: from names, formats without a header are guessed.
void SoundFile::openDecoder()
{
    if (m_input.file() >= 0) {
        m_decoder = sf_open_fd(m_input.file(), SFM_READ, &m_info, SF_FALSE);
        return;
    }
    SF_VIRTUAL_IO io = {MemoryIO::size, MemoryIO::seek, MemoryIO::read, MemoryIO::write, MemoryIO::tell};
    m_decoder = sf_open_virtual(&io, SFM_READ, &m_info, this);
}

/// Why it cannot be used; absent when it can.
QString SoundFile::refusal() const
{
    if (!m_decoder)
        return QString::fromLocal8Bit(sf_strerror(nullptr)).trimmed();
    if (m_info.samplerate < 1 || m_info.samplerate > HighestRate)
        return u"it has %1 frames in a second"_s.arg(m_info.samplerate);
    if (m_info.channels < 1 || m_info.channels > MostChannels)
        return u"it has %1 channels"_s.arg(m_info.channels);
    if (m_info.frames < 0)
        return u"its length is not known"_s;
    return {};
}

void SoundFile::prepare()
{
    if (m_info.channels > 2)
        m_mixdown.emplace(speakers());
    if (m_mixdown || isDecodedToFloats())
        m_block.resize(BlockFrames * size_t(m_info.channels));
    if (m_mixdown)
        m_mixed.resize(BlockFrames * 2);
}

std::vector<Speaker> SoundFile::speakers() const
{
    std::vector<int> places(size_t(m_info.channels));
    const int bytes = int(places.size() * sizeof(int));
    std::vector<Speaker> speakers(places.size(), Speaker::None);
    if (sf_command(m_decoder, SFC_GET_CHANNEL_MAP_INFO, places.data(), bytes) == SF_TRUE)
        std::ranges::transform(places, speakers.begin(), speakerOf);
    const bool isKnown = std::ranges::any_of(speakers, [](Speaker speaker) { return speaker != Speaker::None; });
    const bool isOgg = (m_info.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_OGG;
    const int coding = m_info.format & SF_FORMAT_SUBMASK;
    const bool isVorbis = isOgg && (coding == SF_FORMAT_VORBIS || coding == SF_FORMAT_OPUS);
    return isKnown ? speakers : usualSpeakers(m_info.channels, isVorbis ? ChannelOrder::Vorbis : ChannelOrder::Wave);
}

bool SoundFile::isDecodedToFloats() const
{
    switch (m_info.format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_FLOAT:
    case SF_FORMAT_DOUBLE:
    case SF_FORMAT_VORBIS:
    case SF_FORMAT_OPUS:
    case SF_FORMAT_MPEG_LAYER_I:
    case SF_FORMAT_MPEG_LAYER_II:
    case SF_FORMAT_MPEG_LAYER_III:
        return true;
    default:
        return false;
    }
}

/// What comes right after a seek is wrong in Vorbis and MP3, which decode with what came before.
bool SoundFile::seek(qint64 frame)
{
    const qint64 first = m_block.empty() ? frame : std::max<qint64>(frame - LeadIn, 0);
    if (sf_seek(m_decoder, first, SEEK_SET) != first)
        return false;
    std::vector<qint16> leadIn(size_t(frame - first) * size_t(channels()));
    return read(leadIn) == frame - first;
}

qint64 SoundFile::read(std::span<qint16> samples)
{
    const auto channels = size_t(this->channels());
    if (m_block.empty())
        return std::max<qint64>(sf_readf_short(m_decoder, samples.data(), sf_count_t(samples.size() / channels)), 0);
    qint64 frames = 0;
    for (qint64 read = 1; read > 0 && samples.size() >= channels; frames += read) {
        read = readBlock(samples.first(std::min(samples.size(), BlockFrames * channels)));
        samples = samples.subspan(size_t(read) * channels);
    }
    return frames;
}

qint64 SoundFile::readBlock(std::span<qint16> samples)
{
    const auto wanted = sf_count_t(samples.size() / size_t(channels()));
    const auto frames = size_t(std::max<sf_count_t>(sf_readf_float(m_decoder, m_block.data(), wanted), 0));
    const auto decoded = std::span(m_block).first(frames * size_t(m_info.channels));
    if (!m_mixdown) {
        convert(decoded, samples);
    } else {
        const auto mixed = std::span(m_mixed).first(frames * 2);
        m_mixdown->mix(decoded, mixed);
        convert(mixed, samples);
    }
    return qint64(frames);
}

QString SoundFile::error() const
{
    return sf_error(m_decoder) == SF_ERR_NO_ERROR ? QString() : QString::fromLocal8Bit(sf_strerror(m_decoder));
}

} // namespace dravelin::detail
