// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/object.h>

namespace dravelin {

Object::Object(QObject *parent) : QObject(parent) {}

Object::~Object() = default;

std::shared_ptr<QObject> retain(QObject *object)
{
    auto *root = qobject_cast<Object *>(object);
    return root ? root->weak_from_this().lock() : nullptr;
}

} // namespace dravelin
