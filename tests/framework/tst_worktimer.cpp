// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/worktimer.h"
#include "support/utf8.h"

#include <QtTest>

class TestWorkTimer : public QObject
{
    Q_OBJECT

private slots:
    // A number is told once it can be believed, and then it is the formula's.
    void remainingText()
    {
        const auto text = [](double progress, int ms) {
            return WorkTimer::remainingText(progress, ms);
        };
        for (const double progress : {0.0, 1e-12, 0.0001, 0.01})
            QCOMPARE(text(progress, 900), QString());
        QCOMPARE(text(0.0001, 1500), QString());
        QCOMPARE(text(0.0, 60000), QString());
        QCOMPARE(text(0.05, 2000), "00:00:39"_s);
        QCOMPARE(text(0.01, 10000), "00:16:31"_s);
        QCOMPARE(text(1.0, 30000), "00:00:01"_s);
    }
};

QTEST_APPLESS_MAIN(TestWorkTimer)

#include "tst_worktimer.moc"
