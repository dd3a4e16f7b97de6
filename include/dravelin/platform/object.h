// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QObject>

#include <memory>

namespace dravelin {

/// The root class of everything in the library that is observed, called back, tracked or weakly held: a QObject that
/// `std::shared_ptr` may own. Refer to it weakly with `QPointer` or `std::weak_ptr`.
///
///     auto settings = std::make_shared<Settings>();   // Settings derives from dravelin::Object
///
/// Own an object one way only: by `std::shared_ptr`, by a QObject parent, or as a variable.
class DRAVELIN_EXPORT Object : public QObject, public std::enable_shared_from_this<Object>
{
    Q_OBJECT

public:
    explicit Object(QObject *parent = nullptr);
    ~Object() override;
};

/// A further owner of `object` when it is a dravelin::Object held by `std::shared_ptr`; empty otherwise.
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<QObject> retain(QObject *object);

} // namespace dravelin
