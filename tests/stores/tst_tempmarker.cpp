// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/removedir.h"
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "platform/executable.h"
#include "platform/openfolder.h"
#include "platform/utf8locale.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QtTest>

#include <chrono>
#include <cstdio>
#include <filesystem>

#include <unistd.h>

namespace {
void makeOld(const QString &folder, int minutes = 1)
{
    const std::filesystem::path path(QFile::encodeName(folder).toStdString());
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() -
                                               std::chrono::minutes(minutes));
}

QDir notesDir()
{
    return QDir(dataDir() + "/TempMarkers"_s);
}

QStringList notedMarkers()
{
    QStringList markers;
    for (const QFileInfo &info : notesDir().entryInfoList(QDir::Files)) {
        QFile note(info.filePath());
        if (note.open(QIODevice::ReadOnly))
            markers += QString::fromUtf8(note.readAll());
    }
    return markers;
}

// Another process that runs runHelper().
class Helper
{
public:
    Helper(const QString &output, const char *jobs)
    {
        m_process.start(executablePath(), {"helper"_s, output, QLatin1String(jobs)});
        QCOMPARE(nextLine(&m_process), QByteArray("ready"));
    }
    bool kill()
    {
        m_process.kill();
        return m_process.waitForFinished();
    }
    bool quit()
    {
        m_process.closeWriteChannel();
        return m_process.waitForFinished();
    }

private:
    QProcess m_process;
};
} // namespace

class TstTempMarker : public QObject
{
    Q_OBJECT

private slots:
    void exitRemovesItsOwn()
    {
        const QTemporaryDir dir;
        const QString output = dir.filePath("输出/deep"_s);
        const QString marker = tempMarkerPath(output);
        Helper stays(output, "a,unclaimed");
        Helper leaves(output, "b");
        writeTestFile(marker + "/b/part.mp4"_s);
        writeTestFile(marker + "/loose.txt"_s);
        makeOld(marker + "/a"_s);
        QVERIFY(leaves.quit());
        QVERIFY(QFile::exists(marker + "/a"_s));
        QVERIFY(QFile::exists(marker + "/unclaimed"_s));
        QVERIFY(!QFile::exists(marker + "/b"_s));
        QCOMPARE(notedMarkers(), QStringList(marker));
        QVERIFY(stays.quit());
        QVERIFY(!QFile::exists(marker));
        QVERIFY(QFile::exists(output));
        QVERIFY(notedMarkers().isEmpty());
    }

    void startSweepsAfterCrash()
    {
        const QTemporaryDir dir;
        const QString crashed = dir.filePath("crashed"_s);
        const QString vanished = dir.filePath("vanished"_s);
        const QString used = dir.filePath("used"_s);
        // Notes that the program would not have written so.
        const QString misnamed = tempMarkerPath(dir.path());
        const QString noMarker = dir.filePath("films"_s);
        const auto hash = QCryptographicHash::hash(noMarker.toUtf8(), QCryptographicHash::Sha1);
        writeTestFile(notesDir().filePath("0123"_s), misnamed.toUtf8());
        writeTestFile(notesDir().filePath(QString::fromLatin1(hash.toHex())), noMarker.toUtf8());
        for (const QString &folder : {misnamed, noMarker})
            QVERIFY(QDir().mkpath(folder + "/a"_s));
        Helper first(crashed, "a");
        Helper second(vanished, "b");
        Helper alive(used, "a");
        QVERIFY(first.kill() && second.kill());
        QVERIFY(removeDirRecursively(tempMarkerPath(vanished)));
        sweepStaleMarkers();
        QVERIFY(!QFile::exists(tempMarkerPath(crashed)));
        for (const QString &folder : {tempMarkerPath(used), misnamed, noMarker})
            QVERIFY(QFile::exists(folder + "/a"_s));
        QCOMPARE(notedMarkers(), QStringList(tempMarkerPath(used)));
        QVERIFY(alive.quit());
    }

    void nextUseRemovesLeftovers()
    {
        const QTemporaryDir dir;
        const QString marker = tempMarkerPath(dir.path());
        const QString precious = dir.filePath("precious"_s);
        QVERIFY(QDir().mkpath(precious));
        Helper alive(dir.path(), "alive");
        Helper dead(dir.path(), "old,young");
        QVERIFY(QFile::link(precious, marker + "/old/link"_s));
        QVERIFY(dead.kill());
        makeOld(marker + "/old"_s);
        makeOld(marker + "/alive"_s);

        QCOMPARE(createTempMarkerDir(dir.path()), marker);
        QCOMPARE(entriesOf(marker), QStringList({"alive"_s, "young"_s}));
        QVERIFY(alive.quit());
        QVERIFY(QFile::exists(precious));
    }

    // Whatever stands in the marker's place, or takes it later, isn't used, followed, or cleaned.
    void othersMarkersStay()
    {
        const QTemporaryDir dir;
        const QString theirs = dir.filePath("theirs"_s);
        const QString plain = dir.filePath(tempMarkerName());
        const QString own = plain + userNumber();
        writeTestFile(theirs + "/{a}/precious"_s);
        writeTestFile(theirs + "/loose"_s);
        QVERIFY(QFile::link(theirs, plain));
        QCOMPARE(createTempMarkerDir(dir.path()), own);
        QVERIFY(makeWorkFolder(own + "/{a}"_s) == WorkFolderState::Made);
        QVERIFY(makeWorkFolder(plain + "/{b}"_s) == WorkFolderState::Refused);
        QVERIFY(!QFile::exists(theirs + "/{b}"_s));
        QCOMPARE(int(QFile::permissions(own) & QFile::Permissions(QFlag(0x0077))), 0);

        QVERIFY(QDir().rename(own, dir.filePath("away"_s)));
        QVERIFY(QFile::link(theirs, own));
        QVERIFY(!removeDirRecursively(own + "/{a}"_s));
        QCOMPARE(keepWorkFolder(own + "/{a}"_s), own + "/{a}"_s);
        createTempMarkerDir(dir.path());
        sweepStaleMarkers();
        QVERIFY(makeWorkFolder(newWorkFolderPath(dir.path())) == WorkFolderState::Refused);
        QVERIFY(QFile::exists(theirs + "/{a}/precious"_s) && QFile::exists(theirs + "/loose"_s));
        QVERIFY(QFile::remove(own) && QFile::remove(plain));
        if (QFile::rename(theirs, plain) &&
            ::chown(QFile::encodeName(plain).constData(), 65534, 65534) == 0)
            QCOMPARE(tempMarkerPath(dir.path()), own);
    }

    // The locks of another machine aren't seen here.
    void otherMachinesFoldersStayForADay()
    {
        const QTemporaryDir dir;
        QString folder = newWorkFolderPath(dir.path());
        const int mark = folder.lastIndexOf(u'.') + 1;
        folder.replace(mark, folder.lastIndexOf(u'-') - mark, "0123456789ab"_s);
        const QString recording = folder + recordingFolderEnding();
        for (const QString &path : {folder, recording})
            writeTestFile(path + "/convert.mp4"_s);
        makeOld(folder);
        createTempMarkerDir(dir.path());
        QVERIFY(QFile::exists(folder));
        QCOMPARE(recordingFolders(), QStringList());
        for (const QString &path : {folder, recording}) {
            makeOld(path + "/convert.mp4"_s, 24 * 60 + 1);
            makeOld(path, 24 * 60 + 1);
        }
        createTempMarkerDir(dir.path());
        QVERIFY(!QFile::exists(folder));
        QCOMPARE(recordingFolders(), QStringList(recording));
    }

    void claimsAreExclusive()
    {
        const QTemporaryDir dir;
        const QString folder = tempMarkerPath(dir.path()) + "/a"_s;
        QVERIFY(!claimWorkFolder(folder));
        Helper owner(dir.path(), "a");
        QVERIFY(!claimWorkFolder(folder));
        QVERIFY(owner.kill());
        QVERIFY(claimWorkFolder(folder));
        QVERIFY(claimWorkFolder(folder));
        makeOld(folder);
        createTempMarkerDir(dir.path());
        QVERIFY(QFile::exists(folder));
        releaseWorkFolder(folder);
        createTempMarkerDir(dir.path());
        QVERIFY(!QFile::exists(folder));
    }
};

// Makes and claims a comma-separated list of work folders, then waits for the end of its input.
static int runHelper(const QString &output, const QStringList &names)
{
    bool ok = createTempMarkerDir(output) == tempMarkerPath(output);
    for (const QString &name : names) {
        const QString folder = tempMarkerPath(output) + u'/' + name;
        ok = QDir().mkpath(folder) && ok;
        ok = (name == "unclaimed"_s || claimWorkFolder(folder)) && ok;
    }
    std::printf("%s\n", ok ? "ready" : "failed");
    std::fflush(stdout);
    std::getchar();
    return 0;
}

int main(int argc, char *argv[])
{
    ensureUtf8Locale();
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "helper"_s)
        return runHelper(arguments.value(2), arguments.value(3).split(u','));
    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
    TstTempMarker test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_tempmarker.moc"
