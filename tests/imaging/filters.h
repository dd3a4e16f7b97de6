// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/filterimage.h>

#include <platform/filterrecipe.h>

#include <QtCore/QRandomGenerator>

#include <gtest/gtest.h>
#include <hwy/targets.h>

namespace dravelin::testing {

/// Runs once for each kind of processor that this one can stand in for.
class RenderOn : public ::testing::TestWithParam<int64_t>
{
protected:
    RenderOn() { hwy::SetSupportedTargetsForTest(GetParam()); }
    ~RenderOn() override { hwy::SetSupportedTargetsForTest(0); }
};

inline std::vector<int64_t> allTargets()
{
    std::vector<int64_t> targets;
    for (int64_t left = hwy::SupportedTargets(); left != 0; left &= left - 1)
        targets.push_back(left & -left);
    return targets;
}

inline std::string targetName(const ::testing::TestParamInfo<int64_t> &info) { return hwy::TargetName(info.param); }

using Pictures = QMap<QString, FilterImage>;

/// A filter's output image.
inline FilterImage filtered(const FilterImage &input, const QString &filter, const QVariantMap &values = {},
                            const Pictures &pictures = {})
{
    auto recipe = std::make_shared<detail::Recipe>();
    recipe->filter = filter;
    recipe->values = values;
    recipe->images.insert(QStringLiteral("inputImage"), input.recipe());
    for (auto it = pictures.begin(); it != pictures.end(); ++it)
        recipe->images.insert(it.key(), it->recipe());
    return FilterImage(std::move(recipe));
}

/// Random pixels, every fourth one opaque or clear. With a fixed seed.
inline QImage randomPicture(int width, int height, QImage::Format format, quint32 seed = 1)
{
    QRandomGenerator random(seed);
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const quint32 pixel = random.generate();
            const quint32 alpha = x % 8 == 0 ? 0xff000000U : x % 8 == 4 ? 0 : pixel & 0xff000000U;
            image.setPixel(x, y, (pixel & 0xffffffU) | alpha);
        }
    }
    if (format == QImage::Format_RGB32)
        image.reinterpretAsFormat(format);
    return image.convertToFormat(format);
}

} // namespace dravelin::testing
