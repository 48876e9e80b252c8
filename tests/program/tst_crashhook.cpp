// SPDX-License-Identifier: MIT
#include "support/toolrun.h"

#include <QProcess>
#include <QtTest>

#include <csignal>

class TestCrashHook : public QObject
{
    Q_OBJECT

private slots:
    void dies_data();
    void dies();
};

void TestCrashHook::dies_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<QByteArray>("told");
    QTest::newRow("fault") << SIGSEGV << QByteArray("told\n");
    QTest::newRow("terminate") << SIGABRT << QByteArray("told\n");
    QTest::newRow("overflow") << SIGSEGV << QByteArray("told\n");
    QTest::newRow("threads") << SIGSEGV << QByteArray("told\n");
    QTest::newRow("hangs") << SIGSEGV << QByteArray("told\n");
    QTest::newRow("twice") << SIGSEGV << QByteArray();
    QTest::newRow("throws") << SIGABRT << QByteArray();
}

void TestCrashHook::dies()
{
    QFETCH(const int, signal);
    QProcess probe;
    probe.start(builtProgram(QStringLiteral("crash_probe")),
                {QString::fromLatin1(QTest::currentDataTag())});
    QVERIFY(probe.waitForFinished(10000));
    QCOMPARE(probe.exitStatus(), QProcess::CrashExit);
    QCOMPARE(probe.exitCode(), signal);
    QTEST(probe.readAllStandardOutput(), "told");
}

QTEST_GUILESS_MAIN(TestCrashHook)
#include "tst_crashhook.moc"
