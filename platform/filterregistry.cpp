// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/filterregistry.h"

#include "platform/filtervalue.h"

#include <dravelin/platform/log.h>

#include <QtCore/QMutex>
#include <QtCore/QSet>

#include <algorithm>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace detail {

namespace {

struct Registry
{
    QMutex mutex;
    FilterKinds kinds = platformFilters();
};

Registry &registry()
{
    static Registry instance;
    return instance;
}

bool isPlatformFilter(const FilterKinds &kinds, const QString &filterName)
{
    const auto kind = kinds.value(filterName);
    return kind && !kind->kernel;
}

QString faultOf(const FilterInput &input)
{
    if (input.key.isEmpty() || input.key == kCIInputImageKey)
        return u"an input is named \"%1\""_s.arg(input.key);
    if (input.defaultValue.isValid() && !filterValue(input.defaultValue, input.type))
        return u"the default of \"%1\" is of another type"_s.arg(input.key);
    return {};
}

/// Empty when there is nothing wrong.
QString faultOf(const FilterDescription &description)
{
    if (!description.kernel)
        return u"there is no kernel"_s;
    QSet<QString> keys;
    for (const FilterInput &input : description.inputs) {
        if (const QString fault = faultOf(input); !fault.isEmpty())
            return fault;
        if (keys.contains(input.key))
            return u"\"%1\" is there twice"_s.arg(input.key);
        keys.insert(input.key);
    }
    return {};
}

/// With its defaults in the form in which filters keep them.
std::shared_ptr<FilterKind> makeKind(const QString &filterName, FilterDescription description)
{
    for (FilterInput &input : description.inputs)
        input.defaultValue = filterValue(input.defaultValue, input.type).value_or(QVariant());
    auto kernel = std::make_shared<const PixelKernel>(std::exchange(description.kernel, {}));
    return std::make_shared<FilterKind>(FilterKind{filterName, std::move(description), std::move(kernel)});
}

} // namespace

const FilterInput *FilterKind::input(const QString &key) const
{
    const auto place = std::ranges::find(description.inputs, key, &FilterInput::key);
    return place == description.inputs.end() ? nullptr : &*place;
}

FilterKinds filterKinds()
{
    Registry &all = registry();
    const QMutexLocker lock(&all.mutex);
    return all.kinds;
}

} // namespace detail

bool registerFilter(const QString &filterName, const FilterDescription &description)
{
    QString fault = filterName.isEmpty() ? u"it has no name"_s : detail::faultOf(description);
    auto &[mutex, kinds] = detail::registry();
    const QMutexLocker lock(&mutex);
    if (fault.isEmpty() && detail::isPlatformFilter(kinds, filterName))
        fault = u"the platform has one of that name"_s;
    if (fault.isEmpty())
        kinds[filterName] = detail::makeKind(filterName, description);
    else
        logWarning(u"The filter \"%1\" is not registered: %2"_s.arg(filterName, fault));
    return fault.isEmpty();
}

} // namespace dravelin
