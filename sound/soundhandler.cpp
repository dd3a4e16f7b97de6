// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/sound/sound.h>
#include <dravelin/sound/soundhandler.h>

namespace dravelin {

SoundHandler::SoundHandler(const Action<Sound *> &action)
{
    if (action.target())
        setFunction([action](Sound *sound) { action(sound); });
}

void SoundHandler::operator()(Sound *sound) const
{
    if (const auto function = m_function)
        (*function)(sound);
}

void SoundHandler::setFunction(Function function)
{
    if (function)
        m_function = std::make_shared<const Function>(std::move(function));
}

} // namespace dravelin
