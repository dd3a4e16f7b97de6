// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTextStream>

class Settings : public dravelin::PreferenceData
{
    Q_OBJECT
    Q_PROPERTY(double zoom MEMBER zoom NOTIFY zoomChanged)

public:
    void resetDefaultValues() override { setProperty("zoom", 1.0); }
    void installPreferenceItems() override { addDoubleWithName("zoom"); }
    double zoom = 0;

Q_SIGNALS:
    void zoomChanged();
};

double zoomAtStart(double zoomAtEnd)
{
    auto settings = std::make_shared<Settings>();
    const dravelin::PreferenceManager manager(settings); // restored, or seeded with the defaults
    const double zoom = settings->zoom;
    settings->setProperty("zoom", zoomAtEnd); // on disk when this returns
    return zoom;
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const double first = zoomAtStart(2.5), second = zoomAtStart(1.0);
    QTextStream(stdout) << "zoom " << first << ", then " << second << '\n';
}

#include "settings.moc"
