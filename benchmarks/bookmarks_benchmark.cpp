// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/bookmarks.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <benchmark/benchmark.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

// A file in its place, against asking the file system about the same path.

namespace {

class OneFile
{
public:
    explicit OneFile(benchmark::State &state)
    {
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly))
            state.SkipWithError("no temporary file");
    }

    [[nodiscard]] QByteArray path() const { return QFile::encodeName(m_path); }
    [[nodiscard]] QUrl url() const { return QUrl::fromLocalFile(m_path); }

private:
    QTemporaryDir m_directory;
    QString m_path = m_directory.filePath(u"plan.txt"_s);
};

void createOurs(benchmark::State &state)
{
    const OneFile file(state);
    const auto service = dravelin::BookmarkService::current();
    const QUrl url = file.url();
    constexpr auto options = dravelin::BookmarkService::NSURLBookmarkCreationWithSecurityScope;
    for (auto _ : state)
        benchmark::DoNotOptimize(service->create(url, options));
}

void resolveOurs(benchmark::State &state)
{
    const OneFile file(state);
    const auto service = dravelin::BookmarkService::current();
    const QByteArray bookmark = service->create(file.url());
    bool stale = false;
    for (auto _ : state)
        benchmark::DoNotOptimize(service->resolve(bookmark, 0, &stale));
    if (stale)
        state.SkipWithError("the file has moved");
}

void askTheFileSystem(benchmark::State &state)
{
    const OneFile file(state);
    const QByteArray path = file.path();
    struct stat status;
    for (auto _ : state)
        benchmark::DoNotOptimize(::stat(path.constData(), &status));
}

} // namespace

BENCHMARK(createOurs)->Name("create/ours");
BENCHMARK(askTheFileSystem)->Name("create/stat");
BENCHMARK(resolveOurs)->Name("resolve/ours");
BENCHMARK(askTheFileSystem)->Name("resolve/stat");
