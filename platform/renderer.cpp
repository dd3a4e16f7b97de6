// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/renderer.h>

#include <platform/largebytes.h>
#include <platform/renderrun.h>

#include <QtGui/QColorSpace>

#include <new>

namespace dravelin::detail {

namespace {

QImage freshPicture(const QSize &size, QImage::Format format)
{
    QImage image(size, format);
    if (image.isNull())
        throw std::bad_alloc();
    adviseHugePages(image.bits(), quintptr(image.sizeInBytes()));
    return image;
}

} // namespace

QImage render(const RenderProgram &program, const RenderOptions &options)
{
    if (program.source.isNull())
        return {};
    QImage image = freshPicture(program.source.size(),
                                program.isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(program.source.devicePixelRatio());
    image.setColorSpace(program.source.colorSpace()); // sRGB, or not said
    return renderInto(program, image, options) ? image : QImage();
}

bool renderInto(const RenderProgram &program, QImage &target, const RenderOptions &options)
{
    return RenderRun(program, target, options).run();
}

} // namespace dravelin::detail
