// SPDX-License-Identifier: MIT
// Sources and folders that go wrong, on the real tools: each ends in a finished file or in a
// message that names file and cause; the source stays as it was, and nothing else is left.
#include "clirun.h"
#include "support/casename.h"
#include "support/mediaprobe.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QtTest>

#include <unistd.h>

namespace {

QString message(const QJsonObject &record)
{
    return record["message"_s].toString();
}

QString state(const QJsonObject &record)
{
    return record["state"_s].toString();
}

} // namespace

// The command line on a system that fails.
static QJsonObject convertOn(const QString &system, const QString &setting, const QString &file,
                             const QString &outDir)
{
    const ToolRun run =
        runCli({"convert"_s, file, "--preset"_s, "1003005"_s, "--out"_s, outDir, "--json"_s},
               {"LD_PRELOAD="_s + builtProgram(system), setting,
                "ASAN_OPTIONS=verify_asan_link_order=0"_s});
    const QList<QJsonObject> records = jobRecords(run);
    return records.size() == 1 ? records.first() : QJsonObject();
}

// The command line on a system whose file system lacks ways to rename.
static QJsonObject convertWithoutRename(const QString &file, const QString &outDir,
                                        const QString &mode)
{
    return convertOn("norename.so"_s, "NORENAME="_s + mode, file, outDir);
}

class TestBadInput : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_clip = path("clip.mp4"_s);
        makeClip(m_clip);
        // Whoever the test runs as, others have to be able to read the sources.
        QFile::setPermissions(m_dir.path(), QFile::permissions(m_dir.path()) | QFile::ReadOther |
                                                QFile::ExeOther);
    }

    void unusableSources()
    {
        const auto check = [&](const char *caseName, const QString &file, const QString &cause) {
            const CaseName inCase(caseName);
            const QTemporaryDir out;
            const QJsonObject record = convertOne(file, 1003005, out.path());
            QCOMPARE(state(record), "ERROR"_s);
            QVERIFY2(message(record).startsWith(file), qPrintable(message(record)));
            QVERIFY2(message(record).contains(cause), qPrintable(message(record)));
            QVERIFY(QDir(out.path()).exists());
            QVERIFY(entriesOf(out.path()).isEmpty());
        };
        const QString folder = path("folder.mp4"_s);
        QDir().mkpath(folder);
        const QString empty = path("empty.mp4"_s);
        writeTestFile(empty, {});
        const QString text = path("text.mp4"_s);
        writeTestFile(text, "These are words.\n");
        check("missing", path("missing.mp4"_s), "不存在"_s);
        check("folder", folder, "文件夹"_s);
        check("empty", empty, "为空"_s);
        check("text", text, "不是媒体文件"_s);
        check("device", "/dev/zero"_s, "不是普通文件"_s);
        // What is left of a name that isn't in UTF-8.
        check("undecodable", path("\uFFFD.mp4"_s), "UTF-8"_s);
    }

    void truncatedSource()
    {
        // ffmpeg writes the index last: without it the file is unreadable.
        const QString file = path("half.mp4"_s);
        const QByteArray whole = clipBytes();
        writeTestFile(file, whole.left(whole.size() / 2));
        const QTemporaryDir out;
        const QJsonObject record = convertOne(file, 1003005, out.path());
        QCOMPARE(state(record), "ERROR"_s);
        QVERIFY2(message(record).contains("文件不完整"_s), qPrintable(message(record)));
        QVERIFY(!record["report"_s].toArray().isEmpty());
        QVERIFY(entriesOf(out.path()).isEmpty());
    }

    // A stick or a share that fails in the middle: ffmpeg takes it for the end, and ends well.
    void unreadableSource()
    {
        for (const QString &suffix : {"avi"_s, "mkv"_s, "ts"_s}) {
            const QString file = path("failing."_s + suffix);
            makeMedia("-f lavfi -i testsrc2=d=8:s=640x480 -f lavfi -i sine=d=8 @"_s, {file});
            const QTemporaryDir out;
            const QJsonObject record =
                convertOn("readerror.so"_s, "READERROR=."_s + suffix, file, out.path());
            QCOMPARE(state(record), "ERROR"_s);
            QVERIFY2(message(record).contains("读取出错"_s), qPrintable(message(record)));
            QVERIFY(entriesOf(out.path()).isEmpty());
        }
    }

    void oddNames_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"two blanks  in it",
                                 "it's",
                                 "\"quoted\"",
                                 "\"",
                                 "a\"b'c",
                                 "%d",
                                 "100%1 %2 %s",
                                 "-y",
                                 "-",
                                 "new\nline",
                                 "汉字与空格 文件",
                                 "🎬🎉",
                                 "$(touch x)`id`",
                                 "a;b|c&d",
                                 "back\\slash",
                                 "file:name",
                                 "concat:a|b",
                                 "[v]=x,y",
                                 "trailing ",
                                 "tab\there",
                                 ".hidden",
                                 "a.b.c"}) {
            QTest::newRow(name) << QString::fromUtf8(name);
        }
    }

    void oddNames()
    {
        QFETCH(QString, name);
        const QTemporaryDir in;
        // The folder's name is odd as well, as source folder and as output folder.
        const QString folder = in.filePath(u'f' + name);
        QVERIFY(QDir().mkpath(folder));
        const QString source = folder + u'/' + name + ".mp4"_s;
        QVERIFY(QFile::copy(m_clip, source));
        for (const int preset : {1003005, 1200002}) {
            const QJsonObject record = convertOne(source, preset, folder);
            QVERIFY2(state(record) == "FINISHED"_s, qPrintable(message(record)));
            const QString suffix = preset == 1200002 ? ".mp3"_s : "(2).mp4"_s;
            QCOMPARE(record["output"_s].toString(), folder + u'/' + name + suffix);
            QVERIFY(probeMedia(record["output"_s].toString()).isMedia());
        }
        QCOMPARE(entriesOf(folder).size(), 3);
        QVERIFY(contentOf(source) == clipBytes());
        QCOMPARE(entriesOf(in.path()).size(), 1);
    }

    void longNames()
    {
        const QTemporaryDir out;
        // 250 bytes and ".mp4" just fit; the numbered name of the second doesn't.
        const QString name = QString(83, QChar(0x6c49)) + u'x';
        QCOMPARE(name.toUtf8().size(), 250);
        const QStringList named{"--name"_s, name};
        const QJsonObject first = convertOne(m_clip, 1003005, out.path(), named);
        QCOMPARE(state(first), "FINISHED"_s);
        const QJsonObject second = convertOne(m_clip, 1003005, out.path(), named);
        QCOMPARE(state(second), "ERROR"_s);
        // Said before the work, not after it.
        QVERIFY2(message(second).endsWith("输出文件名过长"_s), qPrintable(message(second)));
        const QJsonObject longer =
            convertOne(m_clip, 1003005, out.path(), {"--name"_s, name + name});
        QVERIFY2(message(longer).contains("文件名过长"_s), qPrintable(message(longer)));
        QCOMPARE(entriesOf(out.path()), QStringList(name + ".mp4"_s));
    }

    void foldersWithoutRename()
    {
        const auto check = [&](const char *caseName, const QString &mode) {
            const CaseName inCase(caseName);
            const QTemporaryDir out;
            const QString mine = out.filePath("clip.mp4"_s);
            writeTestFile(mine, "mine");
            const QJsonObject record = convertWithoutRename(m_clip, out.path(), mode);
            QCOMPARE(record["output"_s].toString(), out.filePath("clip(2).mp4"_s));
            QCOMPARE(contentOf(mine), QByteArray("mine"));
            const ProbedFile result = probeMedia(out.filePath("clip(2).mp4"_s));
            QCOMPARE(result.video["width"_s].toInt(), 640);
            QCOMPARE(entriesOf(out.path()), (QStringList{"clip(2).mp4"_s, "clip.mp4"_s}));
        };
        check("renames replace", "careless"_s);
        check("no renames", "none"_s);
    }

    void keepsWhatCannotBeMoved()
    {
        const QTemporaryDir out;
        const QJsonObject record = convertWithoutRename(m_clip, out.path(), "refused"_s);
        QCOMPARE(state(record), "ERROR"_s);
        const QString kept = message(record).section("成品保留在："_s, 1);
        QVERIFY2(kept.startsWith(out.path()), qPrintable(message(record)));
        // Also after the program's end, and after the next one's start.
        const QJsonObject next = convertOne(m_clip, 1003005, out.path());
        QCOMPARE(state(next), "FINISHED"_s);
        QCOMPARE(probeMedia(kept).video["width"_s].toInt(), 640);
    }

    void sourceIsNeverTouched()
    {
        const QTemporaryDir folder;
        const QString real = folder.filePath("real.mp4"_s);
        const QString link = folder.filePath("link.mp4"_s);
        QVERIFY(QFile::copy(m_clip, real));
        QVERIFY(QFile::link(real, link));
        const QDateTime before = QFileInfo(real).lastModified();
        QCOMPARE(convertOne(real, 1003005, folder.path())["output"_s].toString(),
                 folder.filePath("real(2).mp4"_s));
        QCOMPARE(convertOne(link, 1003005, folder.path())["output"_s].toString(),
                 folder.filePath("link(2).mp4"_s));
        // A link that leads nowhere keeps its name too.
        const QString dangling = folder.filePath("away.mp4"_s);
        QVERIFY(QFile::link(folder.filePath("nowhere.mp4"_s), dangling));
        QCOMPARE(
            convertOne(real, 1003005, folder.path(), {"--name"_s, "away"_s})["output"_s].toString(),
            folder.filePath("away(2).mp4"_s));
        QVERIFY(!QFileInfo::exists(folder.filePath("nowhere.mp4"_s)));
        QVERIFY(contentOf(real) == clipBytes());
        QCOMPARE(QFileInfo(real).lastModified(), before);
        QVERIFY(QFileInfo(link).isSymLink());
    }

    void noPermission()
    {
        if (geteuid() != 0)
            QSKIP("needs root, to become somebody else");
        const QTemporaryDir work;
        QVERIFY(QFile::setPermissions(work.path(), QFile::permissions(work.path()) |
                                                       QFile::ReadOther | QFile::ExeOther));
        const QString secret = work.filePath("secret.mp4"_s);
        QVERIFY(QFile::copy(m_clip, secret));
        QVERIFY(QFile::setPermissions(secret, QFile::ReadOwner | QFile::WriteOwner));
        const QString home = work.filePath("home"_s);
        QVERIFY(QDir().mkpath(home));
        QCOMPARE(chown(QFile::encodeName(home).constData(), 65534, 65534), 0);
        const auto convertAsNobody = [&](const QString &file, const QString &out) {
            const ToolRun run = runTool("setpriv"_s,
                                        {"--reuid=65534"_s, "--regid=65534"_s, "--clear-groups"_s,
                                         builtProgram("morvane-cli"_s), "convert"_s, file,
                                         "--preset"_s, "1200002"_s, "--out"_s, out, "--json"_s},
                                        {"XDG_DATA_HOME="_s + home, "XDG_CACHE_HOME="_s + home});
            return jobRecords(run).value(0);
        };
        const QJsonObject usable = convertAsNobody(m_clip, home + "/out"_s);
        if (usable.isEmpty())
            QSKIP("the build lies where others can't go");
        QVERIFY2(state(usable) == "FINISHED"_s, qPrintable(message(usable)));

        const QJsonObject unreadable = convertAsNobody(secret, home);
        QVERIFY2(message(unreadable).contains("没有读取权限"_s), qPrintable(message(unreadable)));
        const QJsonObject unwritable = convertAsNobody(m_clip, work.path());
        QVERIFY2(message(unwritable).contains("无法写入"_s), qPrintable(message(unwritable)));
        const QJsonObject unmade = convertAsNobody(m_clip, work.filePath("new/deep"_s));
        QVERIFY2(message(unmade).contains("无法在输出目录中创建"_s), qPrintable(message(unmade)));
        QCOMPARE(entriesOf(work.path()), QStringList({"home"_s, "secret.mp4"_s}));
    }

    void outputFolderIsAFile()
    {
        const QTemporaryDir work;
        const QString file = work.filePath("file"_s);
        writeTestFile(file, "mine");
        const QJsonObject record = convertOne(m_clip, 1003005, file);
        QVERIFY2(message(record).contains("不是文件夹"_s), qPrintable(message(record)));
        QCOMPARE(contentOf(file), QByteArray("mine"));
    }

    void fullDisk()
    {
        const QTemporaryDir mount;
        const ToolRun mounted =
            runTool("mount"_s, {"-t"_s, "tmpfs"_s, "-o"_s, "size=64k"_s, "tmpfs"_s, mount.path()});
        if (mounted.exitCode != 0)
            QSKIP("no right to mount a small disk");
        // Half a second of plain stereo samples takes 88 KB.
        const QJsonObject record = convertOne(m_clip, 1205001, mount.path());
        const QStringList left = entriesOf(mount.path());
        runTool("umount"_s, {mount.path()});
        QCOMPARE(state(record), "ERROR"_s);
        QVERIFY2(message(record).contains("磁盘空间不足"_s), qPrintable(message(record)));
        QVERIFY2(left.isEmpty(), qPrintable(left.join(u' ')));
    }

    // What has been finished stays, and nothing else.
    void fullDiskOfPictures()
    {
        const QTemporaryDir mount;
        const ToolRun mounted =
            runTool("mount"_s, {"-t"_s, "tmpfs"_s, "-o"_s, "size=600k"_s, "tmpfs"_s, mount.path()});
        if (mounted.exitCode != 0)
            QSKIP("no right to mount a small disk");
        // Each picture takes 231 KB.
        const ToolRun run = runCli({"shots"_s, m_clip, "--at"_s, "0,0.1,0.2,0.3"_s, "--format"_s,
                                    "bmp"_s, "--out"_s, mount.path(), "--json"_s});
        const QStringList left = entriesOf(mount.path());
        QList<qint64> sizes;
        for (const QString &name : left)
            sizes += QFileInfo(mount.filePath(name)).size();
        runTool("umount"_s, {mount.path()});
        QCOMPARE(run.exitCode, 1);
        const QJsonObject record = jobRecords(run).value(0);
        QVERIFY2(message(record).contains("磁盘空间不足"_s), qPrintable(message(record)));
        const QString name = QFileInfo(m_clip).completeBaseName();
        QCOMPARE(left, (QStringList{name + "_1.bmp"_s, name + "_2.bmp"_s}));
        QVERIFY(sizes[0] > 230000 && sizes[1] == sizes[0]);
    }

    void fileSizeLimit()
    {
        const QTemporaryDir out;
        const ToolRun run =
            runTool("bash"_s,
                    {"-c"_s,
                     "ulimit -c 0; ulimit -f 64; exec \"$0\" convert \"$1\" --preset 1205001 "
                     "--out \"$2\" --json"_s,
                     builtProgram("morvane-cli"_s), m_clip, out.path()},
                    {"XDG_CACHE_HOME="_s + out.filePath("cache"_s)});
        const QJsonObject record = jobRecords(run).value(0);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(state(record), "ERROR"_s);
        QVERIFY2(message(record).startsWith(m_clip), qPrintable(message(record)));
        QCOMPARE(entriesOf(out.path()), QStringList("cache"_s));
    }

private:
    QString path(const QString &name) const { return m_dir.filePath(name); }
    QByteArray clipBytes() const { return contentOf(m_clip); }

    QTemporaryDir m_dir;
    QString m_clip;
};

QTEST_GUILESS_MAIN(TestBadInput)

#include "tst_badinput.moc"
