// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/interfacefile.h"

#include <dravelin/platform/bundle.h>
#include <dravelin/platform/log.h>

#include <QtCore/QFile>
#include <QtUiTools/QUiLoader>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

/// QUiLoader leaves out a widget of an unknown class, and everything inside it, without a word.
class Loader : public QUiLoader
{
public:
    explicit Loader(const QString &path) : m_path(path) {}

    QWidget *createWidget(const QString &className, QWidget *parent, const QString &name) override
    {
        QWidget *widget = QUiLoader::createWidget(className, parent, name);
        if (!widget)
            logWarning(u"Interface file %1: no widget \"%2\", its class %3 is unknown"_s.arg(m_path, name, className));
        return widget;
    }

private:
    QString m_path;
};

} // namespace

std::unique_ptr<QWidget> loadInterfaceFileAt(const QString &path)
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
    return widget;
}

std::unique_ptr<QWidget> loadInterfaceFile(const QString &name)
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance())) {
        logWarning(u"Interface file %1: no window without a QApplication"_s.arg(name));
        return nullptr;
    }
    if (const QString path = Bundle::mainBundle().pathForResource(name, u"ui"_s); !path.isEmpty()) {
        if (auto widget = loadInterfaceFileAt(path))
            return widget;
    }
    return loadInterfaceFileAt(u":/dravelin/%1.ui"_s.arg(name));
}

} // namespace dravelin
