// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTextStream>

static QTextStream out(stdout);

template <class Condition>
static void waitUntil(Condition condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// Silence stands for samples of a file here, so that the example makes no noise.
static std::shared_ptr<const dravelin::SoundData> samples(double seconds)
{
    //! [samples]
    const int rate = 8000;
    auto data = dravelin::SoundData::fromSamples(std::vector<qint16>(size_t(seconds * rate)), 1, rate);
    //! [samples]
    return data;
}

//! [window]
enum Cue : qint64 { Bell, Rain, Missing };
enum Category : quint64 { Effects = 1, Music = 2 };

class Window : public dravelin::Object
{
    Q_OBJECT

public:
    Q_INVOKABLE void bellRung(dravelin::Sound *sound) { out << "rung: " << sound->soundId() << '\n'; }
    void silent() { out << "silent\n"; }
};
//! [window]

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    Window window;

    //! [depot]
    dravelin::SoundDepot depot;
    depot.addSound(std::make_shared<dravelin::Sound>(samples(0.2), Bell, Effects));
    depot.addSound(std::make_shared<dravelin::Sound>(samples(5), Rain, Music));

    out << "at first: " << depot.playSound(Bell) << '\n'; // no category is on yet
    depot.setCurrentCategory(Effects | Music);
    out << "Effects and Music on: " << depot.playSound(Bell, {&window, "bellRung:"}) << '\n';
    out << "while it plays: " << depot.playSound(Bell, {&window, &Window::bellRung})
        << '\n'; // takes the handler, though
    out << "unknown: " << depot.playSound(Missing) << '\n';
    //! [depot]
    out.flush();
    const auto bell = depot.getSound(Bell);
    waitUntil([&] { return !bell->isPlaying(); });

    //! [volume]
    depot.setVolume(1.7f); // for later plays, kept as it is ...
    depot.playSound(Rain);
    out << depot.volume() << ", but " << depot.getSound(Rain)->volume() << '\n'; // ... and clamped by the sound
    depot.setVolumeForAllSound(0.8f);                                            // now, for all
    out << depot.volume() << " and " << depot.getSound(Rain)->volume() << '\n';
    //! [volume]

    //! [fade]
    depot.getSound(Rain)->fadeOut(0.3f, {&window, &Window::silent});
    //! [fade]
    waitUntil([&] { return !depot.getSound(Rain)->isPlaying(); });
    out << "stays at the last step: " << qRound(depot.getSound(Rain)->volume() * 1000) / 1000.0 << '\n';

    //! [mute]
    depot.playSound(Rain);
    depot.muteAllSounds(true, 0, [] { out << "muted\n"; });
    out << "muted: " << depot.playSound(Rain) << ", forced: " << depot.forcePlaySound(Rain) << '\n';
    depot.muteAllSounds(false, 0, [] { out << "unmuted, and faded out with it\n"; });
    //! [mute]

    int ended = 0;
    //! [voices]
    QObject::connect(&depot, &dravelin::SoundDepot::playEnded, &window, [&](qint64) { ++ended; });
    depot.playSound(Bell);
    auto second = depot.playVoice(Bell, [] { out << "the second one\n"; }); // overlaps with the first
    second->setVolume(0.1f);
    //! [voices]
    waitUntil([&] { return ended == 2; });
    out << "ended: " << ended << '\n';
}

#include "sound.moc"
