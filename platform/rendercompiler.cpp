// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/rendercompiler.h>

#include <platform/programbuilder.h>
#include <platform/renderer.h>

#include <dravelin/platform/log.h>

#include <QtCore/QScopeGuard>
#include <QtGui/QColorSpace>

#include <new>

namespace dravelin::detail {

using namespace Qt::StringLiterals;

namespace {

constexpr int deepest = 200; ///< chains as further pictures of chains as further pictures...

const Recipe *inputOf(const Recipe &recipe) { return recipe.images.value(u"inputImage"_s).get(); }

QImage checked(const QImage &image)
{
    if (image.isNull())
        throw std::bad_alloc();
    return image;
}

QImage inSrgb(const QImage &image)
{
    const QColorSpace space = image.colorSpace();
    if (!space.isValid() || space == QColorSpace(QColorSpace::SRgb))
        return image;
    // Those that Qt cannot take through a colour space have few bits: palettes, greys, 16-bit colours.
    const auto plain = image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    const QImage deep = image.depth() < 24 ? checked(image.convertToFormat(plain)) : image;
    return checked(deep.convertedToColorSpace(QColorSpace::SRgb));
}

/// In one of the three formats that are rendered from.
QImage plainPixels(const QImage &given)
{
    if (given.isNull())
        return given;
    const QImage image = inSrgb(given);
    if (!image.hasAlphaChannel())
        return checked(image.convertToFormat(QImage::Format_RGB32));
    if (image.format() == QImage::Format_ARGB32)
        return image;
    return checked(image.convertToFormat(QImage::Format_ARGB32_Premultiplied));
}

} // namespace

const Recipe *sourceOf(const Recipe *recipe)
{
    while (recipe && !recipe->filter.isEmpty())
        recipe = inputOf(*recipe);
    return recipe && !recipe->source.isNull() ? recipe : nullptr;
}

RenderProgram RenderCompiler::compile(const Recipe &recipe)
{
    const Recipe *source = sourceOf(&recipe);
    if (!source)
        return {};
    std::vector<const Recipe *> filters;
    for (const Recipe *at = &recipe; at != source; at = inputOf(*at))
        filters.push_back(at);
    ProgramBuilder builder(*this, plainPixels(source->source));
    for (auto filter = filters.rbegin(); filter != filters.rend(); ++filter)
        builder.add(**filter);
    return builder.take();
}

QImage RenderCompiler::picture(const std::shared_ptr<const Recipe> &recipe)
{
    if (!recipe || m_pictures.contains(recipe.get()))
        return recipe ? m_pictures.value(recipe.get()) : QImage();
    if (m_depth == deepest) {
        logWarning(u"A filter's further picture is left out: more than %1 are nested"_s.arg(deepest));
        return {};
    }
    ++m_depth;
    const auto leave = qScopeGuard([this] { --m_depth; });
    const QImage image =
        recipe->filter.isEmpty() ? plainPixels(recipe->source) : render(compile(*recipe), {.threads = m_threads});
    m_pictures.insert(recipe.get(), image);
    return image;
}

} // namespace dravelin::detail
