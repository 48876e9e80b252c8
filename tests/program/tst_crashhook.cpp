// SPDX-License-Identifier: MIT
#include "support/casename.h"
#include "support/toolrun.h"

#include <QtTest>

#include <csignal>

class TestCrashHook : public QObject
{
    Q_OBJECT

private slots:
    void dies()
    {
        const auto check = [&](const char *caseName, int signal, const QByteArray &told) {
            const CaseName inCase(caseName);
            QProcess probe;
            probe.start(builtProgram("crash_probe"_s), {QString::fromUtf8(caseName)});
            QVERIFY(probe.waitForFinished(10000));
            QCOMPARE(probe.exitStatus(), QProcess::CrashExit);
            QCOMPARE(probe.exitCode(), signal);
            QCOMPARE(probe.readAllStandardOutput(), told);
        };
        check("fault", SIGSEGV, QByteArray("told\n"));
        check("terminate", SIGABRT, QByteArray("told\n"));
        check("overflow", SIGSEGV, QByteArray("told\n"));
        check("threads", SIGSEGV, QByteArray("told\n"));
        check("hangs", SIGSEGV, QByteArray("told\n"));
        check("twice", SIGSEGV, QByteArray());
        check("throws", SIGABRT, QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestCrashHook)
#include "tst_crashhook.moc"
