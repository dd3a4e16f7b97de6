// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/proxies.h>
#include <dravelin/encoding/base64.h>
#include <dravelin/encoding/collections.h>
#include <dravelin/platform/bundle.h>
#include <dravelin/platform/log.h>
#include <dravelin/platform/userdefaults.h>
#include <dravelin/preferences/manager.h>
#include <dravelin/values/conversions.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

QString applicationVersion()
{
    return Bundle::mainBundle().objectForInfoDictionaryKey(u"CFBundleShortVersionString"_s).toString();
}

/// One field of an export. The empty text has no Base64 form; the file marks it so.
QString encodedField(const QString &text)
{
    const QString encoded = encodeBase64WithString(text);
    return encoded.isNull() ? u"(null)"_s : encoded;
}

/// \return the empty text for what is not Base64, absent text for what is not UTF-8
QString decodedField(const QString &field)
{
    const QByteArray bytes = decodeBase64ToData(field);
    return bytes.isEmpty() ? u""_s : dataToStr(bytes);
}

QString textToExport(const PreferenceItem &item)
{
    const QVariant stored = item.load();
    if (stored.isValid() && stored.metaType() != QMetaType::fromType<QString>())
        logWarning(
            u"Preference \"%1\" is exported as empty: its stored value is not text"_s.arg(item.nameWithSuffix()));
    return stored.metaType() == QMetaType::fromType<QString>() ? stored.toString() : QString();
}

bool fail(QString *message, const QString &text)
{
    if (message)
        *message = text;
    return text.isEmpty();
}

} // namespace

PreferenceManager::PreferenceManager(std::shared_ptr<PreferenceData> target, const QString &suffix)
    : m_target(std::move(target))
{
    if (const QString trimmed = trimWhiteSpace(suffix); !trimmed.isEmpty())
        m_suffix = trimmed;
    if (!m_target)
        return;
    const UserDefaults::Batch batch(UserDefaults::standardUserDefaults());
    m_target->installManager(this);
    m_target->resetDefaultValues();
    m_target->installPreferenceItems();
}

PreferenceManager::~PreferenceManager() = default;

void PreferenceManager::addPreference(std::shared_ptr<PreferenceItem> item)
{
    if (item && item->proxy())
        m_items.insert(item->proxy()->keyPath(), std::move(item));
}

void PreferenceManager::resetPreferencesToDefaults()
{
    if (m_target)
        m_target->resetDefaultValues();
}

QString PreferenceManager::exportPreferences() const
{
    QString text = encodedField(applicationVersion()) + u'\r';
    for (const auto &[name, item] : m_items.asKeyValueRange())
        text += encodedField(name) + u',' + encodedField(textToExport(*item)) + u'\r';
    return encodeBase64WithString(trimWhiteSpace(text));
}

bool PreferenceManager::parsePreferenceLine(const QString &line, QString *key, QString *value)
{
    const qsizetype comma = line.indexOf(u',');
    if (comma < 0 || line.indexOf(u',', comma + 1) >= 0) {
        *key = QString();
        *value = QString();
        return false;
    }
    *key = decodedField(line.first(comma));
    *value = decodedField(line.sliced(comma + 1));
    return true;
}

/// \return the message of the failure, empty when `lines` holds the item lines
QString PreferenceManager::linesToImport(const QString &text, QStringList *lines) const
{
    const QString inner = trimWhiteSpace(decodeBase64ToString(text));
    if (inner.isEmpty())
        return u"No preferences available in the file."_s;
    *lines = splitIntoLines(inner);
    if (lines->isEmpty())
        return u"There were no preferences to install."_s;
    if (trimWhiteSpace(decodedField(lines->takeFirst())) != trimWhiteSpace(applicationVersion()))
        return u"The imported Quendle preferences must be from the same version."_s;
    return {};
}

void PreferenceManager::importLine(const QString &line)
{
    QString key;
    QString value;
    if (!parsePreferenceLine(line, &key, &value) || value.isNull())
        return;
    const auto item = m_items.value(key);
    if (item && m_target->shouldImportPreference(*item))
        item->save(value);
}

bool PreferenceManager::importPreferences(const QString &text, QString *message)
{
    QStringList lines;
    if (const QString failure = linesToImport(text, &lines); !failure.isEmpty())
        return fail(message, failure);
    if (m_target) {
        const UserDefaults::Batch batch(UserDefaults::standardUserDefaults());
        for (const QString &line : std::as_const(lines))
            importLine(line);
        m_target->installPreferenceItems();
    }
    Q_EMIT preferencesImported();
    return fail(message, u""_s);
}

void PreferenceManager::restorePreferences(const QStringList &keys)
{
    for (const QString &key : keys) {
        if (const auto item = std::dynamic_pointer_cast<TypedPreferenceItem>(m_items.value(key)))
            item->restoreIfStoredElsewhere();
    }
}

QString PreferenceManager::dumpPreferences() const
{
    QString text;
    for (const auto &item : m_items)
        text += item->dumpPreference() + u'\r';
    return text;
}

} // namespace dravelin
