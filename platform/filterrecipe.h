// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/pixelkernel.h>

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariantMap>
#include <QtGui/QImage>

#include <memory>

namespace dravelin::detail {

/// A picture, or a filter with all that goes into it. Never changed after it was made.
struct Recipe
{
    QImage source; ///< of a picture

    QString filter;                                      ///< the platform's name of the filter; empty for a picture
    QVariantMap values;                                  ///< numbers and colours (dravelin::Color) by input key
    QMap<QString, std::shared_ptr<const Recipe>> images; ///< "inputImage" and further ones; null ones are left out
    std::shared_ptr<const PixelKernel> kernel;           ///< of an application's own filter
};

} // namespace dravelin::detail
