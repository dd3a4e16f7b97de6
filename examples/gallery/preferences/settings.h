// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/color.h>
#include <dravelin/preferences/data.h>

#include <QtCore/QByteArray>

/// The settings of a drawing program: one property for every type of preference item.
class Settings : public dravelin::PreferenceData
{
    Q_OBJECT
    Q_PROPERTY(bool showGrid MEMBER showGrid NOTIFY showGridChanged)
    Q_PROPERTY(QString author MEMBER author NOTIFY authorChanged)
    Q_PROPERTY(int pages MEMBER pages NOTIFY pagesChanged)
    Q_PROPERTY(float opacity MEMBER opacity NOTIFY opacityChanged)
    Q_PROPERTY(double zoom MEMBER zoom NOTIFY zoomChanged)
    Q_PROPERTY(dravelin::Color paper MEMBER paper NOTIFY paperChanged)
    Q_PROPERTY(QByteArray notes MEMBER notes NOTIFY notesChanged)

public:
    void resetDefaultValues() override;
    void installPreferenceItems() override;

    bool showGrid = false;
    QString author;
    int pages = 0;
    float opacity = 0;
    double zoom = 0;
    dravelin::Color paper;
    QByteArray notes;

Q_SIGNALS:
    void showGridChanged();
    void authorChanged();
    void pagesChanged();
    void opacityChanged();
    void zoomChanged();
    void paperChanged();
    void notesChanged();
};
