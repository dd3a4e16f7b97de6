// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QString>

#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace dravelin {

/// \name Interface files
/// Widgets from `.ui` files of Qt Designer, read at run time. For the thread of the widgets.
///
///     dravelin::registerInterfaceClass<Gauge>("Gauge");           // Gauge(QWidget *parent)
///     std::unique_ptr<QWidget> panel = dravelin::loadInterfaceFile(":/panel.ui");
/// @{

/// The widget that an interface file describes. The file may use Qt's widgets, the widget classes of this library and
/// those that were registered, and pictures by their paths from the file's folder. A registered class with an operation
/// `setDefaults()` has it called before the file's properties are set; one with `interfaceFileLoaded()` when the whole
/// file has been read: children before their parents.
/// \param name a path, which ends with ".ui"; or the name of "name.ui", found as Bundle::pathForResource() does or, when
/// there is no such file or it cannot be used, among the library's own
/// \return empty without a QApplication or a usable file; the log names file and cause. A widget of an unknown class is
/// one of the base class that the file names for it, or else missing with all that is in it, which the log tells too.
[[nodiscard]] DRAVELIN_EXPORT std::unique_ptr<QWidget> loadInterfaceFile(const QString &name);

/// What interface files know of a widget class.
struct InterfaceClass
{
    std::function<QWidget *(QWidget *parent)> create; ///< empty for a class of Qt's; may make none, which is logged
    std::function<void(QWidget *widget)> loaded;      ///< called when the file has been read; may be empty
};

/// Makes a class known to loadInterfaceFile() under the name that it bears in the files; a later one of the same name
/// takes its place, and also that of Qt's class of that name.
DRAVELIN_EXPORT void registerInterfaceClass(const QString &name, const InterfaceClass &interfaceClass);

/// \tparam Widget takes its parent
template <class Widget>
void registerInterfaceClass(const QString &name)
{
    InterfaceClass interfaceClass;
    interfaceClass.create = [](QWidget *parent) {
        auto *widget = new Widget(parent);
        if constexpr (requires { widget->setDefaults(); })
            widget->setDefaults();
        return widget;
    };
    if constexpr (requires(Widget * widget) { widget->interfaceFileLoaded(); })
        interfaceClass.loaded = [](QWidget *widget) { static_cast<Widget *>(widget)->interfaceFileLoaded(); };
    registerInterfaceClass(name, interfaceClass);
}
/// @}

} // namespace dravelin
