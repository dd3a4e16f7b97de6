// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/renderrun.h>

#include <platform/streamcopy.h>

#include <QtCore/QSemaphore>
#include <QtCore/QThreadPool>

namespace dravelin::detail {

namespace {

constexpr int bandPixels = 1 << 16;
constexpr qint64 pixelsPerThread = 200'000; ///< fewer are done before another thread has begun

} // namespace

RenderRun::RenderRun(const RenderProgram &program, QImage &target, const RenderOptions &options)
    : m_program(program),
      m_options(options),
      m_size(target.size()),
      m_bits(target.bits()),
      m_bytesPerLine(target.bytesPerLine()),
      m_format(pixelFormat(target)),
      m_rows(std::max(1, bandPixels / m_size.width())),
      m_bands((m_size.height() + m_rows - 1) / m_rows)
{}

bool RenderRun::run()
{
    QSemaphore finished;
    int started = 0;
    for (const int wanted = helpers(); started < wanted; ++started) {
        const auto help = [this, &finished] {
            work();
            finished.release();
        };
        if (!QThreadPool::globalInstance()->tryStart(help))
            break;
    }
    work();
    finished.acquire(started);
    if (m_exception)
        std::rethrow_exception(m_exception);
    return !m_stopped;
}

int RenderRun::helpers() const
{
    const qint64 pixels = qint64(m_size.width()) * m_size.height();
    const qint64 most = m_options.threads > 0 ? m_options.threads : pixels / pixelsPerThread + 1;
    return int(std::min<qint64>(most, m_bands)) - 1;
}

void RenderRun::work() noexcept
{
    try {
        const auto row = std::make_unique<PixelRow>();
        for (int band = m_next++; band < m_bands && !m_stopped; band = m_next++) {
            renderBand(band, *row);
            report();
        }
    } catch (...) {
        const std::lock_guard lock(m_mutex);
        m_exception = std::current_exception();
        m_stopped = true;
    }
}

void RenderRun::renderBand(int band, PixelRow &row) const
{
    const int top = band * m_rows, bottom = std::min(top + m_rows, m_size.height());
    if (m_program.bytes)
        return renderBytes(top, bottom);
    forEachBlock(m_program, top, bottom, row, [&] { storePixels(row, m_format, line(row.y) + row.x); });
}

void RenderRun::renderBytes(int top, int bottom) const
{
    const bool streams = std::size_t(m_bytesPerLine * m_size.height()) >= streamedSize;
    for (int y = top; y < bottom; ++y)
        m_program.bytes->apply(reinterpret_cast<const QRgb *>(m_program.source.constScanLine(y)), line(y),
                               m_size.width(), streams);
    finishStreamCopies();
}

void RenderRun::report()
{
    const std::lock_guard lock(m_mutex);
    ++m_done;
    if (m_options.progress && !m_stopped && !m_options.progress(double(m_done) / m_bands))
        m_stopped = true;
}

} // namespace dravelin::detail
