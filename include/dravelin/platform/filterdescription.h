// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/filterkeys.h>
#include <dravelin/platform/pixelkernel.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <optional>

namespace dravelin {

/// What is published about one input of a filter.
struct FilterInput
{
    QString key;
    QString type = kCIAttributeTypeScalar;
    QVariant defaultValue = {}; ///< a number or a Color; invalid when there is none, as for images
    std::optional<double> identity = {};
    std::optional<double> minimum = {}, maximum = {};
    std::optional<double> sliderMinimum = {}, sliderMaximum = {};
    bool inPixels = false; ///< a length, which shrinks with the picture in thumbnails
};

/// A kind of filter, with all of its inputs but "inputImage", which every filter has.
struct FilterDescription
{
    QString displayName = {};
    QStringList categories = {};
    QList<FilterInput> inputs = {};
    PixelKernel kernel = {};
};

/// Makes a kind of filter of the application's own known by a name. A kind that the application has registered under
/// the same name is replaced; filters that were made of it stay what they are. From any thread.
///
///     dravelin::registerFilter("Threshold",
///         {.displayName = "Threshold",
///          .categories = {dravelin::kCICategoryColorEffect},
///          .inputs = {{.key = "inputLevel", .defaultValue = 0.5, .sliderMinimum = 0, .sliderMaximum = 1}},
///          .kernel = [](const dravelin::PixelBlock &block, const QVariantMap &values) {
///              const float level = values["inputLevel"].toFloat();
///              for (int i = 0; i < block.count; ++i)
///                  block.red[i] = block.green[i] = block.blue[i] = block.green[i] < level ? 0.0f : 1.0f;
///          }});
///
/// \return false, with a line in the log, when there is no name or no kernel, when the name is one of the platform's own
/// filters, and when an input is described twice, is "inputImage", or has a default of another type than its own
DRAVELIN_EXPORT bool registerFilter(const QString &filterName, const FilterDescription &description);

} // namespace dravelin
