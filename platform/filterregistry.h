// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/filterdescription.h>

#include <QtCore/QMap>

#include <memory>

namespace dravelin::detail {

/// A kind of filter that is known by name. Never changed after it was made.
struct FilterKind
{
    QString filterName;
    FilterDescription description;
    std::shared_ptr<const PixelKernel> kernel; ///< null for the platform's own kinds

    /// Null when there is none; "inputImage" is not among them.
    [[nodiscard]] const FilterInput *input(const QString &key) const;
};

using FilterKinds = QMap<QString, std::shared_ptr<const FilterKind>>;

/// The kinds that the platform publishes.
[[nodiscard]] FilterKinds platformFilters();

/// All that there are now.
[[nodiscard]] FilterKinds filterKinds();

} // namespace dravelin::detail
