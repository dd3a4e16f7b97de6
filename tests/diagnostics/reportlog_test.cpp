// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/plainname.h>
#include <platform/reportlog.h>

#include <QtCore/QByteArrayList>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using dravelin::appendPlainName;
using dravelin::LineBuffer;
using dravelin::ReportLog;

namespace {

/// Stands in for the system's log daemon.
class Listener
{
public:
    explicit Listener(const QByteArray &path) : m_socket(::socket(AF_UNIX, SOCK_DGRAM, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
        EXPECT_EQ(::bind(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    }
    ~Listener() { ::close(m_socket); }
    Q_DISABLE_COPY_MOVE(Listener)

    [[nodiscard]] QByteArray next() const
    {
        QByteArray message(8192, 0);
        message.resize(qMax<qsizetype>(0, ::recv(m_socket, message.data(), size_t(message.size()), MSG_DONTWAIT)));
        return message;
    }

private:
    int m_socket;
};

std::string plainName(const char *name)
{
    LineBuffer line;
    appendPlainName(line, name);
    return std::string(line.view());
}

} // namespace

TEST(ReportLog, WritesLinesToStandardErrorAndTheSystemLog)
{
    const QTemporaryDir directory;
    const QByteArray path = directory.filePath(QStringLiteral("syslog")).toUtf8();
    const Listener listener(path);
    ReportLog::prepare("/nonexistent/journal", path.constData());
    const std::string longLine(5000, 'x');
    testing::internal::CaptureStderr();
    ReportLog log;
    log.writeLine("Signal SIGSEGV:");
    log.writeLine("");
    log.writeLine(longLine);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Signal SIGSEGV:\n\n" + longLine.substr(0, 4000) + '\n' + longLine.substr(4000) + '\n');
    const QByteArray first = listener.next();
    EXPECT_TRUE(first.startsWith("<10>diagnostics_tes")) << first.toStdString();
    EXPECT_TRUE(first.endsWith("]: Signal SIGSEGV:\n")) << first.toStdString();
}

TEST(PlainName, ReadsNamesWithoutTheHeap)
{
    const std::pair<const char *, const char *> rows[] = {
        {"main", "main"},
        {"_Z5crashv", "crash"},
        {"_ZL5crash5Cause", "crash"},
        {"_ZN3app6Editor4saveERK7QString", "app::Editor::save"},
        {"_ZNK3app6Editor4nameEv", "app::Editor::name"},
        {"_ZN12_GLOBAL__N_1L4sinkEi", "(anonymous namespace)::sink"},
        {"_ZSt9terminatev", "std::terminate"},
        {"_ZN3appplERKNS_5PointE", "_ZN3appplERKNS_5PointE"}, // an operator
        {"_Z3maxIiET_S0_S0_", "_Z3maxIiET_S0_S0_"},           // a template
        {"_Z99999999999999999999x", "_Z99999999999999999999x"},
        {"_ZN9shortE", "_ZN9shortE"},
        {"_ZN", "_ZN"},
        {"_Z", "_Z"},
        {"", ""},
    };
    for (const auto &[name, plain] : rows)
        EXPECT_EQ(plainName(name), plain);
}
