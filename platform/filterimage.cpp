// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/filterimage.h>

#include <platform/filterrecipe.h>
#include <platform/rendercompiler.h>
#include <platform/renderer.h>

#include <dravelin/platform/log.h>

#include <new>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

bool isWritable(const QImage &image)
{
    return image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32
           || image.format() == QImage::Format_ARGB32_Premultiplied;
}

/// What `work` returns, or, logged, what it returns by default where memory does not suffice.
template <typename Work>
auto logged(const QSize &size, const Work &work) -> decltype(work())
{
    try {
        return work();
    } catch (const std::bad_alloc &) {
        logWarning(u"A picture of %1 x %2 pixels is not rendered: there is no memory for it"_s.arg(size.width())
                       .arg(size.height()));
        return {};
    }
}

} // namespace

FilterImage::FilterImage() = default;

FilterImage::FilterImage(const QImage &image)
{
    if (image.isNull())
        return;
    auto recipe = std::make_shared<detail::Recipe>();
    recipe->source = image;
    m_recipe = std::move(recipe);
}

FilterImage::FilterImage(std::shared_ptr<const detail::Recipe> recipe)
{
    if (detail::sourceOf(recipe.get()))
        m_recipe = std::move(recipe);
}

QSize FilterImage::size() const { return m_recipe ? detail::sourceOf(m_recipe.get())->source.size() : QSize(0, 0); }

QImage FilterImage::toImage(const RenderOptions &options) const
{
    if (!m_recipe)
        return {};
    return logged(size(), [&] { return render(detail::RenderCompiler(options.threads).compile(*m_recipe), options); });
}

bool FilterImage::renderInto(QImage &image, const RenderOptions &options) const
{
    if (!m_recipe || image.size() != size() || !isWritable(image)) {
        logWarning(
            u"A picture of %1 x %2 pixels is not rendered into an image of %3 x %4 in format %5"_s.arg(size().width())
                .arg(size().height())
                .arg(image.width())
                .arg(image.height())
                .arg(image.format()));
        return false;
    }
    return logged(size(), [&] {
        const detail::RenderProgram program = detail::RenderCompiler(options.threads).compile(*m_recipe);
        return detail::renderInto(program, image, options);
    });
}

} // namespace dravelin
