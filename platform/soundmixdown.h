// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qglobal.h>

#include <span>
#include <vector>

namespace dravelin::detail {

/// Where the loudspeaker of a channel stands.
enum class Speaker : quint8 {
    FrontLeft,
    FrontRight,
    FrontCenter,
    LowFrequency,
    RearLeft,
    RearRight,
    FrontLeftOfCenter,
    FrontRightOfCenter,
    RearCenter,
    SideLeft,
    SideRight,
    TopLeft,
    TopRight,
    TopCenter,
    None,
};

enum class ChannelOrder : quint8 { Wave, Vorbis };

/// The places of so many channels in a file that does not tell them. More than eight alternate left and right.
[[nodiscard]] std::vector<Speaker> usualSpeakers(int channels, ChannelOrder order);

/// Mixes any number of channels down to two with the coefficients of ITU-R BS.775: centre and surround at 0.707, without
/// the low-frequency channel; all divided by their sum, so that full scale everywhere does not go beyond full scale.
class SoundMixdown
{
public:
    explicit SoundMixdown(std::span<const Speaker> speakers);

    /// \param frames interleaved, of as many channels as there are speakers
    /// \param samples interleaved, two for each frame
    void mix(std::span<const float> frames, std::span<float> samples) const;

private:
    struct Gains
    {
        float left = 0;
        float right = 0;
    };
    static Gains gainsOf(Speaker speaker);

    std::vector<Gains> m_gains;
};

} // namespace dravelin::detail
