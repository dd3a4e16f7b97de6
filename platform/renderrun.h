// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/renderstage.h>

#include <dravelin/platform/filterimage.h>

#include <atomic>
#include <exception>
#include <mutex>

namespace dravelin::detail {

/// One rendering, by the caller's thread and those of the global pool that are idle: each takes band after band of rows,
/// so that none waits for another, and a busy pool only means fewer hands.
class RenderRun
{
public:
    RenderRun(const RenderProgram &program, QImage &target, const RenderOptions &options);

    /// \return whether it went through to the end
    /// \throws what progress and kernels throw
    bool run();

private:
    [[nodiscard]] int helpers() const;
    void work() noexcept;
    void renderBand(int band, PixelRow &row) const;
    void renderBytes(int top, int bottom) const;
    void report();
    [[nodiscard]] QRgb *line(int y) const { return reinterpret_cast<QRgb *>(m_bits + y * m_bytesPerLine); }

    const RenderProgram &m_program;
    const RenderOptions &m_options;
    const QSize m_size;
    uchar *m_bits;
    const qsizetype m_bytesPerLine;
    const PixelFormat m_format;
    const int m_rows; ///< of a band
    const int m_bands;
    std::atomic<int> m_next = 0;
    std::atomic<bool> m_stopped = false;
    std::mutex m_mutex; ///< of what follows
    int m_done = 0;
    std::exception_ptr m_exception;
};

} // namespace dravelin::detail
