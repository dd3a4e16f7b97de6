// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/renderstage.h>

#include <dravelin/platform/pixelkernel.h>

#include <platform/colormatrix.h>
#include <platform/luminanceplane.h>

namespace dravelin::detail {

class MatrixStage : public RenderStage
{
public:
    explicit MatrixStage(const ColorMatrix &matrix);
    void apply(PixelRow &row) const override { applyMatrix(row, m_matrix); }
    [[nodiscard]] const float (&matrix() const)[12] { return m_matrix; }

private:
    float m_matrix[12];
};

class ExposureStage : public RenderStage
{
public:
    /// \param stops twice the light each
    explicit ExposureStage(double stops);
    void apply(PixelRow &row) const override { applyExposure(row, m_gain); }

private:
    float m_gain;
};

class VibranceStage : public RenderStage
{
public:
    explicit VibranceStage(double amount) : m_amount(float(amount)) {}
    void apply(PixelRow &row) const override { applyVibrance(row, m_amount); }

private:
    float m_amount;
};

class VignetteStage : public RenderStage
{
public:
    VignetteStage(double intensity, double radius) : m_intensity(float(intensity)), m_radius(float(radius)) {}
    void apply(PixelRow &row) const override { applyVignette(row, m_intensity, m_radius); }

private:
    float m_intensity, m_radius;
};

class HighlightShadowStage : public RenderStage
{
public:
    /// \param light may be null: each pixel's own
    HighlightShadowStage(double highlight, double shadow, std::unique_ptr<const LuminancePlane> light);
    void apply(PixelRow &row) const override;

private:
    float m_highlight, m_shadow;
    std::unique_ptr<const LuminancePlane> m_light;
};

class FalseAlphaStage : public RenderStage
{
public:
    FalseAlphaStage(double dark, double light) : m_dark(float(dark)), m_light(float(light)) {}
    void apply(PixelRow &row) const override { applyFalseAlpha(row, m_dark, m_light); }

private:
    float m_dark, m_light;
};

class BlendStage : public RenderStage
{
public:
    BlendStage(QImage backdrop, BlendMode mode) : m_backdrop(std::move(backdrop)), m_mode(mode) {}
    void apply(PixelRow &row) const override;

private:
    QImage m_backdrop;
    BlendMode m_mode;
};

class MixStage : public RenderStage
{
public:
    /// \param amount of `target`
    MixStage(QImage target, double amount) : m_target(std::move(target)), m_amount(float(amount)) {}
    void apply(PixelRow &row) const override;

private:
    QImage m_target;
    float m_amount;
};

class MaskStage : public RenderStage
{
public:
    MaskStage(QImage background, QImage mask) : m_background(std::move(background)), m_mask(std::move(mask)) {}
    void apply(PixelRow &row) const override;

private:
    QImage m_background, m_mask;
};

/// An application's own filter.
class KernelStage : public RenderStage
{
public:
    KernelStage(std::shared_ptr<const PixelKernel> kernel, QVariantMap values)
        : m_kernel(std::move(kernel)), m_values(std::move(values))
    {}
    void apply(PixelRow &row) const override;

private:
    std::shared_ptr<const PixelKernel> m_kernel;
    QVariantMap m_values;
};

} // namespace dravelin::detail
