// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/soundmixdown.h>

#include <algorithm>
#include <iterator>

namespace dravelin::detail {

namespace {

using enum Speaker;

const std::vector<Speaker> Wave[] = {
    {FrontLeft, FrontRight, FrontCenter},
    {FrontLeft, FrontRight, RearLeft, RearRight},
    {FrontLeft, FrontRight, FrontCenter, RearLeft, RearRight},
    {FrontLeft, FrontRight, FrontCenter, LowFrequency, RearLeft, RearRight},
    {FrontLeft, FrontRight, FrontCenter, LowFrequency, RearCenter, SideLeft, SideRight},
    {FrontLeft, FrontRight, FrontCenter, LowFrequency, RearLeft, RearRight, SideLeft, SideRight},
};

const std::vector<Speaker> Vorbis[] = {
    {FrontLeft, FrontCenter, FrontRight},
    {FrontLeft, FrontRight, RearLeft, RearRight},
    {FrontLeft, FrontCenter, FrontRight, RearLeft, RearRight},
    {FrontLeft, FrontCenter, FrontRight, RearLeft, RearRight, LowFrequency},
    {FrontLeft, FrontCenter, FrontRight, SideLeft, SideRight, RearCenter, LowFrequency},
    {FrontLeft, FrontCenter, FrontRight, SideLeft, SideRight, RearLeft, RearRight, LowFrequency},
};

constexpr int FirstListed = 3;

} // namespace

std::vector<Speaker> usualSpeakers(int channels, ChannelOrder order)
{
    const auto &lists = order == ChannelOrder::Vorbis ? Vorbis : Wave;
    if (const int index = channels - FirstListed; index >= 0 && index < int(std::size(lists)))
        return lists[index];
    std::vector<Speaker> speakers(size_t(std::max(channels, 0)), FrontLeft);
    for (size_t i = 1; i < speakers.size(); i += 2)
        speakers[i] = FrontRight;
    return speakers;
}

SoundMixdown::Gains SoundMixdown::gainsOf(Speaker speaker)
{
    constexpr float ThreeDecibelsLess = 0.70710678F;
    switch (speaker) {
    case FrontLeft:
    case FrontLeftOfCenter:
        return {1, 0};
    case FrontRight:
    case FrontRightOfCenter:
        return {0, 1};
    case FrontCenter:
        return {ThreeDecibelsLess, ThreeDecibelsLess};
    case RearLeft:
    case SideLeft:
    case TopLeft:
        return {ThreeDecibelsLess, 0};
    case RearRight:
    case SideRight:
    case TopRight:
        return {0, ThreeDecibelsLess};
    case RearCenter:
    case TopCenter:
        return {0.5F, 0.5F};
    case LowFrequency:
    case None:
        break;
    }
    return {};
}

SoundMixdown::SoundMixdown(std::span<const Speaker> speakers)
{
    Gains sum;
    for (const Speaker speaker : speakers) {
        const Gains gains = m_gains.emplace_back(gainsOf(speaker));
        sum.left += gains.left;
        sum.right += gains.right;
    }
    const float most = std::max({sum.left, sum.right, 1.0F});
    for (Gains &gains : m_gains)
        gains = {gains.left / most, gains.right / most};
}

void SoundMixdown::mix(std::span<const float> frames, std::span<float> samples) const
{
    const float *in = frames.data();
    for (size_t out = 0; out + 1 < samples.size(); out += 2) {
        Gains sum;
        for (const Gains &gains : m_gains) {
            sum.left += *in * gains.left;
            sum.right += *in++ * gains.right;
        }
        samples[out] = sum.left;
        samples[out + 1] = sum.right;
    }
}

} // namespace dravelin::detail
