// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/filterdescription.h>
#include <dravelin/platform/filterimage.h>
#include <dravelin/platform/filterkeys.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

#include <memory>

namespace dravelin {

namespace detail {
struct FilterKind;
}

/// A filter: one of the kinds known by name, and the values of its inputs. What comes out is a recipe that is rendered
/// when its pixels are asked for.
///
///     const auto filter = dravelin::ImageFilter::filterWithName("CISepiaTone");
///     filter->setValue(0.8, "inputIntensity");
///     filter->setValue(photo, "inputImage");
///     const QImage result = filter->outputImage().toImage();
///
/// A filter is used by one thread at a time; the images that it gives are free of it.
class DRAVELIN_EXPORT ImageFilter
{
public:
    /// A new filter, with its inputs at their defaults and filterName() as its name.
    /// \return null, with a line in the log, when there is no such filter
    /// \operation{filterWithName:}
    [[nodiscard]] static std::shared_ptr<ImageFilter> filterWithName(const QString &filterName);

    ImageFilter(const ImageFilter &) = delete;
    ImageFilter &operator=(const ImageFilter &) = delete;
    ~ImageFilter();

    /// A new filter of the same kind with the same name and values.
    [[nodiscard]] std::shared_ptr<ImageFilter> copy() const;

    /// By which a FilterProcessor tells filters apart.
    /// \operation{name}
    [[nodiscard]] QString name() const { return m_name; }
    /// \operation{setName:}
    void setName(const QString &name) { m_name = name; }
    /// The platform's name of the kind, such as "CISepiaTone".
    [[nodiscard]] QString filterName() const;

    /// Gives every input that has a default that default. Inputs without one, the images, keep what they have.
    /// \operation{setDefaults}
    void setDefaults();

    /// Sets an input: to a number of any type, kept as it is, even beyond the published range and when it is no number at
    /// all (pictures are made as if it lay in the range); to a Color or QColor; or to a FilterImage, QImage or QPixmap.
    /// An invalid or null value clears it.
    /// \return false, with a line in the log, when there is no such input or the value is not of its kind; the input is
    /// then as before
    /// \operation{setValue:forKey:}
    bool setValue(const QVariant &value, const QString &forKey);
    bool setValue(const FilterImage &image, const QString &forKey)
    {
        return setValue(QVariant::fromValue(image), forKey);
    }
    bool setValue(const QImage &image, const QString &forKey) { return setValue(FilterImage(image), forKey); }

    /// The value of an input: a number of the type that it was set with, a Color or a FilterImage.
    /// \return an invalid value when it is cleared or there is no such input
    /// \operation{valueForKey:}
    [[nodiscard]] QVariant value(const QString &forKey) const { return m_values.value(forKey); }

    /// "inputImage" and then the others in the published order.
    [[nodiscard]] QStringList inputKeys() const;

    /// The further inputs as they were described.
    [[nodiscard]] const QList<FilterInput> &inputs() const;

    /// What is published about the filter: the attributes of filters, see kCIAttributeFilterName, and by the key of each
    /// input a QVariantMap with the attributes of inputs, see kCIAttributeClass. What is not published is not there.
    /// \operation{attributes}
    [[nodiscard]] QVariantMap attributes() const;

    /// What the filter makes of its input image with the values that it has now; later changes do not matter to it.
    /// Inputs without value that have a default count as having that.
    /// \return no picture when there is no input image
    /// \cost next to nothing: no pixels are made
    /// \operation{outputImage}
    [[nodiscard]] FilterImage outputImage() const;

    /// The names of the filters in a category, sorted.
    /// \operation{filterNamesInCategory:}
    [[nodiscard]] static QStringList filterNamesInCategory(const QString &category);

    /// The names of the filters that are in each of the categories, sorted; of all filters when there are no categories.
    /// \operation{filterNamesInCategories:}
    [[nodiscard]] static QStringList filterNamesInCategories(const QStringList &categories = {});

private:
    explicit ImageFilter(std::shared_ptr<const detail::FilterKind> kind);

    std::shared_ptr<const detail::FilterKind> m_kind;
    QString m_name;
    QVariantMap m_values;
};

} // namespace dravelin
