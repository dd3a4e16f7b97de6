// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/codingregistry.h"

#include <QtCore/QHash>

#include <mutex>
#include <typeindex>
#include <unordered_map>
#include <utility>

namespace dravelin {

namespace {

struct Registry
{
    std::mutex mutex;
    std::unordered_map<std::type_index, QString> names;
    QHash<QString, std::function<CodingPointer()>> creators;
};

Registry &registry()
{
    static Registry instance;
    return instance;
}

} // namespace

Coding::~Coding() = default;

void detail::registerCodingClass(const std::type_info &type, const QString &name,
                                 const std::function<CodingPointer()> &create)
{
    const std::lock_guard lock(registry().mutex);
    registry().names.try_emplace(type, name);
    registry().creators.insert(name, create);
}

QString detail::codingClassName(const std::type_info &type)
{
    const std::lock_guard lock(registry().mutex);
    const auto entry = registry().names.find(type);
    return entry == registry().names.end() ? QString() : entry->second;
}

std::function<CodingPointer()> detail::codingClassCreator(const QString &name)
{
    const std::lock_guard lock(registry().mutex);
    return registry().creators.value(name);
}

} // namespace dravelin
