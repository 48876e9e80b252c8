// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/FFMediaInfo/ffmediainfo.h"
#include "MediaKits/MediaInfo/mediainfo.h"
#include "MediaKits/MediaProcessor/toolpaths.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <MediaInfoDLL/MediaInfoDLL_Static.h>

namespace {

// Enough rounds for a steady median; a child process costs fifty times a library call.
constexpr int LIBRARY_ROUNDS = 31;
constexpr int CHILD_ROUNDS = 9;

struct Contest
{
    const char *peerName = nullptr;
    const char *readerName = nullptr;
    std::function<bool(const QString &)> peer;
    std::function<bool(const QString &)> reader;
    int rounds = 0;
};

bool readByLibrary(const QString &path)
{
    struct Field
    {
        MediaInfo_stream_C kind;
        const wchar_t *name;
    };
    const Field fields[] = {
        {MediaInfo_Stream_General, L"FileSize"},    {MediaInfo_Stream_General, L"Duration"},
        {MediaInfo_Stream_General, L"StreamCount"}, {MediaInfo_Stream_Video, L"StreamCount"},
        {MediaInfo_Stream_Audio, L"StreamCount"},   {MediaInfo_Stream_Audio, L"Format"},
        {MediaInfo_Stream_Audio, L"Channel(s)"},    {MediaInfo_Stream_Audio, L"SamplingRate"},
        {MediaInfo_Stream_Audio, L"BitRate"},       {MediaInfo_Stream_Video, L"Format"},
        {MediaInfo_Stream_Video, L"BitRate"},       {MediaInfo_Stream_Video, L"FrameRate"},
        {MediaInfo_Stream_Video, L"Width"},         {MediaInfo_Stream_Video, L"Height"},
        {MediaInfo_Stream_Video, L"Rotation"}};
    void *handle = MediaInfo_New();
    const bool opened = MediaInfo_Open(handle, path.toStdWString().c_str()) != 0;
    for (const Field &field : fields)
        MediaInfo_Get(handle, field.kind, 0, field.name, MediaInfo_Info_Text, MediaInfo_Info_Name);
    MediaInfo_Delete(handle);
    return opened;
}

bool readByChild(const QString &path)
{
    QProcess process;
    process.start(ffprobePath(), {QStringLiteral("-v"), QStringLiteral("quiet"),
                                  QStringLiteral("-show_format"), QStringLiteral("-show_streams"),
                                  QStringLiteral("-print_format"), QStringLiteral("json"), path});
    return process.waitForFinished() && process.exitCode() == 0 &&
           !process.readAllStandardOutput().isEmpty();
}

bool run(MediaInfoBase *reader)
{
    QEventLoop loop;
    bool ended = false;
    const auto end = [&] {
        ended = true;
        loop.quit();
    };
    QObject::connect(reader, &MediaInfoBase::got, &loop, end);
    QObject::connect(reader, &MediaInfoBase::error, &loop, end);
    reader->start();
    if (!ended)
        loop.exec();
    return !reader->mediaInfo().isNull();
}

bool readByFactory(const QString &path)
{
    QObject owner;
    return run(createMediaInfo(QFileInfo(path).suffix().toUpper(), path, &owner));
}

bool readByFFMediaInfo(const QString &path)
{
    QObject owner;
    return run(new FFMediaInfo(path, &owner));
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Peer and reader take turns, so that a busy machine slows both alike.
bool compete(const Contest &contest, const QStringList &files)
{
    double peerSum = 0;
    double readerSum = 0;
    std::printf("%-32s %12s %12s %7s\n", "file", contest.peerName, contest.readerName, "ratio");
    for (const QString &file : files) {
        std::vector<double> peerMs;
        std::vector<double> readerMs;
        for (int round = 0; round < contest.rounds; ++round) {
            QElapsedTimer timer;
            timer.start();
            const bool peerRead = contest.peer(file);
            peerMs.push_back(double(timer.nsecsElapsed()) / 1e6);
            timer.start();
            const bool readerRead = contest.reader(file);
            readerMs.push_back(double(timer.nsecsElapsed()) / 1e6);
            if (!peerRead || !readerRead) {
                std::fprintf(stderr, "cannot read %s\n", qPrintable(file));
                return false;
            }
        }
        const double peer = median(peerMs);
        const double reader = median(readerMs);
        peerSum += peer;
        readerSum += reader;
        std::printf("%-32s %9.2f ms %9.2f ms %7.3f\n", qPrintable(QFileInfo(file).fileName()), peer,
                    reader, reader / peer);
    }
    std::printf("%-32s %9.2f ms %9.2f ms %7.3f\n\n", "mean of all files", peerSum / files.size(),
                readerSum / files.size(), readerSum / peerSum);
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList files = QCoreApplication::arguments().mid(1);
    if (files.isEmpty()) {
        std::fputs("usage: bench_probe FILE...\n", stderr);
        return 2;
    }
    const Contest contests[] = {
        {"MediaInfo", "our reader", readByLibrary, readByFactory, LIBRARY_ROUNDS},
        {"ffprobe", "our reader", readByChild, readByFFMediaInfo, CHILD_ROUNDS}};
    const bool done =
        std::all_of(std::begin(contests), std::end(contests),
                    [&files](const Contest &contest) { return compete(contest, files); });
    return done ? 0 : 1;
}
