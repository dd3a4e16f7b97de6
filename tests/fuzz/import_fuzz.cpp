// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Imports a preference text. The first byte tells how many of the text's two layers of Base64 are put on here, so that the
// fuzzer reaches the lines and the fields without having to find valid Base64 first.

#include <dravelin/encoding/base64.h>
#include <dravelin/platform/userdefaults.h>
#include <dravelin/preferences.h>

#include <QtCore/QCoreApplication>

#include <cstdint>
#include <cstdlib>
#include <memory>

using namespace dravelin;

namespace {

class Record : public PreferenceData
{
    Q_OBJECT
    Q_PROPERTY(bool a MEMBER a NOTIFY changed)
    Q_PROPERTY(QString b MEMBER b NOTIFY changed)
    Q_PROPERTY(int c MEMBER c NOTIFY changed)
    Q_PROPERTY(double d MEMBER d NOTIFY changed)
    Q_PROPERTY(QByteArray e MEMBER e NOTIFY changed)

public:
    void installPreferenceItems() override
    {
        addBooleanWithName(QStringLiteral("a"));
        addNSStringWithName(QStringLiteral("b"));
        addNSIntegerWithName(QStringLiteral("c"));
        addDoubleWithName(QStringLiteral("d"));
        addNSDataWithName(QStringLiteral("e"));
    }
    bool a = false;
    QString b;
    int c = 0;
    double d = 0;
    QByteArray e;

Q_SIGNALS:
    void changed();
};

struct Application
{
    Application() : application(count, arguments)
    {
        QCoreApplication::setApplicationVersion(QStringLiteral("1"));
        manager = std::make_unique<PreferenceManager>(record);
    }
    int count = 1;
    char name[5] = "fuzz";
    char *arguments[2] = {name, nullptr};
    QCoreApplication application;
    ScopedUserDefaults isolated;
    UserDefaults::Batch batch{isolated.store()}; // nothing goes to the disk
    std::shared_ptr<Record> record = std::make_shared<Record>();
    std::unique_ptr<PreferenceManager> manager;
};

/// "key value" lines, as the lines of an export.
QString linesOf(const QString &text)
{
    QStringList lines{encodeBase64WithString(QStringLiteral("1"))};
    for (const QString &line : text.split(u'\n'))
        lines << encodeBase64WithString(line.section(u' ', 0, 0)) + u','
                     + encodeBase64WithString(line.section(u' ', 1));
    return lines.join(u'\r');
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Application application;
    if (size == 0)
        return 0;
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));
    const QString file = data[0] % 3 == 0 ? text : encodeBase64WithString(data[0] % 3 == 1 ? text : linesOf(text));

    QString message;
    const bool imported = application.manager->importPreferences(file, &message);
    if (imported != message.isEmpty())
        abort();
    // What was taken in must come out and go in again.
    if (imported && !application.manager->importPreferences(application.manager->exportPreferences(), &message))
        abort();
    return 0;
}

#include "import_fuzz.moc"
