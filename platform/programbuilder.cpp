// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/programbuilder.h>

#include <platform/renderstages.h>

#include <dravelin/platform/log.h>

#include <cmath>

namespace dravelin::detail {

using namespace Qt::StringLiterals;

ProgramBuilder::ProgramBuilder(RenderCompiler &compiler, const QImage &source) : m_compiler(compiler)
{
    m_program.source = source;
    m_program.isOpaque = source.format() == QImage::Format_RGB32;
}

ProgramBuilder::Adder ProgramBuilder::adderFor(const Recipe &filter)
{
    static const QHash<QString, Adder> adders = {
        {u"CIExposureAdjust"_s, &ProgramBuilder::addExposure},
        {u"CIVibrance"_s, &ProgramBuilder::addVibrance},
        {u"CIVignette"_s, &ProgramBuilder::addVignette},
        {u"CIHighlightShadowAdjust"_s, &ProgramBuilder::addHighlightShadow},
        {u"CIDissolveTransition"_s, &ProgramBuilder::addDissolve},
        {u"CIBlendWithMask"_s, &ProgramBuilder::addMask},
        {u"CIMultiplyBlendMode"_s, &ProgramBuilder::addBlend<BlendMode::Multiply>},
        {u"CIHueBlendMode"_s, &ProgramBuilder::addBlend<BlendMode::Hue>},
        {u"CISaturationBlendMode"_s, &ProgramBuilder::addBlend<BlendMode::Saturation>},
        {u"CIColorBlendMode"_s, &ProgramBuilder::addBlend<BlendMode::Color>},
        {u"CILuminosityBlendMode"_s, &ProgramBuilder::addBlend<BlendMode::Luminosity>},
    };
    return filter.kernel ? &ProgramBuilder::addKernel : adders.value(filter.filter);
}

void ProgramBuilder::add(const Recipe &filter)
{
    if (const Adder adder = adderFor(filter)) {
        (this->*adder)(filter);
    } else if (const auto matrix = filterMatrix(filter.filter, filter.values)) {
        addFalseAlpha(filter);
        addMatrix(*matrix);
    } else {
        logWarning(u"The filter %1 is left out of a picture: there is none of this name"_s.arg(filter.filter));
    }
}

RenderProgram ProgramBuilder::take()
{
    finishPending();
    if (m_program.stages.size() == 1 && m_program.isOpaque) {
        if (const auto *stage = dynamic_cast<const MatrixStage *>(m_program.stages.front().get()))
            m_program.bytes = std::make_unique<ByteMatrix>(stage->matrix());
    }
    if (m_program.bytes && !m_program.bytes->isValid())
        m_program.bytes.reset();
    return std::move(m_program);
}

template <typename Stage, typename... Arguments>
void ProgramBuilder::addStage(Arguments &&...arguments)
{
    finishPending();
    m_program.stages.push_back(std::make_unique<Stage>(std::forward<Arguments>(arguments)...));
}

void ProgramBuilder::finishPending()
{
    // Reset first: adding a stage comes back here.
    const ColorMatrix matrix = std::exchange(m_matrix, {});
    const double stops = std::exchange(m_stops, 0);
    if (stops != 0)
        addStage<ExposureStage>(stops);
    if (!matrix.isIdentity())
        addStage<MatrixStage>(matrix);
}

void ProgramBuilder::addMatrix(const ColorMatrix &matrix)
{
    if (matrix.isIdentity())
        return;
    if (m_stops != 0)
        finishPending();
    m_matrix = matrix * m_matrix;
}

/// Alpha goes by what colours were before the matrix.
void ProgramBuilder::addFalseAlpha(const Recipe &filter)
{
    if (filter.filter != "CIFalseColor"_L1)
        return;
    const auto [dark, light] = falseColors(filter.values);
    if (dark[3] == 1 && light[3] == 1)
        return;
    addStage<FalseAlphaStage>(dark[3], light[3]);
    m_program.isOpaque = false;
}

void ProgramBuilder::addExposure(const Recipe &filter)
{
    const double stops = filterNumber(filter.values, u"inputEV"_s, 0, -100, 100);
    if (stops != 0 && !m_matrix.isIdentity())
        finishPending();
    m_stops += stops;
}

void ProgramBuilder::addVibrance(const Recipe &filter)
{
    const double amount = filterNumber(filter.values, u"inputAmount"_s, 0, -1, 1);
    if (amount != 0)
        addStage<VibranceStage>(amount);
}

void ProgramBuilder::addVignette(const Recipe &filter)
{
    const double intensity = filterNumber(filter.values, u"inputIntensity"_s, 0, -1, 1);
    if (intensity != 0)
        addStage<VignetteStage>(intensity, filterNumber(filter.values, u"inputRadius"_s, 1, 0, 2));
}

void ProgramBuilder::addHighlightShadow(const Recipe &filter)
{
    const double highlight = filterNumber(filter.values, u"inputHighlightAmount"_s, 1, 0, 1);
    const double shadow = filterNumber(filter.values, u"inputShadowAmount"_s, 0, -1, 1);
    if (highlight == 1 && shadow == 0)
        return;
    finishPending();
    const int radius = int(std::lround(filterNumber(filter.values, u"inputRadius"_s, 0, 0, 1e6)));
    auto light = radius > 0 ? std::make_unique<const LuminancePlane>(m_program, radius) : nullptr;
    addStage<HighlightShadowStage>(highlight, shadow, std::move(light));
}

void ProgramBuilder::addDissolve(const Recipe &filter)
{
    const QImage target = picture(filter, u"inputTargetImage"_s);
    const double time = filterNumber(filter.values, u"inputTime"_s, 0, 0, 1);
    if (target.isNull() || time == 0)
        return;
    addStage<MixStage>(target, time);
    m_program.isOpaque = m_program.isOpaque && covers(target);
}

void ProgramBuilder::addMask(const Recipe &filter)
{
    const QImage mask = picture(filter, u"inputMaskImage"_s);
    if (mask.isNull())
        return;
    const QImage background = picture(filter, u"inputBackgroundImage"_s);
    addStage<MaskStage>(background, mask);
    m_program.isOpaque = m_program.isOpaque && covers(background);
}

template <BlendMode Mode>
void ProgramBuilder::addBlend(const Recipe &filter)
{
    const QImage background = picture(filter, u"inputBackgroundImage"_s);
    if (!background.isNull())
        addStage<BlendStage>(background, Mode);
}

void ProgramBuilder::addKernel(const Recipe &filter)
{
    addStage<KernelStage>(filter.kernel, filter.values);
    m_program.isOpaque = false;
}

QImage ProgramBuilder::picture(const Recipe &filter, const QString &key) const
{
    return m_compiler.picture(filter.images.value(key));
}

bool ProgramBuilder::covers(const QImage &image) const
{
    return image.format() == QImage::Format_RGB32 && image.width() >= m_program.source.width()
           && image.height() >= m_program.source.height();
}

} // namespace dravelin::detail
