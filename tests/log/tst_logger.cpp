// SPDX-License-Identifier: MIT
#include "MediaKits/Logger/logger.h"

#include "platform/executable.h"
#include "platform/utf8locale.h"
#include "support/testfile.h"
#include "support/testmedia.h"
#include "support/toolrun.h"

#include <QtTest>

class TstLogger : public QObject
{
    Q_OBJECT

private slots:
    void writesOnlyItsFile()
    {
        const QTemporaryDir root;
        const QString dir = root.filePath("日志 目录"_s);
        QVERIFY(QDir().mkpath(dir));
        const ToolRun lost = runTool(executablePath(), {"write"_s, "none"_s, dir});
        QCOMPARE(lost.exitCode, 0);
        QCOMPARE(lost.out + lost.err, QByteArray());
        QCOMPARE(entriesOf(dir), QStringList());

        const QString shipped = builtProgram("log.conf"_s);
        const ToolRun run = runTool(executablePath(), {"write"_s, shipped, dir});
        QCOMPARE(run.out + run.err, QByteArray());
        QFile file(dir + "/morvane.log"_s);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
        QCOMPARE(lines.size(), 4);
        QVERIFY(lines[0].endsWith("####启动####"_s));
        QVERIFY(lines[1].contains(" ERROR [default] tst_logger.cpp:"_s));
        QVERIFY(lines[1].contains("failed: 影片 🎬.mp4"_s));
        QVERIFY(lines[2].contains(" DEBUG "_s));

        const QString precious = root.filePath("precious"_s);
        writeTestFile(precious);
        QVERIFY(file.remove() && QFile::link(precious, file.fileName()));
        const ToolRun refused = runTool(executablePath(), {"write"_s, shipped, dir});
        QVERIFY(refused.err.contains(file.fileName().toUtf8()));
        QCOMPARE(contentOf(precious), QByteArray("x"));
    }
};

// As the program "write" it logs its lines: the logger can be set up only once in a process, and
// what it prints has to be caught.
int main(int argc, char *argv[])
{
    ensureUtf8Locale();
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) != "write"_s) {
        TstLogger test;
        return QTest::qExec(&test, argc, argv);
    }
    QDir::setCurrent(arguments.value(3));
    CLOG(INFO, "default") << "lost, as it comes before the set-up";
    Logger::init(arguments.value(2), arguments.value(3));
    CLOG(ERROR, "default") << "failed: "
                           << "影片 🎬.mp4"_s;
    CLOG(DEBUG, "default") << "details";
    return 0;
}

#include "tst_logger.moc"
