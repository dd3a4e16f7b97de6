// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/imagefilter.h>

#include <stdexcept>

/// What the command cannot do, in words for its user.
struct Failure : std::runtime_error
{
    explicit Failure(const QString &message) : std::runtime_error(message.toStdString()) {}
};

/// The filter that an option names: "CISepiaTone:inputIntensity=0.8", with further inputs after commas. Values are numbers,
/// colours ("#ff8800", "teal") or files with pictures.
/// \throws Failure
std::shared_ptr<dravelin::ImageFilter> filterFromText(const QString &text);
