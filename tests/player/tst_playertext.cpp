// SPDX-License-Identifier: MIT
#include "MediaKits/Player/playerfilter.h"
#include "MediaKits/Player/playerstatus.h"
#include "support/casename.h"

#include <QtTest>

// What goes to the player and what comes back, as texts.
class TestPlayerText : public QObject
{
    Q_OBJECT

private slots:
    void filters()
    {
        const auto check = [](FilterOperation operation, const char *name, const QVariant &value,
                              const char *command) {
            QCOMPARE(filterCommand(operation, QLatin1String(name), value), QLatin1String(command));
        };
        const auto text = [](const char *value) { return QVariant(QString::fromLatin1(value)); };
        check(FilterOperation::Add, "mirror", {}, "add \"lavfi=[hflip]\"");
        check(FilterOperation::Set, "deblock", text("vb"), "set \"lavfi=[pp=vb]\"");
        check(FilterOperation::Add, "lb", {}, "add \"lavfi=[pp=lb]\"");
        check(FilterOperation::Add, "yadif", text("1"), "add \"lavfi=[yadif=mode=send_field]\"");
        check(FilterOperation::Add, "yadif", {}, "add \"lavfi=[yadif=mode=send_frame]\"");
        check(FilterOperation::Add, "vscale", text("2"), "add \"lavfi=[scale=iw*2:ih*2]\"");
        check(FilterOperation::Add, "scale", text("10:20"), "add \"lavfi=[scale=10:20]\"");
        check(FilterOperation::Add, "hqdn3d", text(""), "add \"lavfi=[hqdn3d]\"");
        check(FilterOperation::Add, "letterbox", QSize(16, 9),
              "add \"lavfi=[pad=iw:iw*sar/16*9:0:(oh-ih)/2]\"");
        check(FilterOperation::Toggle, "rotate", text("2"),
              "toggle \"lavfi=[rotate=3*PI/2:ih:iw]\"");
        check(FilterOperation::Add, "rotate", text("9"), "add \"\"");
        check(FilterOperation::Add, "stereo-mode", text("mono"),
              "add \"lavfi=[pan=mono|c0=.5*c0+.5*c1]\"");
        check(FilterOperation::Add, "volnorm", text(""), "add \"lavfi=[acompressor]\"");
        check(FilterOperation::Add, "eq", text("contrast=1.2"), "add \"lavfi=[eq=contrast=1.2]\"");
        check(FilterOperation::Add, "", text("negate"), "add \"lavfi=[negate]\"");
        check(FilterOperation::Add, "eq", 3, "add \"\"");
        check(FilterOperation::Delete, "eq", 0, "del \"0\"");
        check(FilterOperation::Delete, "mirror", text(""), "del \"lavfi=[hflip]\"");
        check(FilterOperation::Clear, "mirror", text("x"), "clr \"\"");
    }

    void statuses()
    {
        const auto check = [&](const char *caseName, const QByteArray &output,
                               const QList<float> &values) {
            const CaseName inCase(caseName);
            QList<float> seen;
            for (const PlayerStatus &status : playerStatuses(output))
                seen += {status.position, status.total, status.percent};
            QCOMPARE(seen, values);
        };
        check("both", "AV: 00:01:05 / 00:03:10 (34%) A-V:  0.000", {65, 190, 34});
        check("paused", "(Paused) V: 00:00:06 / 00:00:08 (77%)", {6, 8, 77});
        check("beyond the end",
              "V: 00:00:08 / 00:00:06 (1333333333333333333333333333333333333333%)", {8, 6, 100});
        check("one stamp", "A: 00:00:02", {2, 0, 0});
        check("no clock shows it", "AV: 25:00:00 / 30:00:00 (50%)", {0, 0, 50});
        check("several in one read",
              "AV: 00:00:01 / 00:00:08 (1%)\x1b[K\r\n\rAV: 00:00:02 / 00:00:08 (2%)\r\x1b[K",
              {1, 8, 1, 2, 8, 2});
        check("up to a zero byte", QByteArray("AV: 00:00:01 / 00:00:08 (1%)\r\0AV: 00:00:02", 45),
              {1, 8, 1});
        check("other lines", "Playing: AV: 00:00:01\r av: 00:00:02\r", {});
    }
};

QTEST_GUILESS_MAIN(TestPlayerText)
#include "tst_playertext.moc"
