// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/stackview.h>
#include <dravelin/platform/interfacefile.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtUiTools/QUiLoader>

#include <gtest/gtest.h>

#include <utility>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

/// "x y width height" in eight digits, which tell single-precision numbers of this size apart.
QString text(const QRectF &rect)
{
    QStringList numbers;
    for (const double number : {rect.x(), rect.y(), rect.width(), rect.height()})
        numbers << QString::number(number, 'g', 8);
    return numbers.join(u' ');
}

QString frames(const QWidget *view)
{
    QStringList lines{text(frame(view))};
    for (const QWidget *child : view->findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
        lines << text(frame(child));
    return lines.join(u" | "_s);
}

QString widgetXml(const QString &className, const QSize &size, const QString &content = {})
{
    return uR"(<widget class="%1" name="%1"><property name="geometry"><rect><x>7</x><y>5</y><width>%2</width>
        <height>%3</height></rect></property>%4</widget>)"_s.arg(className)
        .arg(size.width())
        .arg(size.height())
        .arg(content);
}

const QString threeViews =
    widgetXml(u"QWidget"_s, {100, 20}) + widgetXml(u"QLabel"_s, {50, 30}) + widgetXml(u"QWidget"_s, {80, 10});

QString stackXml(const QString &content) { return widgetXml(u"dravelin::VerticalStackView"_s, {300, 100}, content); }

QString property(const QString &name, const QString &value)
{
    return u"<property name=\"%1\">%2</property>"_s.arg(name, value);
}

struct Narrow : VerticalStackView
{
    using VerticalStackView::VerticalStackView;
    void setDefaults() override { setItemSpacing(4); }
};

class StackViewTest : public testing::Test
{
protected:
    /// A form with the content in it.
    [[nodiscard]] QString write(const QString &content) const
    {
        QFile file(m_folder.filePath(u"form.ui"_s));
        const QByteArray bytes =
            uR"(<ui version="4.0"><widget class="QWidget" name="Form">%1</widget></ui>)"_s.arg(content).toUtf8();
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName();
    }
    VerticalStackView *load(const QString &content)
    {
        m_form = loadInterfaceFile(write(content));
        return m_form ? m_form->findChild<VerticalStackView *>() : nullptr;
    }
    static QWidget *addChild(QWidget &view, const QRectF &place)
    {
        auto *child = new QWidget(&view);
        setFrame(child, place);
        return child;
    }

    LogRecorder log;

private:
    QTemporaryDir m_folder;
    std::unique_ptr<QWidget> m_form;
};

} // namespace

TEST_F(StackViewTest, IsArrangedWhenAnInterfaceFileIsLoaded)
{
    const QString spread = property(u"sizeToFit"_s, u"<bool>false</bool>"_s);
    const QString gap = property(u"itemSpacing"_s, u"<double>2.5</double>"_s);
    registerInterfaceClass<Narrow>(u"Narrow"_s);
    struct
    {
        const char *name;
        QString content, expected;
    } const rows[] = {
        {"defaults", threeViews, u"7 5 100 76 | 0 0 100 20 | 0 28 50 30 | 0 66 80 10"_s},
        {"centred", property(u"alignment"_s, u"<number>1</number>"_s) + threeViews,
         u"7 5 100 76 | 0 0 100 20 | 25 28 50 30 | 10 66 80 10"_s},
        {"right", property(u"alignment"_s, u"<number>2</number>"_s) + threeViews,
         u"7 5 100 76 | 0 0 100 20 | 50 28 50 30 | 20 66 80 10"_s},
        {"unknown alignment", property(u"alignment"_s, u"<number>7</number>"_s) + threeViews,
         u"7 5 100 76 | 0 0 100 20 | 0 28 50 30 | 0 66 80 10"_s},
        {"gap with a fraction", gap + threeViews, u"7 5 100 65 | 0 0 100 20 | 0 22.5 50 30 | 0 55 80 10"_s},
        {"spread", spread + threeViews, u"7 5 300 100 | 0 0 100 20 | 0 33.333332 50 30 | 0 76.666664 80 10"_s},
        {"spread, too high", spread + widgetXml(u"QWidget"_s, {310, 90}) + threeViews,
         u"7 5 300 100 | 0 0 310 90 | 0 77.5 100 20 | 0 85 50 30 | 0 102.5 80 10"_s},
        {"spread, wider and centred",
         spread + property(u"alignment"_s, u"<number>1</number>"_s) + widgetXml(u"QWidget"_s, {311, 50}),
         u"7 5 300 100 | -5.5 0 311 50"_s},
        {"defaults of a subclass, and a property",
         widgetXml(u"Narrow"_s, {}, threeViews) + widgetXml(u"Narrow"_s, {}, gap + threeViews),
         u"7 5 100 141 | 0 0 100 68 | 0 76 100 65"_s},
        {"no children", {}, u"7 5 0 -8"_s},
        {"spread, no children", spread, u"7 5 300 100"_s},
        {"children first", stackXml(threeViews) + widgetXml(u"QWidget"_s, {120, 4}),
         u"7 5 120 88 | 0 0 100 76 | 0 84 120 4"_s},
    };
    for (const auto &row : rows) {
        const VerticalStackView *view = load(stackXml(row.content));
        ASSERT_NE(view, nullptr) << row.name;
        EXPECT_EQ(frames(view), row.expected) << row.name;
    }
    EXPECT_EQ(log.lines(), QStringList());
}

TEST_F(StackViewTest, TellsWhatAnInterfaceFileLacks)
{
    EXPECT_EQ(load(u"<widget"_s), nullptr);
    EXPECT_EQ(loadInterfaceFile(u"/missing/form.ui"_s), nullptr);
    EXPECT_EQ(log.take().size(), 2);
    registerInterfaceClass(u"app::Failing"_s, {[](QWidget *) { return nullptr; }, {}});
    for (const QString &name : {u"app::Missing"_s, u"app::Failing"_s}) {
        const VerticalStackView *view = load(stackXml(widgetXml(name, {9, 9}, threeViews) + threeViews));
        ASSERT_NE(view, nullptr);
        EXPECT_EQ(text(frame(view)), u"7 5 100 76"_s);
        EXPECT_TRUE(log.lines().size() == 1 && log.take().constFirst().contains(name));
    }
}

TEST_F(StackViewTest, ArrangesManyChildren)
{
    VerticalStackView view;
    for (int i = 0; i < 10'000; ++i)
        addChild(view, {0, 0, 10, i % 2 ? 30.5 : 2.25});
    QCoreApplication::sendPostedEvents(); // among which Qt would look for those of each child that is deleted
    view.arrangeViews();
    for (int i = 0; i < 10'000; ++i) // all of it is exact in single precision
        ASSERT_EQ(frame(static_cast<QWidget *>(view.children()[i])).y(), i / 2 * 48.75 + i % 2 * 10.25);
    EXPECT_EQ(view.minimumSizeHint(), QSize(10, 243'742));
    view.setItemSpacing(float(qInf()));
    EXPECT_EQ(view.sizeHint(), QSize(10, QWIDGETSIZE_MAX));
}

TEST_F(StackViewTest, LaysOutOnlyWhenAsked)
{
    VerticalStackView view;
    const QSignalSpy spacing(&view, &VerticalStackView::itemSpacingChanged);
    const QSignalSpy fit(&view, &VerticalStackView::sizeToFitChanged);
    const QSignalSpy alignment(&view, &VerticalStackView::alignmentChanged);
    addChild(view, {3, 4, 20, 10});
    addChild(view, {3, 4, 40, 10})->hide();
    const QString before = frames(&view);
    for (int i = 0; i < 2; ++i) {
        view.setItemSpacing(4);
        view.setAlignment(2);
        view.setSizeToFit(false);
    }
    EXPECT_EQ(frames(&view), before);
    EXPECT_EQ(spacing.size() + fit.size() + alignment.size(), 3);
    view.setSizeToFit(true);
    view.arrangeViews();
    EXPECT_EQ(frames(&view), u"0 0 40 24 | 20 0 20 10 | 0 14 40 10"_s);
    view.setDefaults();
    EXPECT_TRUE(view.itemSpacing() == 8 && view.sizeToFit() && view.alignment() == 0);
    EXPECT_EQ(spacing.size() + fit.size() + alignment.size(), 6);
}

TEST_F(StackViewTest, TakesSingleSteps)
{
    VerticalStackView view;
    setFrame(&view, {0, 0, 50.5, 100});
    addChild(view, {0, 0, 10.25, 35.7});
    QWidget *last = addChild(view, {0, 0, 20, 22.9});
    view.setAlignment(1);
    float origin = 25.8F; // chosen so that any other place to round gives something else
    view.moveViewVertically(1, origin, 2.5);
    EXPECT_EQ(origin, 51.2F);
    view.moveViewHorizontally(1);
    EXPECT_EQ(text(frame(last)), u"15.25 25.799999 20 22.9"_s);
    EXPECT_EQ(view.findWidestViewWidth(), 20.0F);
    EXPECT_EQ(view.calculateItemSpacing(), 20.699999F);
    EXPECT_EQ(view.calculateContentHeight(), 66.600006F);
    view.checkSizeToFit();
    EXPECT_EQ(frame(&view).height(), double(66.600006F));
    const QString before = frames(&view);
    EXPECT_EQ(log.take(), QStringList());
    view.moveViewVertically(2, origin, 1);
    view.moveViewHorizontally(-1);
    EXPECT_EQ(log.lines().size(), 2);
    EXPECT_EQ(frames(&view), before);
}

TEST_F(StackViewTest, SurvivesChildrenThatChangeTheList)
{
    QWidget window;
    auto view = std::make_unique<VerticalStackView>(&window);
    struct Meddler : QWidget
    {
        std::function<void()> meddle = [] {};
        using QWidget::QWidget;
        void moveEvent(QMoveEvent *) override
        {
            std::exchange(meddle, [] {})();
        }
    };
    auto *first = new Meddler(view.get());
    first->setGeometry(3, 3, 10, 10);
    const QPointer<QWidget> second = addChild(*view, {0, 0, 10, 10});
    const std::unique_ptr<QWidget> third(addChild(*view, {0, 77, 10, 10}));
    window.show();
    first->meddle = [&] {
        delete second;
        third->setParent(nullptr);
        addChild(*view, {0, 0, 10, 20});
        view->arrangeViews();
    };
    view->arrangeViews();
    EXPECT_FALSE(second);
    EXPECT_EQ(third->y(), 77);
    EXPECT_EQ(frames(view.get()), u"0 0 10 38 | 0 0 10 10 | 0 18 10 20"_s);

    const std::unique_ptr<QWidget> survivor(first);
    first->move(3, 3);
    first->meddle = [&] {
        first->setParent(nullptr);
        view.reset();
    };
    view->arrangeViews();
    EXPECT_FALSE(view);
}

TEST(FrameTest, IsExactUntilTheWidgetIsMovedOrResized)
{
    QWidget parent;
    FlippedView view({1.5, 33.25, 10.25, -8}, &parent);
    EXPECT_EQ(view.geometry(), QRect(2, 33, 10, 0));
    view.move(5, 6);
    EXPECT_EQ(text(frame(&view)), u"5 6 10.25 -8"_s);
    view.resize(10, 9);
    EXPECT_EQ(text(frame(&view)), u"5 6 10 9"_s);
    setFrame(&view, {-0.5, 0.5, 1, 1});
    EXPECT_EQ(view.geometry(), QRect(0, 1, 1, 1));
    view.setMinimumSize(20, 20);
    setFrame(&view, {0.25, 0, 1.5, 30.5});
    EXPECT_EQ(text(frame(&view)), u"0.25 0 20 31"_s);
    setFrame(&view, {qQNaN(), 1e300, 30, qInf()});
    EXPECT_EQ(view.geometry().x(), 0);
    setFrame(nullptr, {1, 2, 3, 4});
    EXPECT_EQ(frame(nullptr), QRectF());
}

#ifdef DESIGNER_PLUGIN
/// Stands for the window of that name in which Qt Designer edits a form.
class QDesignerFormWindowInterface : public QWidget
{
    Q_OBJECT
};

TEST_F(StackViewTest, IsKnownToEveryLoaderThatFindsThePlugin)
{
    QUiLoader loader;
    loader.addPluginPath(QFileInfo(QStringLiteral(DESIGNER_PLUGIN)).path());
    QDesignerFormWindowInterface designer;
    QFile file(write(stackXml(stackXml(threeViews) + widgetXml(u"dravelin::FlippedView"_s, {120, 4}))));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QWidget *edited = loader.load(&file, &designer);
    file.seek(0);
    const std::unique_ptr<QWidget> form(loader.load(&file));
    ASSERT_TRUE(edited && form);
    const auto *view = form->findChild<VerticalStackView *>();
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([view] { return frame(view).width() == 120; }, 30'000));
    EXPECT_EQ(frames(view), u"7 5 120 88 | 0 0 100 76 | 0 84 120 4"_s);
    EXPECT_EQ(frames(edited->findChild<VerticalStackView *>()), u"7 5 300 100 | 7 5 300 100 | 7 5 120 4"_s);
}
#endif

#include "stackview_test.moc"
