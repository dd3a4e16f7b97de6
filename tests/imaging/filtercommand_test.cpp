// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging.h>

#include <support/printers.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

/// A folder with two pictures and a file that is cut off, in which the command runs.
class FilterCommand : public testing::Test
{
protected:
    void SetUp() override
    {
        QImage image(64, 48, QImage::Format_RGB32);
        image.fill(QColor(200, 100, 50));
        ASSERT_TRUE(image.save(path(u"one.png"_s)) && image.save(path(u"two.png"_s)));
        QFile whole(path(u"one.png"_s)), part(path(u"broken.png"_s));
        ASSERT_TRUE(whole.open(QIODevice::ReadOnly) && part.open(QIODevice::WriteOnly));
        part.write(whole.readAll().chopped(40));
        ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"out"_s));
    }

    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

    /// \return the exit code, or -1 when it did not end by itself
    int run(const QStringList &arguments)
    {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.start(QStringLiteral(FILTER_COMMAND), arguments);
        const bool ended = process.waitForFinished(60'000) && process.exitStatus() == QProcess::NormalExit;
        m_errors = QString::fromUtf8(process.readAllStandardError());
        m_output = QString::fromUtf8(process.readAllStandardOutput());
        return ended ? process.exitCode() : -1;
    }

    [[nodiscard]] QColor colorOf(const QString &name) const { return QImage(path(name)).pixelColor(20, 20); }

    QTemporaryDir m_folder;
    QString m_errors, m_output;
};

} // namespace

TEST_F(FilterCommand, AppliesChainsToFiles)
{
    const QStringList invert{u"--filter"_s, u"CIColorInvert"_s};
    EXPECT_EQ(run(invert + QStringList{u"one.png"_s, u"-o"_s, u"new.png"_s}), 0) << m_errors.toStdString();
    EXPECT_EQ(colorOf(u"new.png"_s), QColor(55, 155, 205));
    EXPECT_EQ(m_errors, u""_s);

    EXPECT_EQ(run(invert + invert + QStringList{u"one.png"_s, u"two.png"_s, u"--output"_s, u"out"_s}), 0);
    EXPECT_EQ(colorOf(u"out/two.png"_s), QColor(200, 100, 50));

    EXPECT_EQ(run({u"-f"_s, u"CIFalseColor:inputColor0=#102030,inputColor1=#102030"_s, u"--save-chain"_s, u"c.txt"_s}),
              0);
    EXPECT_EQ(run({u"--chain"_s, u"c.txt"_s, u"-f"_s, u"CIMultiplyBlendMode:inputBackgroundImage=one.png"_s,
                   u"one.png"_s, u"-o"_s, u"new.png"_s}),
              0)
        << m_errors.toStdString();
    EXPECT_EQ(colorOf(u"new.png"_s),
              QColor(qRound(16 * 200 / 255.0), qRound(32 * 100 / 255.0), qRound(48 * 50 / 255.0)));
}

TEST_F(FilterCommand, ABrokenFileDoesNotKeepTheOthers)
{
    EXPECT_EQ(run({u"-f"_s, u"CIColorInvert"_s, u"broken.png"_s, u"missing.png"_s, u"one.png"_s, u"-o"_s, u"out"_s}),
              1);
    EXPECT_EQ(QDir(path(u"out"_s)).entryList(QDir::Files), QStringList(u"one.png"_s));
    EXPECT_EQ(m_errors.count(u"dravelin-filter: "_s), 2) << m_errors.toStdString();
    EXPECT_TRUE(m_errors.contains(u"broken.png cannot be read: "_s));
    EXPECT_TRUE(m_errors.contains(u"missing.png cannot be read: "_s));
}

TEST_F(FilterCommand, SaysWhatIsWrong)
{
    const auto arguments = [](const char *text) { return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts); };
    const std::pair<const char *, const char *> rows[] = {
        {"one.png -o new.png", "no --filter"},
        {"-f CIUnknown one.png -o new.png", "no filter \"CIUnknown\""},
        {"-f CISepiaTone:inputRadius=1 one.png -o new.png", "no input \"inputRadius\"; it has inputIntensity"},
        {"-f CISepiaTone:inputIntensity=x one.png -o new.png", "\"x\" is no number"},
        {"-f CISepiaTone:inputIntensity one.png -o new.png", "INPUT=VALUE"},
        {"-f CIFalseColor:inputColor0=x one.png -o new.png", "\"x\" is no colour"},
        {"-f CIHueBlendMode:inputBackgroundImage=broken.png one.png -o new.png", "broken.png cannot be read"},
        {"-c one.png one.png -o new.png", "holds no chain"},
        {"-c missing one.png -o new.png", "missing cannot be read"},
        {"-f CIColorInvert -o new.png", "no image"},
        {"-f CIColorInvert one.png", "no --output"},
        {"-f CIColorInvert one.png two.png -o new.png", "is no folder"},
        {"-f CIColorInvert one.png -o gone/", "is no folder"},
        {"-f CIColorInvert one.png ./one.png -o out", "written twice"},
        {"-f CIColorInvert one.png -o .", "is to be read"},
        {"-f CIColorInvert one.png -o new.xyz", "cannot be written"},
        {"-f CIColorInvert one.png -o new.png -q 101", "from 0 to 100"},
        {"--nothing", "nothing"},
    };
    for (const auto &[text, expected] : rows) {
        EXPECT_EQ(run(arguments(text)), 2) << text;
        EXPECT_TRUE(m_errors.contains(QLatin1String(expected))) << text << ": " << m_errors.toStdString();
    }
    EXPECT_FALSE(QFile::exists(path(u"new.png"_s)));
    EXPECT_EQ(run(arguments("-f CIColorInvert one.png -o gone/new.png")), 1);
    EXPECT_EQ(run({u"--list"_s}), 0);
    EXPECT_TRUE(m_output.contains("CISepiaTone\n    inputIntensity        0 or more, default 1\n"_L1));
}
