// SPDX-License-Identifier: MIT
// Damaged media files: the tool that reads them lives on, and answers each within its limit.
#include "fuzz/fuzz.h"
#include "MediaKits/MediaInfo/Facts/factsstream.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QDataStream>
#include <QProcess>
#include <QtTest>

namespace {

// The tool gives a file 5 s; the machine may be busy.
constexpr int patienceMs = 20000;

QByteArray answerOf(QProcess &reader, const QByteArray &request)
{
    QDataStream stream(&reader);
    stream << request;
    QByteArray answer;
    do {
        stream.startTransaction();
        stream >> answer;
    } while (!stream.commitTransaction() && reader.waitForReadyRead(patienceMs));
    return answer;
}

} // namespace

class FuzzMedia : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        ClipPlan plan;
        plan.width = 64;
        plan.height = 48;
        for (const QString &suffix : {"mp4"_s, "mkv"_s, "avi"_s, "flv"_s, "webm"_s, "ts"_s, "wmv"_s,
                                      "mpg"_s, "ogg"_s, "mp3"_s, "wav"_s, "w64"_s, "m4a"_s, "gif"_s,
                                      "flac"_s, "aac"_s, "3gp"_s, "rm"_s, "mxf"_s}) {
            const QString path = m_dir.filePath("clip."_s + suffix);
            const ToolRun run =
                runFfmpeg("-f lavfi -i testsrc2=d=0.3:s=128x96 -f lavfi -i sine=d=0.3 "
                          "-ar 48000 -ac 1 -shortest @"_s,
                          {path});
            if (run.exitCode == 0)
                m_clips += path;
        }
        QVERIFY(m_clips.size() > 12);
    }

    void damagedFiles()
    {
        QProcess reader;
        reader.start(builtProgram("module/mediainfo/mediareader"_s), QStringList());
        QVERIFY(reader.waitForStarted());
        int outcomes[int(ReadOutcome::Failed) + 1] = {};
        Fuzz fuzz("media", 5.0);
        while (fuzz.goesOn()) {
            const QString clip = fuzz.oneOf(m_clips);
            const QString path = m_dir.filePath("x."_s + QFileInfo(clip).suffix());
            writeTestFile(path, fuzz.take(damaged(fuzz, contentOf(clip))));
            const auto depth = ReadDepth(fuzz.below(2));
            const QByteArray message = answerOf(reader, packed(ReadRequest{path, depth}));
            FUZZ_VERIFY(!message.isEmpty());
            const ReadAnswer answer = unpackedAnswer(message);
            ++outcomes[int(answer.outcome)];
            FUZZ_VERIFY(packed(answer) == message || answer.outcome == ReadOutcome::Read);
        }
        std::printf("media: %d read, %d without media, %d that the library crashed or hung on\n",
                    outcomes[0], outcomes[1], outcomes[2]);
        QCOMPARE(reader.state(), QProcess::Running);
        reader.closeWriteChannel();
        QVERIFY(reader.waitForFinished());
        QCOMPARE(reader.exitCode(), 0);
    }

private:
    // Mostly where the headers stand.
    static QByteArray damaged(Fuzz &fuzz, QByteArray whole)
    {
        constexpr int headBytes = 1024;
        const int length = qMin(headBytes, whole.size());
        const int at = fuzz.oneOf(
            QVector<int>{0, 0, whole.size() - length, fuzz.below(whole.size() - length + 1)});
        return whole.replace(at, length, fuzz.mutated(whole.mid(at, length)));
    }

    QTemporaryDir m_dir;
    QStringList m_clips;
};

QTEST_GUILESS_MAIN(FuzzMedia)
#include "tst_fuzzmedia.moc"
