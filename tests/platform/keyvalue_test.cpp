// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/exception.h>
#include <dravelin/platform/keyvalue.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtCore/QProperty>

#include <memory>
#include <vector>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class Page : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double margin MEMBER margin NOTIFY marginChanged)
    Q_PROPERTY(QString title MEMBER title NOTIFY titleChanged)
    Q_PROPERTY(int loud READ loud WRITE setLoud NOTIFY loudChanged)
    Q_PROPERTY(int width READ width WRITE setWidth BINDABLE bindableWidth)
    Q_PROPERTY(int silent MEMBER silent)
    Q_PROPERTY(int fixed READ loud CONSTANT)
    Q_PROPERTY(Qt::Orientation orientation MEMBER orientation NOTIFY orientationChanged)

public:
    double margin = 1;
    QString title;
    int silent = 0;
    Qt::Orientation orientation = Qt::Horizontal;

    int loud() const { return m_loud; }
    void setLoud(int value)
    {
        m_loud = value;
        Q_EMIT
        loudChanged(value, u"why"_s, this); // unchanged values too
    }
    int width() const { return m_width; }
    void setWidth(int width) { m_width = width; }
    QBindable<int> bindableWidth() { return &m_width; }

Q_SIGNALS:
    void marginChanged();
    void titleChanged(const QString &title);
    void loudChanged(int value, const QString &reason, QObject *page);
    void orientationChanged();

private:
    int m_loud = 0;
    Q_OBJECT_BINDABLE_PROPERTY(Page, int, m_width)
};

class Document : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Page *page MEMBER page NOTIFY pageChanged)

public:
    Page *page = nullptr;

    void setPage(Page *newPage)
    {
        page = newPage;
        Q_EMIT
        pageChanged();
    }

Q_SIGNALS:
    void pageChanged();
};

QString raisedBy(const std::function<void()> &call)
{
    try {
        call();
    } catch (const Exception &exception) {
        return exception.name();
    }
    return u"nothing"_s;
}

const QVariant Null = QVariant::fromValue(nullptr);

struct Recorder
{
    std::vector<std::pair<QVariant, QVariant>> changes;
    KeyValueObservation::Handler handler()
    {
        return [this](const KeyValueChange &change) { changes.emplace_back(change.oldValue, change.newValue); };
    }
};

using Changes = std::vector<std::pair<QVariant, QVariant>>;

} // namespace

TEST(KeyValueCoding, ReadsAndWritesProperties)
{
    Page page;
    page.setProperty("extra", 3);
    setValue(&page, u"2.5"_s, u"margin"_s); // converted
    setValue(&page, 5, u"extra"_s);
    setValue(&page, 2, u"orientation"_s);
    EXPECT_EQ(valueForKey(&page, u"margin"_s), QVariant(2.5));
    EXPECT_EQ(valueForKey(&page, u"extra"_s), QVariant(5));
    EXPECT_EQ(page.orientation, Qt::Vertical);

    page.title = u"old"_s;
    setValue(&page, {}, u"title"_s);
    EXPECT_TRUE(page.title.isNull());
    page.title = u"old"_s;
    setValue(&page, Null, u"title"_s);
    EXPECT_TRUE(page.title.isNull());

    Document document;
    EXPECT_EQ(valueForKeyPath(&document, u"page.margin"_s), QVariant());
    document.page = &page;
    EXPECT_EQ(valueForKeyPath(&document, u"page.margin"_s), QVariant(2.5));
    EXPECT_EQ(valueForKey(nullptr, u"margin"_s), QVariant());
}

TEST(KeyValueCoding, RaisesForWhatItCannotReach)
{
    Page page;
    const struct
    {
        const char *row;
        std::function<void()> call;
        const char *name;
    } rows[] = {
        {"read unknown", [&] { (void)valueForKey(&page, u"margn"_s); }, NSUndefinedKeyException},
        {"read path as key", [&] { (void)valueForKey(&page, u"page.margin"_s); }, NSUndefinedKeyException},
        {"write unknown", [&] { setValue(&page, 1, u"margn"_s); }, NSUndefinedKeyException},
        {"write constant", [&] { setValue(&page, 1, u"fixed"_s); }, NSUndefinedKeyException},
        {"no value for a number", [&] { setValue(&page, {}, u"margin"_s); }, NSInvalidArgumentException},
        {"no value for an enumeration", [&] { setValue(&page, {}, u"orientation"_s); }, NSInvalidArgumentException},
    };
    for (const auto &row : rows)
        EXPECT_EQ(raisedBy(row.call), QLatin1String(row.name)) << row.row;
}

TEST(KeyValueCoding, KeepsThePropertyWhenAValueDoesNotConvert)
{
    LogRecorder log;
    Page page;
    setValue(&page, u"wide"_s, u"margin"_s);
    EXPECT_EQ(page.margin, 1);
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_TRUE(log.lines()[0].contains(u"QString cannot be set as property \"margin\" of type double"_s));
}

TEST(KeyValueObserving, ReportsOldAndNewForEveryKindOfAnnouncement)
{
    Page page;
    page.setProperty("extra", 1);
    Recorder margin, loud, width, extra;
    KeyValueObservation a(&page, u"margin"_s, margin.handler());
    KeyValueObservation b(&page, u"loud"_s, loud.handler());
    KeyValueObservation c(&page, u"width"_s, width.handler());
    KeyValueObservation d(&page, u"extra"_s, extra.handler());
    page.setProperty("margin", 2.0);
    page.setProperty("margin", 2.0); // not announced
    page.setLoud(4);
    page.setLoud(4); // announced, so passed through
    page.setWidth(9);
    page.setProperty("extra", 2);
    page.setProperty("other", 2);
    EXPECT_EQ(margin.changes, (Changes{{1.0, 2.0}}));
    EXPECT_EQ(loud.changes, (Changes{{0, 4}, {4, 4}}));
    EXPECT_EQ(width.changes, (Changes{{0, 9}}));
    EXPECT_EQ(extra.changes, (Changes{{1, 2}}));
}

TEST(KeyValueObserving, FollowsAPath)
{
    Document document;
    Page first, second;
    Recorder recorder;
    {
        KeyValueObservation observation(&document, u"page.margin"_s, recorder.handler());
        document.setPage(&first);
        first.setProperty("margin", 2.0);
        second.margin = 7;
        document.setPage(&second);
        first.setProperty("margin", 3.0); // no longer on the path
        second.setProperty("margin", 8.0);
        document.setPage(nullptr);
    }
    document.setPage(&first);
    EXPECT_EQ(recorder.changes, (Changes{{Null, 1.0}, {1.0, 2.0}, {2.0, 7.0}, {7.0, 8.0}, {8.0, Null}}));
}

TEST(KeyValueObserving, SurvivesObjectsThatGo)
{
    Document document;
    Recorder recorder;
    auto inner = std::make_unique<Page>();
    KeyValueObservation path(&document, u"page.margin"_s, recorder.handler());
    document.setPage(inner.get());
    inner.reset();
    Page other;
    document.setPage(&other);
    EXPECT_EQ(recorder.changes, (Changes{{Null, 1.0}, {1.0, 1.0}}));

    auto outer = std::make_unique<Page>();
    KeyValueObservation simple(outer.get(), u"margin"_s, recorder.handler());
    EXPECT_EQ(simple.object(), outer.get());
    outer.reset();
    EXPECT_EQ(simple.object(), nullptr);
}

TEST(KeyValueObserving, LetsTheHandlerDestroyObservationAndObject)
{
    for (const char *key : {"margin", "width", "extra"}) {
        auto page = std::make_unique<Page>();
        page->setProperty("extra", 0);
        std::unique_ptr<KeyValueObservation> observation;
        int calls = 0;
        observation =
            std::make_unique<KeyValueObservation>(page.get(), QLatin1String(key), [&](const KeyValueChange &) {
                ++calls;
                observation.reset();
            });
        page->setProperty(key, 5);
        page->setProperty(key, 6);
        EXPECT_EQ(calls, 1) << key;
    }
    auto *page = new Page;
    KeyValueObservation observation(page, u"loud"_s, [&](const KeyValueChange &) { delete page; });
    QMetaObject::invokeMethod(page, "loudChanged", Q_ARG(int, 1), Q_ARG(QString, {}), Q_ARG(QObject *, nullptr));
    EXPECT_EQ(observation.object(), nullptr);
}

TEST(KeyValueObserving, LogsWhatCannotBeObserved)
{
    LogRecorder log;
    Page page;
    Recorder recorder;
    KeyValueObservation missing(&page, u"margn"_s, recorder.handler());
    KeyValueObservation silent(&page, u"silent"_s, recorder.handler());
    KeyValueObservation constant(&page, u"fixed"_s, recorder.handler());
    KeyValueObservation nothing(nullptr, u"margin"_s, recorder.handler());
    ASSERT_EQ(log.lines().size(), 2);
    EXPECT_TRUE(log.lines()[0].endsWith(u"Page has no property \"margn\" to observe"_s));
    EXPECT_TRUE(log.lines()[1].startsWith(u"Property \"silent\" of "_s));
    EXPECT_TRUE(recorder.changes.empty());
}

#include "keyvalue_test.moc"
