// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/soundoutput.h>

#include <QtCore/QCoreApplication>

#include <utility>

namespace dravelin {

namespace {

struct Outputs
{
    std::shared_ptr<SoundOutput> replacement;
    std::shared_ptr<SoundOutput> system;
};

Outputs &outputs()
{
    static Outputs all;
    return all;
}

/// The device has to be closed before the libraries below are unloaded.
void closeSystemOutput() { outputs().system = nullptr; }

const std::shared_ptr<SoundOutput> &systemOutput()
{
    Outputs &all = outputs();
    if (!all.system) {
        all.system = SoundOutput::createSystemOutput();
        qAddPostRoutine(closeSystemOutput);
    }
    return all.system;
}

} // namespace

SoundVoice::~SoundVoice() = default;

SoundOutput::~SoundOutput() = default;

std::shared_ptr<SoundOutput> SoundOutput::current()
{
    return outputs().replacement ? outputs().replacement : systemOutput();
}

std::shared_ptr<SoundOutput> SoundOutput::setCurrent(std::shared_ptr<SoundOutput> output)
{
    return std::exchange(outputs().replacement, std::move(output));
}

} // namespace dravelin
