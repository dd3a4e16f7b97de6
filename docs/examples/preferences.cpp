// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryFile>
#include <QtCore/QTextStream>

//! [record]
class Settings : public dravelin::PreferenceData
{
    Q_OBJECT
    Q_PROPERTY(bool showGrid MEMBER showGrid NOTIFY showGridChanged)
    Q_PROPERTY(double zoom MEMBER zoom NOTIFY zoomChanged)
    Q_PROPERTY(dravelin::Color paper MEMBER paper NOTIFY paperChanged)

public:
    void resetDefaultValues() override
    {
        setProperty("showGrid", true);
        setProperty("zoom", 1.0);
        setProperty("paper", QVariant::fromValue(dravelin::Color::srgb(1, 0.98, 0.9)));
    }
    void installPreferenceItems() override
    {
        addBooleanWithName("showGrid");        // by name
        addPreference(&Settings::zoomChanged); // by NOTIFY signal
        addNSColorWithName("paper");
    }

    bool showGrid = false;
    double zoom = 0;
    dravelin::Color paper;

Q_SIGNALS:
    void showGridChanged();
    void zoomChanged();
    void paperChanged();
};
//! [record]

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion("1.0");
    QTextStream out(stdout);
    const auto showTour = [&] { out << "a tour for newcomers\n"; };

    //! [manager]
    auto settings = std::make_shared<Settings>();
    dravelin::PreferenceManager manager(settings); // restored, or seeded with the defaults
    settings->setProperty("zoom", 2.0);            // on disk when this returns
    //! [manager]
    out << manager.dumpPreferences().replace('\r', '\n');

    QTemporaryFile file;
    if (!file.open())
        return 1;
    //! [file]
    file.write(manager.exportPreferences().toLatin1());
    settings->setProperty("zoom", 4.0);

    file.seek(0);
    QString message;
    if (manager.importPreferences(QString::fromLatin1(file.readAll()), &message))
        out << "imported, zoom " << settings->zoom << '\n';
    if (!manager.importPreferences("no such file", &message))
        out << message << '\n';
    //! [file]

    //! [follow]
    auto *store = dravelin::UserDefaults::standardUserDefaults();
    store->setWatching(true);
    QObject::connect(store, &dravelin::UserDefaults::defaultsChanged, &manager,
                     &dravelin::PreferenceManager::restorePreferences);
    //! [follow]
    dravelin::UserDefaults otherProcess(store->filePath());
    otherProcess.setObject("NO", "showGrid");
    otherProcess.synchronize();
    while (settings->showGrid)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    out << "the grid was switched off elsewhere\n";

    //! [single]
    if (!dravelin::getBOOLdefault("seenTour", false))
        showTour();
    dravelin::setBOOLDefault("seenTour", true);
    dravelin::savePreferences();
    //! [single]
    out << dravelin::getUserDefault("seenTour").toString() << '\n';
}

#include "preferences.moc"
