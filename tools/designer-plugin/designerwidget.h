// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <functional>

/// What is to be said about a widget class.
struct WidgetDescription
{
    QString className; ///< as it stands in the code
    QString includeFile;
    QString displayName; ///< in the widget box
    QString whatsThis;
    QSize size; ///< of a new one
    std::function<QWidget *(QWidget *parent)> create;
};

/// A widget class of the library in Qt Designer, a container for other widgets.
class DesignerWidget : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    explicit DesignerWidget(const WidgetDescription &description, QObject *parent = nullptr);

    [[nodiscard]] QString name() const override { return m_description.className; }
    [[nodiscard]] QString group() const override;
    [[nodiscard]] QString toolTip() const override { return m_description.displayName; }
    [[nodiscard]] QString whatsThis() const override { return m_description.whatsThis; }
    [[nodiscard]] QString includeFile() const override { return m_description.includeFile; }
    [[nodiscard]] QIcon icon() const override;
    [[nodiscard]] bool isContainer() const override { return true; }
    [[nodiscard]] QWidget *createWidget(QWidget *parent) override { return m_description.create(parent); }
    [[nodiscard]] QString domXml() const override;

private:
    WidgetDescription m_description;
};
