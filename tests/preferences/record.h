// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/color.h>
#include <dravelin/preferences/data.h>
#include <dravelin/preferences/items.h>

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtGui/QColor>

/// An application's settings with a property for every type of item.
class Record : public dravelin::PreferenceData
{
    Q_OBJECT
    Q_PROPERTY(bool flag MEMBER flag NOTIFY flagChanged)
    Q_PROPERTY(QString text MEMBER text NOTIFY textChanged)
    Q_PROPERTY(qint64 number MEMBER number NOTIFY numberChanged)
    Q_PROPERTY(float single MEMBER single NOTIFY singleChanged)
    Q_PROPERTY(double real MEMBER real NOTIFY realChanged)
    Q_PROPERTY(dravelin::Color color MEMBER color NOTIFY colorChanged)
    Q_PROPERTY(QColor qtColor MEMBER qtColor NOTIFY qtColorChanged)
    Q_PROPERTY(QByteArray bytes MEMBER bytes NOTIFY bytesChanged)
    Q_PROPERTY(Qt::Orientation orientation MEMBER orientation NOTIFY orientationChanged)
    Q_PROPERTY(QRectF rect MEMBER rect NOTIFY rectChanged)
    Q_PROPERTY(int twinA MEMBER twin NOTIFY twinChanged)
    Q_PROPERTY(int twinB MEMBER twin NOTIFY twinChanged)

public:
    bool flag = true;
    QString text = QStringLiteral("Ada");
    qint64 number = 3;
    float single = 0.1f;
    double real = 0.1;
    dravelin::Color color = dravelin::Color(Qt::white);
    QColor qtColor = Qt::red;
    QByteArray bytes = "raw";
    Qt::Orientation orientation = Qt::Vertical;
    QRectF rect;
    int twin = 0;

    QStringList refused;
    QStringList events;

    void installManager(dravelin::PreferenceManager *manager) override
    {
        events << QStringLiteral("manager");
        PreferenceData::installManager(manager);
    }
    void resetDefaultValues() override
    {
        events << QStringLiteral("reset");
        setProperty("number", 3);
    }
    void installPreferenceItems() override
    {
        events << QStringLiteral("install");
        addBooleanWithName(QStringLiteral("flag"));
        addNSStringWithName(QStringLiteral("text"));
        addNSIntegerWithName(QStringLiteral("number"));
        addFloatWithName(QStringLiteral("single"));
        addDoubleWithName(QStringLiteral("real"));
        addNSColorWithName(QStringLiteral("color"));
        addNSDataWithName(QStringLiteral("bytes"));
    }
    bool shouldImportPreference(const dravelin::PreferenceItem &item) override
    {
        return !refused.contains(item.name());
    }

Q_SIGNALS:
    void flagChanged();
    void textChanged();
    void numberChanged();
    void singleChanged();
    void realChanged();
    void colorChanged();
    void qtColorChanged();
    void bytesChanged();
    void orientationChanged();
    void rectChanged();
    void twinChanged();
};
