// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/interfacefile.h>

#include <dravelin/platform/bundle.h>
#include <dravelin/platform/log.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtUiTools/QUiLoader>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

QHash<QString, InterfaceClass> &interfaceClasses()
{
    static QHash<QString, InterfaceClass> classes;
    return classes;
}

/// QUiLoader leaves out a widget of an unknown class, and everything inside it, without a word; and it tells no widget
/// that it is done.
class Loader : public QUiLoader
{
public:
    explicit Loader(const QString &path) : m_path(path) { setWorkingDirectory(QFileInfo(path).absoluteDir()); }

    QWidget *createWidget(const QString &className, QWidget *parent, const QString &name) override
    {
        const InterfaceClass known = interfaceClasses().value(className); // a copy: what it calls may register classes
        QWidget *widget = known.create ? known.create(parent) : QUiLoader::createWidget(className, parent, name);
        if (!widget) {
            logWarning(u"Interface file %1: cannot make widget \"%2\" of class %3"_s.arg(m_path, name, className));
            return nullptr;
        }
        widget->setObjectName(name);
        if (known.loaded)
            m_toTell.emplace_back(widget, known.loaded);
        return widget;
    }

    /// A widget is created after its parent.
    void tellLoaded()
    {
        for (auto entry = m_toTell.crbegin(); entry != m_toTell.crend(); ++entry) {
            if (const auto &[widget, loaded] = *entry; widget)
                loaded(widget);
        }
    }

private:
    QString m_path;
    std::vector<std::pair<QPointer<QWidget>, std::function<void(QWidget *)>>> m_toTell;
};

std::unique_ptr<QWidget> load(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        logWarning(u"Interface file %1: %2"_s.arg(path, file.errorString()));
        return nullptr;
    }
    Loader loader(path);
    std::unique_ptr<QWidget> widget(loader.load(&file));
    if (!widget)
        logWarning(u"Interface file %1: %2"_s.arg(path, loader.errorString()));
    loader.tellLoaded();
    return widget;
}

} // namespace

std::unique_ptr<QWidget> loadInterfaceFile(const QString &name)
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance())) {
        logWarning(u"Interface file %1: no window without a QApplication"_s.arg(name));
        return nullptr;
    }
    if (name.endsWith(u".ui"_s))
        return load(name);
    if (const QString path = Bundle::mainBundle().pathForResource(name, u"ui"_s); !path.isEmpty()) {
        if (auto widget = load(path))
            return widget;
    }
    return load(u":/dravelin/%1.ui"_s.arg(name));
}

void registerInterfaceClass(const QString &name, const InterfaceClass &interfaceClass)
{
    interfaceClasses().insert(name, interfaceClass);
}

} // namespace dravelin
