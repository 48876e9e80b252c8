// SPDX-License-Identifier: MIT
#include "MediaKits/Player/playerfilter.h"
#include "MediaKits/Player/playerstatus.h"

#include <QSize>
#include <QtTest>

// What goes to the player and what comes back, as texts.
class TestPlayerText : public QObject
{
    Q_OBJECT

private slots:
    void filters_data();
    void filters();
    void statuses_data();
    void statuses();
};

void TestPlayerText::filters_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("command");
    const auto row = [](FilterOperation operation, const char *name, const QVariant &value,
                        const char *command) {
        QTest::addRow("%d %s %s", int(operation), name, qPrintable(value.toString()))
            << int(operation) << QString::fromLatin1(name) << value << QString::fromLatin1(command);
    };
    const auto text = [](const char *value) { return QVariant(QString::fromLatin1(value)); };
    row(FilterOperation::Add, "mirror", {}, "add \"lavfi=[hflip]\"");
    row(FilterOperation::Set, "deblock", text("vb"), "set \"lavfi=[pp=vb]\"");
    row(FilterOperation::Add, "lb", {}, "add \"lavfi=[pp=lb]\"");
    row(FilterOperation::Add, "yadif", text("1"), "add \"lavfi=[yadif=mode=send_field]\"");
    row(FilterOperation::Add, "yadif", {}, "add \"lavfi=[yadif=mode=send_frame]\"");
    row(FilterOperation::Add, "vscale", text("2"), "add \"lavfi=[scale=iw*2:ih*2]\"");
    row(FilterOperation::Add, "scale", text("10:20"), "add \"lavfi=[scale=10:20]\"");
    row(FilterOperation::Add, "hqdn3d", text(""), "add \"lavfi=[hqdn3d]\"");
    row(FilterOperation::Add, "letterbox", QSize(16, 9),
        "add \"lavfi=[pad=iw:iw*sar/16*9:0:(oh-ih)/2]\"");
    row(FilterOperation::Toggle, "rotate", text("2"), "toggle \"lavfi=[rotate=3*PI/2:ih:iw]\"");
    row(FilterOperation::Add, "rotate", text("9"), "add \"\"");
    row(FilterOperation::Add, "stereo-mode", text("mono"),
        "add \"lavfi=[pan=mono|c0=.5*c0+.5*c1]\"");
    row(FilterOperation::Add, "volnorm", text(""), "add \"lavfi=[acompressor]\"");
    row(FilterOperation::Add, "eq", text("contrast=1.2"), "add \"lavfi=[eq=contrast=1.2]\"");
    row(FilterOperation::Add, "", text("negate"), "add \"lavfi=[negate]\"");
    row(FilterOperation::Add, "eq", 3, "add \"\"");
    row(FilterOperation::Delete, "eq", 0, "del \"0\"");
    row(FilterOperation::Delete, "mirror", text(""), "del \"lavfi=[hflip]\"");
    row(FilterOperation::Clear, "mirror", text("x"), "clr \"\"");
}

void TestPlayerText::filters()
{
    QFETCH(int, operation);
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    QFETCH(QString, command);
    QCOMPARE(filterCommand(FilterOperation(operation), name, value), command);
}

void TestPlayerText::statuses_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QList<float>>("values");
    const auto row = [](const char *name, const QByteArray &output, const QList<float> &values) {
        QTest::newRow(name) << output << values;
    };
    row("both", "AV: 00:01:05 / 00:03:10 (34%) A-V:  0.000", {65, 190, 34});
    row("paused", "(Paused) V: 00:00:06 / 00:00:08 (77%)", {6, 8, 77});
    row("one stamp", "A: 00:00:02", {2, 0, 0});
    row("no clock shows it", "AV: 25:00:00 / 30:00:00 (50%)", {0, 0, 50});
    row("several in one read",
        "AV: 00:00:01 / 00:00:08 (1%)\x1b[K\r\n\rAV: 00:00:02 / 00:00:08 (2%)\r\x1b[K",
        {1, 8, 1, 2, 8, 2});
    row("up to a zero byte", QByteArray("AV: 00:00:01 / 00:00:08 (1%)\r\0AV: 00:00:02", 45),
        {1, 8, 1});
    row("other lines", "Playing: AV: 00:00:01\r av: 00:00:02\r", {});
}

void TestPlayerText::statuses()
{
    QFETCH(QByteArray, output);
    QFETCH(QList<float>, values);
    QList<float> seen;
    for (const PlayerStatus &status : playerStatuses(output))
        seen += {status.position, status.total, status.percent};
    QCOMPARE(seen, values);
}

QTEST_GUILESS_MAIN(TestPlayerText)
#include "tst_playertext.moc"
