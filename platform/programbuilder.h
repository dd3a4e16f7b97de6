// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/rendercompiler.h>

namespace dravelin::detail {

/// Collects the stages of one chain.
class ProgramBuilder
{
public:
    ProgramBuilder(RenderCompiler &compiler, const QImage &source);

    /// The next filter. Those that the platform does not have are logged and left out.
    void add(const Recipe &filter);
    [[nodiscard]] RenderProgram take();

private:
    using Adder = void (ProgramBuilder::*)(const Recipe &filter);
    [[nodiscard]] static Adder adderFor(const Recipe &filter);

    void addMatrix(const ColorMatrix &matrix);
    void addFalseAlpha(const Recipe &filter);
    void addExposure(const Recipe &filter);
    void addVibrance(const Recipe &filter);
    void addVignette(const Recipe &filter);
    void addHighlightShadow(const Recipe &filter);
    void addDissolve(const Recipe &filter);
    void addMask(const Recipe &filter);
    void addKernel(const Recipe &filter);
    template <BlendMode Mode>
    void addBlend(const Recipe &filter);

    [[nodiscard]] QImage picture(const Recipe &filter, const QString &key) const;
    [[nodiscard]] bool covers(const QImage &image) const;
    template <typename Stage, typename... Arguments>
    void addStage(Arguments &&...arguments);
    void finishPending();

    RenderCompiler &m_compiler;
    RenderProgram m_program;
    // At most one of the two is pending.
    ColorMatrix m_matrix;
    double m_stops = 0;
};

} // namespace dravelin::detail
