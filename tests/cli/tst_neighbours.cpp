// SPDX-License-Identifier: MIT
// Another user of the machine who may write in the output folder, and places where others have put
// something: nothing of the user's is touched by way of it.
#include "clirun.h"
#include "platform/executable.h"
#include "platform/utf8locale.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QtTest>

#include <memory>

#include <unistd.h>

namespace {

constexpr uid_t nobody = 65534;
constexpr int wantedRuns = 3;
constexpr int mostRuns = 20;
const QString marker = "~~MRVN_Temp~~"_s;

// The folder that a work folder lies in has been made by the other one, who then exchanges the work
// folder for a link to the victim's files.
void attackWorkFolder(const QDir &out, const QString &precious)
{
    const QDir theirs(out.filePath(marker));
    for (const QFileInfo &work : theirs.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (!work.isSymLink() && !work.fileName().startsWith(QLatin1String("away")) &&
            QFile::rename(work.filePath(), theirs.filePath("away"_s + work.fileName())))
            QFile::link(precious, work.filePath());
    }
}

// The marker is exchanged for a link to a folder in which the work folder's name, which the list of
// processes tells, is a link to the victim's files.
void attackMarker(const QDir &out, const QString &precious)
{
    static const QRegularExpression form(marker + "[0-9]*/([^/]+)/"_s);
    for (const qint64 pid : processesWith(out.path() + u'/' + marker)) {
        QFile file("/proc/%1/cmdline"_s.arg(pid));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        // Each run at another moment: before the tool opens its file, while it writes, at its end.
        const auto before = out.entryList({"trap*"_s}).size();
        QThread::msleep(ulong(before) * 120);
        const QString work =
            form.match(QString::fromUtf8(file.readAll().replace('\0', ' '))).captured(1);
        for (const QFileInfo &found : out.entryInfoList({marker + u'*'}, QDir::Dirs)) {
            const QString trap = out.filePath("trap"_s + work);
            QDir().mkpath(trap);
            QFile::link(precious, trap + u'/' + work);
            if (!found.isSymLink() && !work.isEmpty() &&
                QFile::rename(found.filePath(), out.filePath("away"_s + work)))
                QFile::link(trap, found.filePath());
        }
    }
}

int attack(const QString &kind, const QDir &out, const QString &precious)
{
    if (::setgid(nobody) != 0 || ::setuid(nobody) != 0 || !out.exists()) {
        std::printf("barred\n");
        return 1;
    }
    if (kind == QLatin1String("workFolder")) {
        const QString theirs = out.filePath(marker);
        QDir().mkpath(theirs);
        QFile::setPermissions(theirs, QFile::Permissions(QFlag(0x7777)));
    }
    std::printf("ready\n");
    std::fflush(stdout);
    while (true)
        (kind == QLatin1String("workFolder") ? attackWorkFolder : attackMarker)(out, precious);
}

} // namespace

class TestNeighbours : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_clip = m_dir.filePath("clip.mp4"_s);
        makeClip(m_clip, {2.0, 640, 360});
        QFile::setPermissions(m_dir.path(), QFile::Permissions(QFlag(0x7755)));
    }

    void init()
    {
        m_out = std::make_unique<QTemporaryDir>(m_dir.filePath("outXXXXXX"_s));
        QFile::setPermissions(m_out->path(), QFile::Permissions(QFlag(0x7777)));
        m_precious = std::make_unique<QTemporaryDir>(m_dir.filePath("preciousXXXXXX"_s));
        QFile::setPermissions(m_precious->path(), QFile::Permissions(QFlag(0x7755)));
        // A whole film, as a result that is moved has to be.
        QVERIFY(QFile::copy(m_clip, m_precious->filePath("convert.mp4"_s)));
    }

    void othersInTheOutputFolder_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("work folder") << "workFolder"_s;
        QTest::newRow("marker") << "marker"_s;
    }

    void othersInTheOutputFolder()
    {
        QFETCH(QString, kind);
        if (::geteuid() != 0)
            QSKIP("only root can be another user");
        QProcess other;
        other.start(executablePath(), {"attack"_s, kind, m_out->path(), m_precious->path()});
        if (nextLine(&other) != "ready")
            QSKIP("the folder for temporary files isn't open to other users");
        const bool isMarker = kind == "marker"_s;
        int attacked = 0;
        for (int run = 0; run < mostRuns && attacked < wantedRuns; ++run) {
            const QJsonObject record = convertOne(m_clip, 1003005, m_out->path());
            QVERIFY(contentOf(m_precious->filePath("convert.mp4"_s)) == contentOf(m_clip));
            const QStringList traces =
                QDir(m_out->path()).entryList({isMarker ? "trap*"_s : "clip*"_s});
            if (isMarker && traces.size() > attacked && record["state"_s].toString() == "ERROR"_s)
                QVERIFY(record["message"_s].toString().contains(m_out->filePath(marker)));
            attacked = traces.size();
            QVERIFY(isMarker || record["state"_s].toString() == "FINISHED"_s);
            for (const QString &link : entriesOf(m_out->path()).filter(marker)) {
                if (isMarker)
                    QFile::remove(m_out->filePath(link));
            }
        }
        QVERIFY2(attacked >= wantedRuns, qPrintable(QString::number(attacked)));
        other.kill();
        other.waitForFinished();
    }

    void bothNamesAreTaken()
    {
        for (const QString &name : {marker, marker + QString::number(::geteuid())})
            QVERIFY(QFile::link(m_precious->path(), m_out->filePath(name)));
        const QJsonObject record = convertOne(m_clip, 1003005, m_out->path());
        QCOMPARE(record["state"_s].toString(), "ERROR"_s);
        QVERIFY(record["message"_s].toString().contains(m_out->filePath(marker)));
        QCOMPARE(entriesOf(m_precious->path()), QStringList("convert.mp4"_s));
    }

    // A stick or a share has no owners to tell the user's folders from others'.
    void worksWithoutOwners()
    {
        const QString share = m_out->filePath("share"_s);
        QVERIFY(QDir().mkpath(share + u'/' + marker + "/old"_s));
        const ToolRun run =
            runCli({"convert"_s, m_clip, "--preset"_s, "1003005"_s, "--out"_s, share, "--json"_s},
                   {"LD_PRELOAD="_s + builtProgram("ownerless.so"_s),
                    "ASAN_OPTIONS=verify_asan_link_order=0"_s});
        QCOMPARE(jobRecords(run).value(0)["state"_s].toString(), "FINISHED"_s);
        QCOMPARE(entriesOf(share), QStringList("clip.mp4"_s));
    }

    void linksForTheProgramsOwnFolders()
    {
        QStringList environment;
        for (const char *name : {"XDG_DATA_HOME", "XDG_CACHE_HOME"})
            environment += QLatin1String(name) + u'=' + m_out->path();
        for (const char *name : {"Data", "Log", "Temp"}) {
            const QString place = m_out->filePath("MorvaneLocal/"_s + QLatin1String(name));
            QVERIFY(QDir().mkpath(m_out->filePath("MorvaneLocal"_s)));
            QVERIFY(QFile::link(m_precious->path(), place));
        }
        const ToolRun run =
            runCli({"convert"_s, m_clip, "--preset"_s, "1003005"_s, "--out"_s, m_out->path()},
                   environment);
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(entriesOf(m_precious->path()), QStringList("convert.mp4"_s));
        for (const char *name : {"Data", "Log"})
            QVERIFY2(run.err.contains(name), run.err.constData());
    }

private:
    QTemporaryDir m_dir;
    QString m_clip;
    std::unique_ptr<QTemporaryDir> m_out;
    std::unique_ptr<QTemporaryDir> m_precious;
};

int main(int argc, char *argv[])
{
    ensureUtf8Locale();
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.value(1) == QLatin1String("attack"))
        return attack(words.value(2), QDir(words.value(3)), words.value(4));
    TestNeighbours test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_neighbours.moc"
