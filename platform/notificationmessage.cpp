// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// The calls and hints of the Desktop Notifications Specification 1.2.

#include "platform/notificationmessage.h"

#include "platform/notificationtext.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusMetaType>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPixmap>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace dravelin::detail {

/// A picture as the bus carries it.
struct NotificationPicture
{
    QImage image; ///< RGBA8888
};

static QDBusArgument &operator<<(QDBusArgument &argument, const NotificationPicture &picture)
{
    const QImage &image = picture.image;
    argument.beginStructure();
    argument << image.width() << image.height() << int(image.bytesPerLine()) << true << 8 << 4
             << QByteArray(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes());
    argument.endStructure();
    return argument;
}

/// Nothing is read back.
static const QDBusArgument &operator>>(const QDBusArgument &argument, NotificationPicture &) { return argument; }

} // namespace dravelin::detail

Q_DECLARE_METATYPE(dravelin::detail::NotificationPicture)

namespace dravelin::detail {

namespace {

constexpr qsizetype TitleLimit = 500, TextLimit = 5000;
constexpr int PictureSize = 64;

/// The qGuiApp of a plain QCoreApplication is not null.
bool hasInterface() { return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr; }

QString applicationName()
{
    return notificationText(
        hasInterface() ? QGuiApplication::applicationDisplayName() : QCoreApplication::applicationName(), TitleLimit);
}

QIcon iconOf(const NotificationContent &content)
{
    if (!hasInterface())
        return {};
    return content.icon.isNull() ? QGuiApplication::windowIcon() : content.icon;
}

void addPicture(QVariantMap &hints, const QIcon &icon)
{
    // An icon of the theme goes by its name.
    if (icon.isNull() || !icon.name().isEmpty())
        return;
    static const QMetaType registered = qDBusRegisterMetaType<NotificationPicture>();
    const QImage image = icon.pixmap(PictureSize).toImage().convertToFormat(QImage::Format_RGBA8888);
    if (!image.isNull() && registered.isValid())
        hints.insert(u"image-data"_s, QVariant::fromValue(NotificationPicture{image}));
}

void addSound(QVariantMap &hints, const QString &soundName)
{
    if (soundName.isEmpty())
        hints.insert(u"suppress-sound"_s, true);
    else
        hints.insert(soundName.startsWith(u'/') ? u"sound-file"_s : u"sound-name"_s,
                     notificationText(soundName, TextLimit));
}

QVariantMap hintsOf(const NotificationContent &content)
{
    QVariantMap hints{{u"urgency"_s, QVariant::fromValue(uchar(content.urgency))}};
    addSound(hints, content.soundName);
    addPicture(hints, iconOf(content));
    if (hasInterface() && !QGuiApplication::desktopFileName().isEmpty())
        hints.insert(u"desktop-entry"_s, notificationText(QGuiApplication::desktopFileName(), TitleLimit));
    return hints;
}

QStringList actionsOf(const NotificationContent &content)
{
    QStringList keysAndLabels;
    for (const NotificationAction &action : content.actions)
        keysAndLabels << notificationText(action.key, TitleLimit) << notificationText(action.label, TitleLimit);
    return keysAndLabels;
}

int millisecondsOf(double seconds)
{
    if (!(seconds >= 0))
        return -1;
    // What is short is not for ever, which 0 would be.
    const double least = seconds > 0 ? 1 : 0;
    return int(std::clamp<double>(seconds * 1000, least, std::numeric_limits<int>::max()));
}

} // namespace

QDBusMessage notificationCall(const QString &method, const QVariantList &arguments)
{
    const auto service = QLatin1String(NotificationService);
    QDBusMessage call = QDBusMessage::createMethodCall(service, QLatin1String(NotificationPath), service, method);
    call.setArguments(arguments);
    return call;
}

QDBusMessage notifyCall(const NotificationContent &content, quint32 replacedId, bool hasMarkup)
{
    const QString text = notificationText(content.informativeText, TextLimit);
    return notificationCall(u"Notify"_s,
                            {applicationName(), replacedId, iconOf(content).name(),
                             notificationText(content.title, TitleLimit), hasMarkup ? text.toHtmlEscaped() : text,
                             actionsOf(content), hintsOf(content), millisecondsOf(content.timeout)});
}

} // namespace dravelin::detail
