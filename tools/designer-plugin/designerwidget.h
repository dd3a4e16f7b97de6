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
    QString toolTip;
    QString whatsThis;
    QSize size; ///< of a new one
    std::function<QWidget *(QWidget *parent, bool inDesigner)> create;
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
    [[nodiscard]] QString toolTip() const override { return m_description.toolTip; }
    [[nodiscard]] QString whatsThis() const override { return m_description.whatsThis; }
    [[nodiscard]] QString includeFile() const override { return m_description.includeFile; }
    [[nodiscard]] QIcon icon() const override;
    [[nodiscard]] bool isContainer() const override { return true; }
    [[nodiscard]] QWidget *createWidget(QWidget *parent) override;
    [[nodiscard]] QString domXml() const override;

    /// Called by Qt Designer, but by nobody who only reads its files.
    void initialize(QDesignerFormEditorInterface *core) override;
    [[nodiscard]] bool isInitialized() const override { return m_inDesigner; }

private:
    WidgetDescription m_description;
    bool m_inDesigner = false;
};
