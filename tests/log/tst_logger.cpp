// SPDX-License-Identifier: MIT
#include "MediaKits/Logger/logger.h"

#include "platform/executable.h"
#include "platform/utf8locale.h"
#include "support/testmedia.h"
#include "support/toolrun.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TstLogger : public QObject
{
    Q_OBJECT

private slots:
    void writesOnlyItsFile();
};

void TstLogger::writesOnlyItsFile()
{
    const QTemporaryDir root;
    const QString dir = root.filePath(QStringLiteral("日志 目录"));
    QVERIFY(QDir().mkpath(dir));
    const ToolRun lost =
        runTool(executablePath(), {QStringLiteral("write"), QStringLiteral("none"), dir});
    QCOMPARE(lost.exitCode, 0);
    QCOMPARE(lost.out + lost.err, QByteArray());
    QCOMPARE(entriesOf(dir), QStringList());

    const QString shipped = builtProgram(QStringLiteral("log.conf"));
    const ToolRun run = runTool(executablePath(), {QStringLiteral("write"), shipped, dir});
    QCOMPARE(run.out + run.err, QByteArray());
    QFile file(dir + QStringLiteral("/morvane.log"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines[0].endsWith(QStringLiteral("####启动####")));
    QVERIFY(lines[1].contains(QStringLiteral(" ERROR [default] tst_logger.cpp:")));
    QVERIFY(lines[1].contains(QStringLiteral("failed: 影片 🎬.mp4")));
    QVERIFY(lines[2].contains(QStringLiteral(" DEBUG ")));
}

// As the program "write" it logs its lines: the logger can be set up only once in a process, and
// what it prints has to be caught.
int main(int argc, char *argv[])
{
    ensureUtf8Locale();
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) != QLatin1String("write")) {
        TstLogger test;
        return QTest::qExec(&test, argc, argv);
    }
    QDir::setCurrent(arguments.value(3));
    CLOG(INFO, "default") << "lost, as it comes before the set-up";
    Logger::init(arguments.value(2), arguments.value(3));
    CLOG(ERROR, "default") << "failed: " << QStringLiteral("影片 🎬.mp4");
    CLOG(DEBUG, "default") << "details";
    return 0;
}

#include "tst_logger.moc"
