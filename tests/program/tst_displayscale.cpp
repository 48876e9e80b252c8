// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/displayscale.h"
#include "platform/displaysizes.h"
#include "support/casename.h"
#include "support/utf8.h"

#include <QtTest>

class TestDisplayScale : public QObject
{
    Q_OBJECT

private slots:
    void decision()
    {
        const auto check = [&](const char *caseName, double p, double r, int mode, double factor) {
            const CaseName inCase(caseName);
            const DisplayScale decided = decidedScale(p, r, {});
            QCOMPARE(int(decided.mode), mode);
            QCOMPARE(decided.factor, factor);
            const DisplayScale fixed = decidedScale(p, r, {DpiScaleHigh, 1.5});
            QCOMPARE(fixed.mode, DpiScaleHigh);
            QCOMPARE(fixed.factor, factor);
        };
        check("usual", 1.0, 1.0, int(DpiScaleSystem), 1.5);
        check("nearly equal", 1.0, 1.09, int(DpiScaleSystem), 1.5);
        check("r not below p", 1.0, 1.4, int(DpiScaleFactor), 1.0);
        check("r below p", 1.5, 1.2, int(DpiScaleFactor), 1.2);
        check("small display", 1.25, 0.9, int(DpiScaleFactor), 1.25);
        check("bound of high", 1.0, 1.5, int(DpiScaleFactor), 1.0);
        check("high", 3.0, 2.0, int(DpiScaleHigh), 1.5);
    }

    void resources()
    {
        const std::pair<QByteArray, double> rows[] = {{"", 1.0},
                                                      {"Xft.dpi:\t144\n", 1.5},
                                                      {"*Xft.dpi: 9\nXft.dpi:192", 2.0},
                                                      {"Xft.dpi: 0", 1.0}};
        for (const auto &[text, scale] : rows)
            QCOMPARE(scaleInResources(text), scale);
    }

    // On the test's own display of 1920 x 1080.
    void display()
    {
        qunsetenv("QT_SCALE_FACTOR");
        QCOMPARE(effectiveScale(), 1.0);
        QCOMPARE(primaryDisplaySizes().reported, QSize(1920, 1080));
        QCOMPARE(
            QProcess::execute("xprop"_s, {"-root"_s, "-format"_s, "RESOURCE_MANAGER"_s, "8s"_s,
                                          "-set"_s, "RESOURCE_MANAGER"_s, "Xft.dpi:\t192\n"_s}),
            0);
        QCOMPARE(primaryDisplaySizes().reported, QSize(960, 540));
        qputenv("QT_SCALE_FACTOR", "1.5");
        QCOMPARE(primaryDisplaySizes().reported, QSize(1280, 720));
        QCOMPARE(primaryDisplaySizes().real, QSize(1920, 1080));

        decideDisplayScale();
        QCOMPARE(dpiScaleMode(), DpiScaleFactor);
        QCOMPARE(effectiveScale(), 1.5);
        QCOMPARE(qgetenv("QT_SCALE_FACTOR"), QByteArray("1.5"));

        qunsetenv("QT_SCALE_FACTOR");
        setDpiScaleMode(DpiScaleAuto);
        declareDpiStance(DpiStance::Unaware);
        decideDisplayScale();
        QCOMPARE(captureScale(), 1.0);
        QCOMPARE(qgetenv("QT_SCALE_FACTOR"), QByteArray("1"));
        // Later measures are those of a process that scales by itself.
        setDpiScaleMode(DpiScaleHigh);
        QCOMPARE(captureScale(), 2.0);
    }
};

QTEST_GUILESS_MAIN(TestDisplayScale)
#include "tst_displayscale.moc"
